// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/DaySlots.h"

namespace quelto {

void DaySlots::reserve(qsizetype slotCount)
{
    const auto present = m_window.slotCount();
    if (slotCount <= present) {
        return;
    }
    beginInsertRows({}, static_cast<int>(present), static_cast<int>(slotCount - 1));
    m_window.setSlotCount(slotCount);
    m_slots.resize(slotCount);
    m_isForgotten = true;
    endInsertRows();
}

void DaySlots::forget()
{
    m_isForgotten = true;
}

void DaySlots::show(qsizetype first, qsizetype end, const DayAt& dayAt)
{
    const auto changed = m_window.show(first, end);
    for (qsizetype slot = 0; slot < m_window.slotCount(); ++slot) {
        if (m_isForgotten || changed.contains(slot)) {
            const auto place = m_window.place(slot);
            m_slots[slot] = place == SlotWindow::Nothing ? Day{} : dayAt(place);
            const auto row = index(static_cast<int>(slot));
            Q_EMIT dataChanged(row, row);
        }
    }
    m_isForgotten = false;
}

int DaySlots::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_slots.size());
}

QVariant DaySlots::data(const QModelIndex& index, int role) const
{
    const auto& slot = m_slots.at(index.row());
    switch (role) {
    case TitleRole:
        return slot.title;
    case AreaRole:
        return slot.area;
    default:
        return {};
    }
}

QHash<int, QByteArray> DaySlots::roleNames() const
{
    return {{TitleRole, "title"}, {AreaRole, "area"}};
}

} // namespace quelto
