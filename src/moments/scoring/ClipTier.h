// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

namespace quelto {

/// The value of a moment, best first.
enum class ClipTier { epic, medium, basic };

inline constexpr std::array AllClipTiers{ClipTier::epic, ClipTier::medium, ClipTier::basic};

/// The upper-case ASCII word for clip names and sidecars. It does not depend on the language.
QString tagOf(ClipTier tier);
/// The inverse of tagOf(). Compares exactly, including case.
std::optional<ClipTier> tierFromTag(const QString& tag);
/// The translated word to display.
QString labelOf(ClipTier tier);
/// 90 and above is epic, 30 and above medium, 8 and above basic. A lower score gives no moment.
std::optional<ClipTier> tierFromScore(int score);

} // namespace quelto
