// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/library/SlotModel.h"

#include <QRectF>

namespace quelto {

struct DaySlot {
    QString title;
    QRectF area;
};

/// The days' titles in view.
///
/// Thread: main.
class DaySlots : public SlotModel<DaySlot> {
    Q_OBJECT

public:
    enum Role { TitleRole = Qt::UserRole, AreaRole };

    using DayAt = std::function<DaySlot(qsizetype position)>;

    using SlotModel::SlotModel;

    void show(qsizetype first, qsizetype end, const DayAt& dayAt);

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
};

} // namespace quelto
