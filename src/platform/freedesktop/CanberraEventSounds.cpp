// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/CanberraEventSounds.h"

#include "base/tasks/SerialQueue.h"

#include <canberra.h>

#include <condition_variable>
#include <mutex>

namespace quelto {

namespace {

using std::chrono_literals::operator""ms;

/// How long the destructor waits for a sound server that does not respond.
constexpr auto ShutdownTimeout = 500ms;

struct ContextDeleter {
    void operator()(ca_context* context) const noexcept { ca_context_destroy(context); }
};
using ContextPtr = std::unique_ptr<ca_context, ContextDeleter>;

/// Names from the freedesktop.org sound theme, to which all other themes fall back.
const char* eventName(EventSound sound)
{
    switch (sound) {
    case EventSound::hero:
        // In that theme, a chime of 0.9 s.
        return "complete";
    case EventSound::glass:
        // A softer one of 0.4 s. "message" lasts only 0.05 s, which is easily missed in a game.
        return "message-new-instant";
    case EventSound::bell:
        break;
    }
    return "bell";
}

ContextPtr tryConnect()
{
    ca_context* created = nullptr;
    if (ca_context_create(&created) != CA_SUCCESS) {
        return nullptr;
    }
    ContextPtr context(created);
    // Never straight to a device, because the recorder recognizes its own sounds only on the sound server.
    ca_context_set_driver(context.get(), "pulse");
    ca_context_change_props(context.get(), CA_PROP_APPLICATION_NAME, "Quelto", CA_PROP_APPLICATION_ID,
                            "app.quelto.Quelto", CA_PROP_APPLICATION_ICON_NAME, "app.quelto.Quelto", nullptr);
    return ca_context_open(context.get()) == CA_SUCCESS ? std::move(context) : nullptr;
}

} // namespace

/// Calls the library on a queue, because it blocks until the sound server has accepted the sound.
struct CanberraEventSounds::Player {
    ContextPtr context;
    std::mutex mutex;
    std::condition_variable isIdle;
    int pendingSounds = 0;
    SerialQueue queue{QStringLiteral("quelto.chime")};

    void play(EventSound sound)
    {
        // The second attempt uses a new connection, in case the server was restarted.
        for (int attempt = 0; attempt < 2; ++attempt) {
            if (!context) {
                context = tryConnect();
            }
            if (!context ||
                ca_context_play(context.get(), 0, CA_PROP_EVENT_ID, eventName(sound), CA_PROP_MEDIA_ROLE, "event",
                                nullptr) == CA_SUCCESS) {
                return;
            }
            context.reset();
        }
    }

    void finishSound()
    {
        const std::lock_guard guard(mutex);
        --pendingSounds;
        isIdle.notify_all();
    }

    bool waitUntilIdle()
    {
        std::unique_lock lock(mutex);
        return isIdle.wait_for(lock, ShutdownTimeout, [this] { return pendingSounds == 0; });
    }
};

CanberraEventSounds::CanberraEventSounds()
    : m_player(std::make_unique<Player>())
{
}

CanberraEventSounds::~CanberraEventSounds()
{
    if (!m_player->waitUntilIdle()) {
        // Leaked on purpose: it may take half a minute until the connection to the server times out.
        static_cast<void>(m_player.release());
    }
}

void CanberraEventSounds::play(EventSound sound)
{
    Player& player = *m_player;
    {
        const std::lock_guard guard(player.mutex);
        // One sound may wait while another is being submitted. Further ones are dropped, because they would play late.
        if (player.pendingSounds > 1) {
            return;
        }
        ++player.pendingSounds;
    }
    player.queue.post([&player, sound] {
        player.play(sound);
        player.finishSound();
    });
}

} // namespace quelto
