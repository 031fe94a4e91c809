// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ClipFilter.h"

#include "base/language/L10n.h"
#include "base/language/T.h"

namespace quelto {

namespace {

const auto All = QStringLiteral("all");
const auto Manual = QStringLiteral("manual");

struct TierName {
    ClipTier tier;
    const char* name;
};

constexpr std::array TierNames{
    TierName{ClipTier::epic, "epic"},
    TierName{ClipTier::medium, "medium"},
    TierName{ClipTier::basic, "basic"},
};

const TierName* find(const QString& name)
{
    const auto* found =
        std::ranges::find_if(TierNames, [&](const TierName& each) { return name == QLatin1String(each.name); });
    return found == TierNames.end() ? nullptr : found;
}

bool passesTier(const Clip& clip, const QString& tier)
{
    if (tier == Manual) {
        return !clip.autoTier;
    }
    const auto* wanted = find(tier);
    return wanted != nullptr && clip.autoTier == wanted->tier;
}

QString comparable(const QString& text)
{
    return L10n::upperCased(text.normalized(QString::NormalizationForm_C));
}

} // namespace

FilterableClips::FilterableClips(QList<Clip> clips)
    : m_clips(std::move(clips))
{
}

void FilterableClips::makeWords()
{
    const auto language = L10n::current();
    if (m_words.size() == m_clips.size() && m_language == language) {
        return;
    }
    m_language = language;
    m_words.clear();
    m_words.reserve(m_clips.size());
    // Most clips share a few games.
    QHash<QString, QString> games;
    for (const auto& clip : m_clips) {
        auto& game = games[clip.game];
        if (game.isNull()) {
            game = comparable(clip.game);
        }
        m_words.append({.title = comparable(clip.displayTitle()), .game = game});
    }
}

QList<qsizetype> FilterableClips::passing(const ClipFilter& filter)
{
    const auto wanted = comparable(filter.search);
    if (!wanted.isEmpty()) {
        makeWords();
    }
    const bool takesEveryTier = filter.tier == All;
    QList<qsizetype> places;
    places.reserve(m_clips.size());
    for (qsizetype i = 0; i < m_clips.size(); ++i) {
        const auto& clip = m_clips.at(i);
        if ((!filter.game || *filter.game == clip.game) && (takesEveryTier || passesTier(clip, filter.tier)) &&
            (wanted.isEmpty() || m_words.at(i).title.contains(wanted) || m_words.at(i).game.contains(wanted))) {
            places.append(i);
        }
    }
    return places;
}

const QStringList& tierFilters()
{
    static const QStringList filters = [] {
        QStringList names{All};
        for (const auto& each : TierNames) {
            names.append(QLatin1String(each.name));
        }
        return names << Manual;
    }();
    return filters;
}

QString tierFilterLabel(const QString& tierFilter)
{
    if (const auto* row = find(tierFilter)) {
        return labelOf(row->tier);
    }
    return tierFilter == Manual ? T("Manuel") : T("Tümü");
}

} // namespace quelto
