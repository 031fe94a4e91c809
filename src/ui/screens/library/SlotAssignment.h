// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>

namespace quelto {

/// Assigns the visible positions of a long list to a small number of slots. A slot keeps its position while that is
/// visible. Position p goes to slot p modulo the number of slots.
class SlotAssignment {
public:
    static constexpr qsizetype Unassigned = -1;

    qsizetype slotCount() const { return m_positions.size(); }
    /// Clears all assignments.
    void setSlotCount(qsizetype count) { m_positions.fill(Unassigned, count); }

    qsizetype position(qsizetype slot) const { return m_positions.at(slot); }
    /// Assigns the positions from `first` to `end` (exclusive) and returns the slots that changed. Of a range longer
    /// than the number of slots, only the beginning is assigned.
    QList<qsizetype> assign(qsizetype first, qsizetype end)
    {
        QList<qsizetype> changed;
        for (qsizetype slot = 0; slot < slotCount(); ++slot) {
            const auto offset = (slot - first % slotCount() + slotCount()) % slotCount();
            const auto position = first + offset < end ? first + offset : Unassigned;
            if (m_positions.at(slot) != position) {
                m_positions[slot] = position;
                changed.append(slot);
            }
        }
        return changed;
    }

private:
    QList<qsizetype> m_positions;
};

} // namespace quelto
