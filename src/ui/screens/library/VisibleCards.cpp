// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/VisibleCards.h"

namespace quelto {

namespace {

VisibleCard visibleCard(const VisibleCards::Card& card, const VisibleCard& previous)
{
    const auto& clip = card.clip;
    const bool isChanged =
        previous.path == clip.path && (previous.byteCount != clip.size || previous.date != clip.date);
    return {.area = card.area,
            .path = clip.path,
            .byteCount = clip.size,
            .date = clip.date,
            .version = previous.version + (isChanged ? 1 : 0),
            .title = clip.visibleTitle(),
            .game = clip.game,
            .time = clip.timeText(),
            .size = clip.sizeText(),
            .tier = clip.autoTier ? tagOf(*clip.autoTier) : QString(),
            .score = clip.autoTier ? QVariant(clip.autoScore) : QVariant(),
            .label = clip.autoTier ? labelOf(*clip.autoTier) : QString(),
            .ratio = card.ratio,
            .isSelected = card.isSelected};
}

} // namespace

void VisibleCards::show(qsizetype first, qsizetype end, const CardAt& cardAt)
{
    showRows(first, end,
             [&](qsizetype position, const VisibleCard& previous) { return visibleCard(cardAt(position), previous); });
}

QVariant VisibleCards::data(const QModelIndex& index, int role) const
{
    const auto& card = rowOf(index);
    switch (role) {
    case PositionRole:
        return positionOf(index);
    case AreaRole:
        return card.area;
    case PathRole:
        return card.path;
    case VersionRole:
        return card.version;
    case TitleRole:
        return card.title;
    case GameRole:
        return card.game;
    case TimeRole:
        return card.time;
    case SizeRole:
        return card.size;
    case TierRole:
        return card.tier;
    case ScoreRole:
        return card.score;
    case LabelRole:
        return card.label;
    case RatioRole:
        return card.ratio;
    case SelectedRole:
        return card.isSelected;
    default:
        return {};
    }
}

QHash<int, QByteArray> VisibleCards::roleNames() const
{
    return {{PositionRole, "position"},  {AreaRole, "area"},   {PathRole, "path"},   {VersionRole, "version"},
            {TitleRole, "title"},        {GameRole, "game"},   {TimeRole, "time"},   {SizeRole, "size"},
            {TierRole, "tier"},          {ScoreRole, "score"}, {LabelRole, "label"}, {RatioRole, "ratio"},
            {SelectedRole, "isSelected"}};
}

} // namespace quelto
