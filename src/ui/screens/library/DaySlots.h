// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/library/SlotWindow.h"

#include <QAbstractListModel>
#include <QRectF>

namespace quelto {

/// The days' titles in view, as a model of a few rows that are used again while the user scrolls.
///
/// Thread: main.
class DaySlots : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { TitleRole = Qt::UserRole, AreaRole };

    struct Day {
        QString title;
        QRectF area;
    };
    using DayAt = std::function<Day(qsizetype position)>;

    using QAbstractListModel::QAbstractListModel;

    /// Makes room for that many, never less than before.
    void reserve(qsizetype slotCount);
    void show(qsizetype first, qsizetype end, const DayAt& dayAt);
    /// What was shown is not what it was: the next show asks for all of it again.
    void forget();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    SlotWindow m_window;
    QList<Day> m_slots;
    bool m_isForgotten = false;
};

} // namespace quelto
