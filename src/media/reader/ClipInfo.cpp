// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/ClipInfo.h"

namespace quelto {

namespace {

/// A longer duration is an error in the file; the bound keeps the rounding within the integer range.
constexpr double MaxShownDuration = 1e12;

} // namespace

QString ClipInfo::durationText() const
{
    const auto seconds = duration > 0 ? std::llround(std::min(duration, MaxShownDuration)) : 0;
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'));
}

} // namespace quelto
