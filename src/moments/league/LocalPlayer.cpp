// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LocalPlayer.h"

#include <algorithm>

namespace quelto {

namespace {

// Bounds memory if the client keeps sending new names.
constexpr qsizetype MaxNames = 64;

QString normalised(const QString& name)
{
    return name.toLower().trimmed();
}

/// The whole name if it has no tag.
QString withoutTag(const QString& name)
{
    return name.left(name.indexOf(u'#'));
}

bool isCalled(const LeaguePlayer& player, const QString& key)
{
    return std::ranges::any_of(player.names,
                               [&key](const QString& name) { return withoutTag(normalised(name)) == key; });
}

/// The champion as a name in events; empty if the name could also mean another player.
QString championName(const LeaguePlayer& player, const QList<LeaguePlayer>& players)
{
    const auto key = normalised(player.champion);
    const bool isUnique = std::ranges::none_of(players, [&](const LeaguePlayer& other) {
        return &other != &player && (normalised(other.champion) == key || isCalled(other, key));
    });
    return isUnique ? key : QString();
}

} // namespace

void LocalPlayer::update(const LeagueData& data)
{
    if (m_names.isEmpty()) {
        addNames(data.activePlayer);
    }
    m_champion.clear();
    m_championName.clear();
    if (const auto* const player = find(data.players)) {
        addNames(player->names);
        m_team = player->team.value_or(m_team);
        m_champion = player->champion;
        m_championName = championName(*player, data.players);
    }
}

bool LocalPlayer::matches(const QString& name) const
{
    const auto key = normalised(name);
    return !key.isEmpty() && (isKnownAs(key) || m_untaggedNames.contains(key) || key == m_championName);
}

bool LocalPlayer::matchesAny(const QStringList& names) const
{
    return std::ranges::any_of(names, [this](const QString& name) { return matches(name); });
}

void LocalPlayer::addNames(const LeagueNames& names)
{
    for (const auto& name : names) {
        const auto key = normalised(name);
        if (key.isEmpty() || m_names.size() >= MaxNames) {
            continue;
        }
        m_names.insert(key);
        if (const auto untagged = withoutTag(key).trimmed(); !untagged.isEmpty()) {
            m_untaggedNames.insert(untagged);
        }
    }
}

const LeaguePlayer* LocalPlayer::find(const QList<LeaguePlayer>& players) const
{
    const auto first = [&players](auto isMine) -> const LeaguePlayer* {
        const auto found = std::ranges::find_if(
            players, [&isMine](const LeaguePlayer& player) { return std::ranges::any_of(player.names, isMine); });
        return found == players.end() ? nullptr : &*found;
    };
    // Another player may have the same name with another tag, so the name without the tag comes second.
    const auto* const player = first([this](const QString& name) { return isKnownAs(normalised(name)); });
    return player != nullptr
        ? player
        : first([this](const QString& name) { return m_untaggedNames.contains(normalised(name)); });
}

bool LocalPlayer::isKnownAs(const QString& key) const
{
    return m_names.contains(key) || (key.contains(u'#') && m_names.contains(withoutTag(key)));
}

} // namespace quelto
