// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/mpv/SoftwareVideo.h"

#include "playback/mpv/EndingWork.h"
#include "playback/mpv/MpvHandle.h"

#include <mpv/render.h>

#include <array>
#include <condition_variable>
#include <mutex>
#include <pthread.h>
#include <thread>

namespace quelto {

namespace {

/// Null if it fails.
mpv_render_context* createContext(mpv_handle* mpv)
{
    std::string api = MPV_RENDER_API_TYPE_SW;
    std::array parameters{
        mpv_render_param{MPV_RENDER_PARAM_API_TYPE, api.data()},
        mpv_render_param{MPV_RENDER_PARAM_INVALID, nullptr},
    };
    mpv_render_context* context = nullptr;
    return mpv_render_context_create(&context, mpv, parameters.data()) < 0 ? nullptr : context;
}

void draw(mpv_render_context& context, QImage& picture)
{
    std::array size{picture.width(), picture.height()};
    std::string format = "bgr0";
    auto stride = static_cast<std::size_t>(picture.bytesPerLine());
    // The window shows the picture when it can.
    int waitsForItsTime = 0;
    std::array parameters{
        mpv_render_param{MPV_RENDER_PARAM_SW_SIZE, size.data()},
        mpv_render_param{MPV_RENDER_PARAM_SW_FORMAT, format.data()},
        mpv_render_param{MPV_RENDER_PARAM_SW_STRIDE, &stride},
        mpv_render_param{MPV_RENDER_PARAM_SW_POINTER, picture.bits()},
        mpv_render_param{MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &waitsForItsTime},
        mpv_render_param{MPV_RENDER_PARAM_INVALID, nullptr},
    };
    mpv_render_context_render(&context, parameters.data());
}

} // namespace

struct SoftwareVideo::State {
    struct Wanted {
        QSize size;
        /// Pictures of an earlier number are dropped.
        int discards = 0;
    };

    State(std::shared_ptr<MpvHandle> core, VideoEvents callbacks)
        : mpv(std::move(core))
        , events(std::move(callbacks))
    {
    }

    /// On the drawing thread, which owns the context.
    void run()
    {
        pthread_setname_np(pthread_self(), "quelto.playback");
        const std::scoped_lock output(mpv->outputLock());
        context = createContext(mpv->get());
        if (context != nullptr) {
            drawPictures();
            mpv_render_context_free(context);
        }
    }

    void drawPictures()
    {
        mpv_render_context_set_update_callback(
            context, [](void* self) { static_cast<State*>(self)->wake(); }, this);
        report(events.onReady);
        QImage spare;
        while (const auto next = waitForWork()) {
            if (next->size.isEmpty()) {
                continue;
            }
            if (spare.size() != next->size || !spare.isDetached()) {
                spare = QImage(next->size, QImage::Format_RGB32);
            }
            draw(*context, spare);
            publish(spare, next->discards);
        }
        mpv_render_context_set_update_callback(context, nullptr, nullptr);
    }

    /// With the lock.
    void requestDrawing()
    {
        isDrawingRequested = true;
        isAwake = true;
    }

    void wake()
    {
        {
            const std::scoped_lock guard(lock);
            isAwake = true;
        }
        changed.notify_one();
    }

    /// The picture to draw; nothing at the end.
    std::optional<Wanted> waitForWork()
    {
        for (;;) {
            std::unique_lock guard(lock);
            changed.wait(guard, [this] { return isAwake || isEnded; });
            if (isEnded) {
                return std::nullopt;
            }
            isAwake = false;
            const auto isRequested = std::exchange(isDrawingRequested, false);
            const auto latest = wanted;
            guard.unlock();
            const bool hasFrame = (mpv_render_context_update(context) & MPV_RENDER_UPDATE_FRAME) != 0;
            if (hasFrame || isRequested) {
                return latest;
            }
        }
    }

    void publish(QImage& drawn, int discards)
    {
        {
            const std::scoped_lock guard(lock);
            if (discards != wanted.discards) {
                return;
            }
            picture.swap(drawn);
        }
        report(events.onPicture);
    }

    /// Nothing is reported after the end.
    void report(const std::function<void()>& event)
    {
        const std::scoped_lock guard(lock);
        if (!isEnded) {
            event();
        }
    }

    /// Destroyed after the core.
    std::optional<EndingWork> ending;
    const std::shared_ptr<MpvHandle> mpv;
    const VideoEvents events;
    mpv_render_context* context = nullptr;
    std::mutex lock;
    std::condition_variable changed;
    QImage picture;
    Wanted wanted;
    bool isAwake = false;
    bool isDrawingRequested = false;
    bool isEnded = false;
};

SoftwareVideo::SoftwareVideo(std::shared_ptr<MpvHandle> mpv, VideoEvents events)
    : m_state(std::make_shared<State>(std::move(mpv), std::move(events)))
{
    std::thread([state = m_state] { state->run(); }).detach();
}

SoftwareVideo::~SoftwareVideo()
{
    {
        const std::scoped_lock guard(m_state->lock);
        m_state->ending.emplace();
        m_state->isEnded = true;
    }
    m_state->changed.notify_one();
}

void SoftwareVideo::setSize(QSize size)
{
    {
        const std::scoped_lock guard(m_state->lock);
        if (size == m_state->wanted.size) {
            return;
        }
        m_state->wanted.size = size;
        m_state->requestDrawing();
    }
    m_state->changed.notify_one();
}

void SoftwareVideo::discard()
{
    {
        const std::scoped_lock guard(m_state->lock);
        ++m_state->wanted.discards;
        m_state->picture = {};
        m_state->requestDrawing();
    }
    m_state->changed.notify_one();
}

QImage SoftwareVideo::picture() const
{
    const std::scoped_lock guard(m_state->lock);
    return m_state->picture;
}

} // namespace quelto
