// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LocalPlayer.h"

namespace quelto {

namespace {

// A client that has ever new names for the player has none worth keeping.
constexpr qsizetype MostNames = 64;

QString normalised(const QString& name)
{
    return name.toLower().trimmed();
}

} // namespace

void LocalPlayer::learn(const LeagueNames& names)
{
    for (const auto& name : names) {
        const auto key = normalised(name);
        if (!key.isEmpty() && m_names.size() < MostNames) {
            m_names.insert(key);
        }
    }
}

bool LocalPlayer::is(const QString& name) const
{
    const auto key = normalised(name);
    const auto tag = key.indexOf(u'#');
    return m_names.contains(key) || (tag >= 0 && m_names.contains(key.left(tag)));
}

bool LocalPlayer::isAnyOf(const QStringList& names) const
{
    return std::any_of(names.begin(), names.end(), [this](const QString& name) { return is(name); });
}

bool LocalPlayer::isAnyOf(const LeagueNames& names) const
{
    return std::any_of(names.begin(), names.end(), [this](const QString& name) { return is(name); });
}

} // namespace quelto
