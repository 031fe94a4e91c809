// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/CardSlots.h"

namespace quelto {

void CardSlots::reserve(qsizetype slotCount)
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

void CardSlots::forget()
{
    m_isForgotten = true;
}

CardSlots::Slot CardSlots::filled(const Card& card)
{
    const auto& clip = card.clip;
    return {.area = card.area,
            .path = clip.path,
            .title = clip.displayTitle(),
            .game = clip.game,
            .time = clip.timeText(),
            .size = clip.sizeText(),
            .tier = clip.autoTier ? tagOf(*clip.autoTier) : QString(),
            .score = clip.autoTier ? QVariant(clip.autoScore) : QVariant(),
            .label = clip.autoTier ? labelOf(*clip.autoTier) : QString(),
            .ratio = card.ratio};
}

void CardSlots::show(qsizetype first, qsizetype end, const CardAt& cardAt)
{
    auto changed = m_window.show(first, end);
    if (m_isForgotten) {
        changed.clear();
        for (qsizetype slot = 0; slot < m_window.slotCount(); ++slot) {
            changed.append(slot);
        }
        m_isForgotten = false;
    }
    for (const auto slot : changed) {
        const auto place = m_window.place(slot);
        m_slots[slot] = place == SlotWindow::Nothing ? Slot{} : filled(cardAt(place));
    }
    for (const auto slot : changed) {
        const auto row = index(static_cast<int>(slot));
        Q_EMIT dataChanged(row, row);
    }
}

int CardSlots::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_slots.size());
}

QVariant CardSlots::data(const QModelIndex& index, int role) const
{
    const auto& slot = m_slots.at(index.row());
    switch (role) {
    case PositionRole:
        return m_window.place(index.row());
    case AreaRole:
        return slot.area;
    case PathRole:
        return slot.path;
    case TitleRole:
        return slot.title;
    case GameRole:
        return slot.game;
    case TimeRole:
        return slot.time;
    case SizeRole:
        return slot.size;
    case TierRole:
        return slot.tier;
    case ScoreRole:
        return slot.score;
    case LabelRole:
        return slot.label;
    case RatioRole:
        return slot.ratio;
    default:
        return {};
    }
}

QHash<int, QByteArray> CardSlots::roleNames() const
{
    return {{PositionRole, "position"}, {AreaRole, "area"},   {PathRole, "path"},  {TitleRole, "title"},
            {GameRole, "game"},         {TimeRole, "time"},   {SizeRole, "size"},  {TierRole, "tier"},
            {ScoreRole, "score"},       {LabelRole, "label"}, {RatioRole, "ratio"}};
}

} // namespace quelto
