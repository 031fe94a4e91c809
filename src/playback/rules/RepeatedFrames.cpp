// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/rules/RepeatedFrames.h"

#include <algorithm>
#include <cmath>

namespace quelto::RepeatedFrames {

namespace {

constexpr int Rate = 25;
/// A seek of libmpv accepts a frame that is up to 0.005 s early. A repeat that close to the next frame must be a repeat
/// of that one.
constexpr double Lead = 0.006;
/// Less than the time between repeats, more than that between frames of a clip with 30 frames per second.
constexpr double MinDistance = 0.035;
/// Between the times of libmpv's frames and ours.
constexpr double Tolerance = 0.001;

} // namespace

QByteArray filter()
{
    // In microseconds, frames of the clip have even times and repeats odd ones. `select` tells them apart by that.
    return "lavfi=[split[frames][copies];"
           "[frames]settb=1/1000000,setpts='2*floor(PTS/2)'[originals];"
           "[copies]setpts='PTS-" +
        QByteArray::number(Lead) + "/TB',fps=" + QByteArray::number(Rate) +
        ":round=up,settb=1/1000000,setpts='PTS+1'[repeats];"
        "[originals][repeats]interleave,select='not(mod(pts,2))+gt(t-prev_selected_t," +
        QByteArray::number(MinDistance) + ")']";
}

double lastShown(double time, double shown, double next)
{
    const auto limit = std::min(time + Tolerance, next - Lead - Tolerance);
    const auto repeat = std::floor(limit * Rate) / Rate;
    return repeat > shown + MinDistance + Tolerance ? repeat : shown;
}

} // namespace quelto::RepeatedFrames
