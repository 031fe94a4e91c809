// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/CardSlots.h"

namespace quelto {

namespace {

CardSlot filled(const CardSlots::Card& card, const CardSlot& before)
{
    const auto& clip = card.clip;
    const bool isChanged = before.path == clip.path && (before.byteCount != clip.size || before.date != clip.date);
    return {.area = card.area,
            .path = clip.path,
            .byteCount = clip.size,
            .date = clip.date,
            .version = before.version + (isChanged ? 1 : 0),
            .title = clip.displayTitle(),
            .game = clip.game,
            .time = clip.timeText(),
            .size = clip.sizeText(),
            .tier = clip.autoTier ? tagOf(*clip.autoTier) : QString(),
            .score = clip.autoTier ? QVariant(clip.autoScore) : QVariant(),
            .label = clip.autoTier ? labelOf(*clip.autoTier) : QString(),
            .ratio = card.ratio};
}

} // namespace

void CardSlots::show(qsizetype first, qsizetype end, const CardAt& cardAt)
{
    showRows(first, end, [&](qsizetype position, const CardSlot& before) { return filled(cardAt(position), before); });
}

QVariant CardSlots::data(const QModelIndex& index, int role) const
{
    const auto& slot = rowOf(index);
    switch (role) {
    case PositionRole:
        return placeOf(index);
    case AreaRole:
        return slot.area;
    case PathRole:
        return slot.path;
    case VersionRole:
        return slot.version;
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
    return {{PositionRole, "position"}, {AreaRole, "area"},   {PathRole, "path"},   {VersionRole, "version"},
            {TitleRole, "title"},       {GameRole, "game"},   {TimeRole, "time"},   {SizeRole, "size"},
            {TierRole, "tier"},         {ScoreRole, "score"}, {LabelRole, "label"}, {RatioRole, "ratio"}};
}

} // namespace quelto
