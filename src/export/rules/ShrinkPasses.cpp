// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/ShrinkPasses.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quelto {

namespace {

constexpr double BytesPerMegabyte = 1'000'000;
/// A clip closer to the limit is shrunk too, to keep a margin.
constexpr double UnchangedShare = 0.97;
/// Each is 0.8 times the one before.
constexpr std::array<double, ShrinkPasses::Count> TargetShares{0.9, 0.72, 0.576};

} // namespace

bool ShrinkPasses::isSmallEnough(qint64 bytes) const
{
    return static_cast<double>(bytes) <= limitMB * BytesPerMegabyte * UnchangedShare;
}

double ShrinkPasses::targetBytes(int pass) const
{
    return limitMB * BytesPerMegabyte * TargetShares[static_cast<std::size_t>(std::clamp(pass, 0, Count - 1))];
}

ShrinkVerdict ShrinkPasses::verdict(int pass, qint64 bytes) const
{
    if (static_cast<double>(bytes) <= limitMB * BytesPerMegabyte) {
        return ShrinkVerdict::accept;
    }
    return pass < Count - 1 ? ShrinkVerdict::tryAgain : ShrinkVerdict::acceptTooLarge;
}

} // namespace quelto
