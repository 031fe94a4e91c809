// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace quelto {

/// What an output of a player reports. Thread: any. The functions must not call libmpv.
struct VideoEvents {
    /// The output is connected: MpvPlayer::setOutputReady can be called.
    std::function<void()> onReady;
    /// There is a new picture.
    std::function<void()> onPicture;
};

} // namespace quelto
