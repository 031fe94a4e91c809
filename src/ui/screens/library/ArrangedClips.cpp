// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ArrangedClips.h"

#include "ui/screens/library/DayGroups.h"

namespace quelto {

namespace {

void appendDay(const DayGroup& group, ArrangedClips& arranged)
{
    DayCards cards;
    QList<qsizetype> wide;
    wide.reserve(group.clips.size());
    for (const auto index : group.clips) {
        if (arranged.clips.at(index).isTall()) {
            arranged.cards.append(index);
            ++cards.tall;
        } else {
            wide.append(index);
        }
    }
    cards.wide = wide.size();
    arranged.cards.append(wide);
    arranged.days.append(group.day);
    arranged.dayCards.append(cards);
}

} // namespace

ArrangedClips arrangedClips(SearchableClips& clips, const ClipFilter& filter)
{
    const auto& all = clips.clips();
    const bool hasTiers = std::ranges::any_of(all, [](const Clip& clip) { return clip.autoTier.has_value(); });
    ArrangedClips arranged{
        .clips = all, .hasTiers = hasTiers, .filter = filter, .cards = {}, .days = {}, .dayCards = {}};
    if (!all.isEmpty() && !hasTiers) {
        arranged.filter.tier = ClipFilter().tier;
    }
    const auto indexes = clips.matching(arranged.filter);
    arranged.cards.reserve(indexes.size());
    for (const auto& group : dayGroups(arranged.clips, indexes)) {
        appendDay(group, arranged);
    }
    return arranged;
}

} // namespace quelto
