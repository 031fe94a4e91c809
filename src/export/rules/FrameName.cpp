// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/FrameName.h"

#include "base/files/FileName.h"
#include "library/naming/ClipName.h"

#include <cmath>

namespace quelto {

namespace {

constexpr qint64 MillisecondsPerMinute = 60'000;
/// Longer than any clip.
constexpr double MaxSeconds = 1e6;

/// Seconds have two digits, so that the pictures of a clip are listed in their order.
QString timeText(double seconds)
{
    // Also if the time is not a number.
    const auto milliseconds = seconds > 0 ? std::llround(std::min(seconds, MaxSeconds) * 1000) : 0;
    return QString::asprintf("%lldm%06.3fs", milliseconds / MillisecondsPerMinute,
                             static_cast<double>(milliseconds % MillisecondsPerMinute) / 1000);
}

QString shortened(QString stem, qsizetype bytes)
{
    while (!stem.isEmpty() && encodeFileName(stem).size() > bytes) {
        const bool isPair =
            stem.size() > 1 && stem.back().isLowSurrogate() && stem.at(stem.size() - 2).isHighSurrogate();
        stem.chop(isPair ? 2 : 1);
    }
    return stem;
}

} // namespace

QString frameFileName(const QString& clipFileName, double seconds, int attempt, qsizetype maxBytes)
{
    auto ending = timeText(seconds);
    if (attempt > 1) {
        ending += u' ' + QString::number(attempt);
    }
    ending += QStringLiteral(".png");
    const auto stem = stemOf(clipFileName).toString();
    const auto fitting = shortened(stem, maxBytes - ending.size() - 1);
    // Not of a whole stem: the user gave it.
    const auto start = fitting.size() == stem.size() ? stem : fitting.trimmed();
    return start.isEmpty() ? ending : start + u' ' + ending;
}

} // namespace quelto
