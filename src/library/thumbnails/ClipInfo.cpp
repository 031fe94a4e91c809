// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/thumbnails/ClipInfo.h"

namespace quelto {

namespace {

/// Beyond it a duration is an error of the file, and before the numbers end.
constexpr double LongestDuration = 1e12;

} // namespace

QString ClipInfo::durationText() const
{
    const auto seconds = duration > 0 ? std::llround(std::min(duration, LongestDuration)) : 0;
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'));
}

} // namespace quelto
