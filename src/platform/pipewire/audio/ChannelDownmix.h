// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto::pipewire {

struct ChannelDownmix {
    bool left = false;
    bool right = false;

    bool operator==(const ChannelDownmix&) const = default;
};

/// On which sides of a stereo recording a speaker belongs.
///
/// Sides keep their level and the middle goes to both in full: the recording is 32-bit float, where sums above 1 keep
/// their shape, and the mixer's limiter sees to the rest. The bass speaker is left out, as in every fold-down: what
/// it plays is mostly in the other channels as well. Speakers without a place go to both, numbered ones by turns.
ChannelDownmix channelDownmix(const QString& channel);

} // namespace quelto::pipewire
