// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/OverlayFade.h"

namespace quelto {

namespace {

constexpr std::chrono::milliseconds FrameInterval{16};

double ratio(std::chrono::milliseconds part, std::chrono::milliseconds whole)
{
    return static_cast<double>(part.count()) / static_cast<double>(whole.count());
}

} // namespace

OverlayFade fadeAt(const OverlayPicture& picture, std::chrono::milliseconds time)
{
    if (time < picture.fadeIn) {
        return {.opacity = ratio(time, picture.fadeIn), .next = FrameInterval};
    }
    if (time < picture.displayTime) {
        return {.opacity = 1.0, .next = picture.displayTime - time};
    }
    const auto end = picture.displayTime + picture.fadeOut;
    if (time < end) {
        return {.opacity = ratio(end - time, picture.fadeOut), .next = FrameInterval};
    }
    return {};
}

} // namespace quelto
