// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/library/SlotWindow.h"

#include <QAbstractListModel>

#include <numeric>
#include <utility>

namespace quelto {

/// A model of a few rows, each of which shows now this place of a long list and now that one, so that the items that
/// draw them are used again while the user scrolls.
///
/// Thread: main.
template <typename Row> class SlotModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    /// Makes room for that many, never less than before.
    void reserve(qsizetype slotCount)
    {
        const auto present = m_window.slotCount();
        if (slotCount <= present) {
            return;
        }
        beginInsertRows({}, static_cast<int>(present), static_cast<int>(slotCount - 1));
        m_window.setSlotCount(slotCount);
        m_rows.resize(slotCount);
        m_isForgotten = true;
        endInsertRows();
    }
    /// What was shown is not what it was: the next show asks for all of it again.
    void forget() { m_isForgotten = true; }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }

protected:
    qsizetype placeOf(const QModelIndex& index) const { return m_window.place(index.row()); }
    const Row& rowOf(const QModelIndex& index) const { return m_rows.at(index.row()); }

    /// Asks `rowAt(place, before)` for the rows that changed; before is what the row showed until now.
    template <typename RowAt> void showRows(qsizetype first, qsizetype end, const RowAt& rowAt)
    {
        auto changed = m_window.show(first, end);
        if (std::exchange(m_isForgotten, false)) {
            changed.resize(m_rows.size());
            std::iota(changed.begin(), changed.end(), 0);
        }
        for (const auto slot : changed) {
            const auto place = m_window.place(slot);
            m_rows[slot] = place == SlotWindow::Nothing ? Row{} : rowAt(place, m_rows.at(slot));
        }
        for (const auto slot : changed) {
            const auto row = index(static_cast<int>(slot));
            Q_EMIT dataChanged(row, row);
        }
    }

private:
    SlotWindow m_window;
    QList<Row> m_rows;
    bool m_isForgotten = false;
};

} // namespace quelto
