// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/library/RecyclingModel.h"

#include <QRectF>

namespace quelto {

struct VisibleDay {
    QString title;
    QRectF area;
};

/// The model of the day titles in the viewport.
///
/// Thread: main.
class VisibleDays : public RecyclingModel<VisibleDay> {
    Q_OBJECT

public:
    enum Role { TitleRole = Qt::UserRole, AreaRole };

    using DayAt = std::function<VisibleDay(qsizetype position)>;

    using RecyclingModel::RecyclingModel;

    void show(qsizetype first, qsizetype end, const DayAt& dayAt);

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
};

} // namespace quelto
