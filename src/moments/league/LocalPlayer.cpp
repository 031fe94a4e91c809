// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LocalPlayer.h"

namespace quelto {

namespace {

// Bounds memory if the client keeps sending new names.
constexpr qsizetype MaxNames = 64;

QString normalised(const QString& name)
{
    return name.toLower().trimmed();
}

} // namespace

void LocalPlayer::addNames(const LeagueNames& names)
{
    for (const auto& name : names) {
        const auto key = normalised(name);
        if (!key.isEmpty() && m_names.size() < MaxNames) {
            m_names.insert(key);
        }
    }
}

bool LocalPlayer::matches(const QString& name) const
{
    const auto key = normalised(name);
    const auto tag = key.indexOf(u'#');
    return m_names.contains(key) || (tag >= 0 && m_names.contains(key.left(tag)));
}

bool LocalPlayer::matchesAny(const QStringList& names) const
{
    return std::any_of(names.begin(), names.end(), [this](const QString& name) { return matches(name); });
}

bool LocalPlayer::matchesAny(const LeagueNames& names) const
{
    return std::any_of(names.begin(), names.end(), [this](const QString& name) { return matches(name); });
}

} // namespace quelto
