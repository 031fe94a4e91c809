// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/scoring/ClipTier.h"

#include "base/language/T.h"

namespace quelto {

namespace {

struct TierRow {
    ClipTier tier;
    const char* tag;
    const char* label;
    int leastScore;
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
    const auto* row = std::ranges::find_if(Rows, [&](const TierRow& each) { return tag == QLatin1String(each.tag); });
    return row == Rows.end() ? std::nullopt : std::optional(row->tier);
}

QString labelOf(ClipTier tier)
{
    return T(rowOf(tier).label);
}

std::optional<ClipTier> tierFromScore(int score)
{
    const auto* row = std::ranges::find_if(Rows, [=](const TierRow& each) { return score >= each.leastScore; });
    return row == Rows.end() ? std::nullopt : std::optional(row->tier);
}

} // namespace quelto
