// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/scene/SceneWindow.h"

#include <memory>
#include <optional>

namespace quelto {

/// The scene's window on the Wayland compositor of WAYLAND_DISPLAY.
///
/// Draws a frame when it is asked to, and not when the compositor asks for one, as games without vertical
/// synchronisation do. If the compositor reports presentation times, the window knows the frames that were replaced
/// before they were shown.
class WaylandSceneWindow final : public SceneWindow {
public:
    WaylandSceneWindow(SceneMotion motion, const std::optional<WindowPlace>& place);
    ~WaylandSceneWindow() override;

    void waitUntilShown() override;
    /// Returns after the compositor has the frame.
    void draw(std::uint64_t frame, bool isFlashing) override;
    void handleEvents() override;
    std::vector<std::uint64_t> notShown() override;

private:
    class Client;
    std::unique_ptr<Client> m_client;
};

} // namespace quelto
