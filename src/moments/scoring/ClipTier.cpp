// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/scoring/ClipTier.h"

#include "base/language/T.h"

namespace quelto {

namespace {

struct TierRow {
    ClipTier tier;
    const char* tag;
    const char* label;
    int minScore;
};

constexpr std::array Rows{
    TierRow{ClipTier::epic, "EFSANE", "Efsane", 90},
    TierRow{ClipTier::medium, "ORTA", "Orta", 30},
    TierRow{ClipTier::basic, "BASIT", "Basit", 8},
};

const TierRow& rowOf(ClipTier tier)
{
    return Rows[static_cast<std::size_t>(tier)];
}

} // namespace

QString tagOf(ClipTier tier)
{
    return QString::fromLatin1(rowOf(tier).tag);
}

std::optional<ClipTier> tierFromTag(const QString& tag)
{
    const auto* found = std::ranges::find_if(Rows, [&](const TierRow& row) { return tag == QLatin1String(row.tag); });
    return found == Rows.end() ? std::nullopt : std::optional(found->tier);
}

QString labelOf(ClipTier tier)
{
    return T(rowOf(tier).label);
}

std::optional<ClipTier> tierFromScore(int score)
{
    const auto* found = std::ranges::find_if(Rows, [=](const TierRow& row) { return score >= row.minScore; });
    return found == Rows.end() ? std::nullopt : std::optional(found->tier);
}

} // namespace quelto
