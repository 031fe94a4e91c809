// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/VisibleDays.h"

namespace quelto {

void VisibleDays::show(qsizetype first, qsizetype end, const DayAt& dayAt)
{
    showRows(first, end, [&](qsizetype position, const VisibleDay& /*previous*/) { return dayAt(position); });
}

QVariant VisibleDays::data(const QModelIndex& index, int role) const
{
    switch (role) {
    case TitleRole:
        return rowOf(index).title;
    case AreaRole:
        return rowOf(index).area;
    default:
        return {};
    }
}

QHash<int, QByteArray> VisibleDays::roleNames() const
{
    return {{TitleRole, "title"}, {AreaRole, "area"}};
}

} // namespace quelto
