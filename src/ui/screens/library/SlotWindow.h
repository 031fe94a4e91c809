// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>

namespace quelto {

/// Gives the places of a long list that are in view to few slots, so that a slot keeps its place for as long as that
/// stays in view and takes another only then. A place belongs to the slot of its remainder.
class SlotWindow {
public:
    static constexpr qsizetype Nothing = -1;

    qsizetype slotCount() const { return m_places.size(); }
    /// All slots hold nothing afterwards.
    void setSlotCount(qsizetype count) { m_places.fill(Nothing, count); }

    qsizetype place(qsizetype slot) const { return m_places.at(slot); }
    /// The slots whose place changed. A range longer than the slots shows its beginning.
    QList<qsizetype> show(qsizetype first, qsizetype end)
    {
        QList<qsizetype> changed;
        for (qsizetype slot = 0; slot < slotCount(); ++slot) {
            const auto ahead = (slot - first % slotCount() + slotCount()) % slotCount();
            const auto place = first + ahead < end ? first + ahead : Nothing;
            if (m_places.at(slot) != place) {
                m_places[slot] = place;
                changed.append(slot);
            }
        }
        return changed;
    }

private:
    QList<qsizetype> m_places;
};

} // namespace quelto
