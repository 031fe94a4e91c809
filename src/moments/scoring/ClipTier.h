// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

namespace quelto {

/// How much a moment is worth, best first.
enum class ClipTier { epic, medium, basic };

inline constexpr std::array AllClipTiers{ClipTier::epic, ClipTier::medium, ClipTier::basic};

/// The upper-case ASCII word that clip names and sidecars carry, the same in every language.
QString tagOf(ClipTier tier);
/// The reverse of tagOf; exact and case-sensitive.
std::optional<ClipTier> tierFromTag(const QString& tag);
/// The translated word for the user.
QString labelOf(ClipTier tier);
/// 90 and above is epic, 30 and above medium, 8 and above basic; below that a fight is no moment.
std::optional<ClipTier> tierFromScore(int score);

} // namespace quelto
