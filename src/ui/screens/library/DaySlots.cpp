// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/DaySlots.h"

namespace quelto {

void DaySlots::show(qsizetype first, qsizetype end, const DayAt& dayAt)
{
    showRows(first, end, [&](qsizetype position, const DaySlot& /*before*/) { return dayAt(position); });
}

QVariant DaySlots::data(const QModelIndex& index, int role) const
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

QHash<int, QByteArray> DaySlots::roleNames() const
{
    return {{TitleRole, "title"}, {AreaRole, "area"}};
}

} // namespace quelto
