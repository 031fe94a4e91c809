// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/OverlayPicture.h"

#include <chrono>
#include <optional>

namespace quelto {

/// How visible a picture is at a time after it appeared.
struct OverlayFade {
    /// 0 to 1. Nothing at the end of the picture.
    std::optional<double> opacity;
    /// When to ask again.
    std::chrono::milliseconds next{0};

    bool operator==(const OverlayFade&) const = default;
};

OverlayFade fadeAt(const OverlayPicture& picture, std::chrono::milliseconds time);

} // namespace quelto
