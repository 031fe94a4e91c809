// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "playback/mpv/VideoEvents.h"

#include <QOpenGLFramebufferObject>
#include <QSize>

#include <memory>

struct mpv_render_context;

namespace quelto {

class MpvHandle;

/// Draws the pictures of a libmpv core with the graphics card, into a texture of the window.
///
/// Thread: the scene graph's, with its OpenGL context current, also for destruction. Errors: std::runtime_error if the
/// core already has an output or the context lacks features.
class OpenGlVideo {
public:
    OpenGlVideo(std::shared_ptr<MpvHandle> mpv, VideoEvents events);
    ~OpenGlVideo();
    OpenGlVideo(const OpenGlVideo&) = delete;
    OpenGlVideo& operator=(const OpenGlVideo&) = delete;

    /// Draws the latest picture, with black bars where it has another shape, and returns the texture. Units: pixels.
    unsigned draw(QSize size);

private:
    const std::shared_ptr<MpvHandle> m_mpv;
    const VideoEvents m_events;
    mpv_render_context* m_context = nullptr;
    std::unique_ptr<QOpenGLFramebufferObject> m_target;
};

} // namespace quelto
