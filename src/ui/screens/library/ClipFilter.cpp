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

/// Whether clips belong to a game: the clips that are listed under its title.
class GameMatcher {
public:
    explicit GameMatcher(const std::optional<ClipGame>& game)
        : m_matchesAll(!game)
        , m_matchesOther(game == ClipGame::none())
        , m_title(game ? game->title() : QString())
    {
    }

    bool matches(const Clip& clip) const
    {
        // After a change of the language, clips without a game keep the old word until the library has read them again.
        return m_matchesAll || clip.game == m_title || (m_matchesOther && !clip.hasOwnGame());
    }

private:
    bool m_matchesAll;
    bool m_matchesOther;
    QString m_title;
};

bool matchesTier(const Clip& clip, const QString& tier)
{
    if (tier == Manual) {
        return !clip.autoTier;
    }
    const auto* row = find(tier);
    return row != nullptr && clip.autoTier == row->tier;
}

QString searchKey(const QString& text)
{
    return L10n::upperCased(text.normalized(QString::NormalizationForm_C));
}

} // namespace

SearchableClips::SearchableClips(QList<Clip> clips)
    : m_clips(std::move(clips))
{
}

void SearchableClips::updateSearchKeys()
{
    const auto language = L10n::current();
    if (m_searchKeys.size() == m_clips.size() && m_language == language) {
        return;
    }
    m_language = language;
    m_searchKeys.clear();
    m_searchKeys.reserve(m_clips.size());
    // Most clips belong to a few games.
    QHash<QString, QString> games;
    for (const auto& clip : m_clips) {
        auto& game = games[clip.game];
        if (game.isNull()) {
            game = searchKey(clip.game);
        }
        m_searchKeys.append({.title = searchKey(clip.displayTitle()), .game = game});
    }
}

QList<qsizetype> SearchableClips::matching(const ClipFilter& filter)
{
    const auto search = searchKey(filter.search);
    if (!search.isEmpty()) {
        updateSearchKeys();
    }
    const GameMatcher game(filter.game);
    const bool matchesAllTiers = filter.tier == All;
    QList<qsizetype> indexes;
    indexes.reserve(m_clips.size());
    for (qsizetype i = 0; i < m_clips.size(); ++i) {
        const auto& clip = m_clips.at(i);
        if (game.matches(clip) && (matchesAllTiers || matchesTier(clip, filter.tier)) &&
            (search.isEmpty() || m_searchKeys.at(i).title.contains(search) ||
             m_searchKeys.at(i).game.contains(search))) {
            indexes.append(i);
        }
    }
    return indexes;
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
