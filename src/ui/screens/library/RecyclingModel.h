// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/library/SlotAssignment.h"

#include <QAbstractListModel>

#include <numeric>
#include <utility>

namespace quelto {

/// A list model with one row for each visible position of a long list. Scrolling assigns other positions to the
/// existing rows, so that views reuse their delegates instead of creating and destroying them.
///
/// Thread: main.
template <typename Row> class RecyclingModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    /// Grows the model to at least that many rows; it never shrinks.
    void reserve(qsizetype rowCount)
    {
        const auto present = m_slots.slotCount();
        if (rowCount <= present) {
            return;
        }
        beginInsertRows({}, static_cast<int>(present), static_cast<int>(rowCount - 1));
        m_slots.setSlotCount(rowCount);
        m_rows.resize(rowCount);
        m_isInvalid = true;
        endInsertRows();
    }
    /// Makes the next showRows() read all rows again.
    void invalidate() { m_isInvalid = true; }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }

protected:
    qsizetype positionOf(const QModelIndex& index) const { return m_slots.position(index.row()); }
    const Row& rowOf(const QModelIndex& index) const { return m_rows.at(index.row()); }

    /// Shows the positions from `first` to `end` (exclusive). Calls `rowAt(position, previous)` for each changed row,
    /// where `previous` is the old content of the row.
    template <typename RowAt> void showRows(qsizetype first, qsizetype end, const RowAt& rowAt)
    {
        auto changed = m_slots.assign(first, end);
        if (std::exchange(m_isInvalid, false)) {
            changed.resize(m_rows.size());
            std::iota(changed.begin(), changed.end(), 0);
        }
        for (const auto slot : changed) {
            const auto position = m_slots.position(slot);
            m_rows[slot] = position == SlotAssignment::Unassigned ? Row{} : rowAt(position, m_rows.at(slot));
        }
        for (const auto slot : changed) {
            const auto row = index(static_cast<int>(slot));
            Q_EMIT dataChanged(row, row);
        }
    }

private:
    SlotAssignment m_slots;
    QList<Row> m_rows;
    bool m_isInvalid = false;
};

} // namespace quelto
