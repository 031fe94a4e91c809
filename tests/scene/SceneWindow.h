// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/scene/SceneOptions.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace quelto {

/// A window without decorations that shows the counter, a moving picture and the flash.
///
/// Thread: one. Errors: std::runtime_error if there is no display server or its connection breaks.
class SceneWindow {
public:
    SceneWindow() = default;
    virtual ~SceneWindow() = default;
    SceneWindow(const SceneWindow&) = delete;
    SceneWindow& operator=(const SceneWindow&) = delete;

    /// A window on the display server of the options.
    static std::unique_ptr<SceneWindow> create(const SceneOptions& options);

    /// Waits until the window is visible at its position.
    virtual void waitUntilShown() = 0;
    /// Gives the frame to the display server, and returns when the server has it.
    virtual void draw(std::uint64_t frame, bool isFlashing) = 0;
    /// Answers the display server. A window that is not drawn needs it several times a second.
    virtual void handleEvents() = 0;
    /// The drawn frames that the server reported not to have shown, in order. Empty if servers do not report it.
    virtual std::vector<std::uint64_t> notShown() { return {}; }
};

} // namespace quelto
