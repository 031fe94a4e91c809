// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto::pipewire {

/// The channels of a stereo recording that receive an input channel.
struct ChannelDownmix {
    bool left = false;
    bool right = false;

    bool operator==(const ChannelDownmix&) const = default;
};

/// The stereo downmix of one channel, given by the server's name for it.
///
/// Left and right channels keep their level and the centre goes to both at full level: the recording is 32-bit float,
/// so sums above 1 do not clip, and the mixer's limiter handles them. LFE is omitted, as downmixes usually do, because
/// the other channels contain most of it. Channels without a position go to both sides; numbered ones alternate.
ChannelDownmix channelDownmix(const QString& channel);

} // namespace quelto::pipewire
