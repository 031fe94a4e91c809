// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/ShownFrame.h"

#include "media/reader/FrameToImage.h"
#include "media/reader/VideoTrackReader.h"

#include <limits>

namespace quelto {

namespace {

using namespace std::chrono_literals;

constexpr HostDuration Rounding = 100us;
/// Longer than any clip; bounds the conversion of times.
constexpr double MaxSeconds = 1e6;

} // namespace

QImage readShownFrame(const QString& path, double seconds, const std::stop_token& stop)
{
    VideoTrackReader reader(path, stop);
    // Also if the time is not a number.
    const auto time = seconds > 0 ? fromSeconds(std::min(seconds, MaxSeconds)) : HostDuration::zero();
    reader.seek(time + Rounding);
    const auto shown = reader.next();
    if (!shown || stop.stop_requested()) {
        return {};
    }
    auto& frame = *shown->frame;
    return toImage(frame, reader.pixelAspect(frame), reader.display(), std::numeric_limits<int>::max());
}

} // namespace quelto
