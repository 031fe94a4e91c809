// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/mpv/OpenGlVideo.h"

#include "playback/mpv/MpvHandle.h"

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QQuickOpenGLUtils>

#include <mpv/render_gl.h>

#include <stdexcept>
#include <vector>

namespace quelto {

namespace {

void* findFunction(void* /*unused*/, const char* name)
{
    return reinterpret_cast<void*>(QOpenGLContext::currentContext()->getProcAddress(name));
}

} // namespace

OpenGlVideo::OpenGlVideo(std::shared_ptr<MpvHandle> mpv, VideoEvents events)
    : m_mpv(std::move(mpv))
    , m_events(std::move(events))
{
    std::string api = MPV_RENDER_API_TYPE_OPENGL;
    mpv_opengl_init_params functions{.get_proc_address = findFunction, .get_proc_address_ctx = nullptr};
    std::vector parameters{mpv_render_param{MPV_RENDER_PARAM_API_TYPE, api.data()},
                           mpv_render_param{MPV_RENDER_PARAM_OPENGL_INIT_PARAMS, &functions}};
    // Hardware decoders hand over their pictures through the display.
    if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()) {
        parameters.push_back({MPV_RENDER_PARAM_X11_DISPLAY, x11->display()});
    }
    parameters.push_back({MPV_RENDER_PARAM_INVALID, nullptr});
    const auto status = mpv_render_context_create(&m_context, m_mpv->get(), parameters.data());
    if (status < 0) {
        throw std::runtime_error(mpv_error_string(status));
    }
    m_mpv->command({"set", "hwdec", "auto-safe"});
    mpv_render_context_set_update_callback(
        m_context, [](void* self) { static_cast<OpenGlVideo*>(self)->m_events.onPicture(); }, this);
    m_events.onReady();
}

OpenGlVideo::~OpenGlVideo()
{
    mpv_render_context_set_update_callback(m_context, nullptr, nullptr);
    mpv_render_context_free(m_context);
}

unsigned OpenGlVideo::draw(QSize size)
{
    if (!m_target || m_target->size() != size) {
        m_target = std::make_unique<QOpenGLFramebufferObject>(size);
    }
    mpv_render_context_update(m_context);
    mpv_opengl_fbo target{
        .fbo = static_cast<int>(m_target->handle()), .w = size.width(), .h = size.height(), .internal_format = 0};
    // The window shows the picture when it can.
    int waitsForItsTime = 0;
    std::array parameters{
        mpv_render_param{MPV_RENDER_PARAM_OPENGL_FBO, &target},
        mpv_render_param{MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &waitsForItsTime},
        mpv_render_param{MPV_RENDER_PARAM_INVALID, nullptr},
    };
    mpv_render_context_render(m_context, parameters.data());
    QQuickOpenGLUtils::resetOpenGLState();
    return m_target->texture();
}

} // namespace quelto
