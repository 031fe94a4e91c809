// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/CanberraEventSounds.h"

#include "base/tasks/SerialQueue.h"

#include <canberra.h>

#include <condition_variable>
#include <mutex>

namespace quelto {

namespace {

using std::chrono_literals::operator""ms;

/// How long destruction waits for a sound server that does not answer.
constexpr auto LongestFarewell = 500ms;

struct Destroy {
    void operator()(ca_context* context) const noexcept { ca_context_destroy(context); }
};
using Context = std::unique_ptr<ca_context, Destroy>;

/// Names of the freedesktop.org sound theme, which every other theme falls back on.
const char* eventName(EventSound sound)
{
    // In that theme: a chime that is heard for 0.9 s, and a softer one for 0.4 s; "message" is a blip of 0.05 s that
    // goes under in a game.
    return sound == EventSound::hero ? "complete" : "message-new-instant";
}

Context connectedContext()
{
    ca_context* made = nullptr;
    if (ca_context_create(&made) != CA_SUCCESS) {
        return nullptr;
    }
    Context context(made);
    // Only by the sound server: the recorder could not tell a sound that went straight to a device from others.
    ca_context_set_driver(context.get(), "pulse");
    ca_context_change_props(context.get(), CA_PROP_APPLICATION_NAME, "Quelto", CA_PROP_APPLICATION_ID,
                            "app.quelto.Quelto", CA_PROP_APPLICATION_ICON_NAME, "app.quelto.Quelto", nullptr);
    return ca_context_open(context.get()) == CA_SUCCESS ? std::move(context) : nullptr;
}

} // namespace

/// The library returns only when the sound server has taken the sound, so it is called on a queue.
struct CanberraEventSounds::Player {
    Context context;
    std::mutex mutex;
    std::condition_variable isIdle;
    int waiting = 0;
    SerialQueue queue{QStringLiteral("quelto.chime")};

    void play(EventSound sound)
    {
        // A second time for a server that has restarted since: the old connection is of no use then.
        for (int attempt = 0; attempt < 2; ++attempt) {
            if (!context) {
                context = connectedContext();
            }
            if (!context ||
                ca_context_play(context.get(), 0, CA_PROP_EVENT_ID, eventName(sound), CA_PROP_MEDIA_ROLE, "event",
                                nullptr) == CA_SUCCESS) {
                return;
            }
            context.reset();
        }
    }

    void finished()
    {
        const std::lock_guard guard(mutex);
        --waiting;
        isIdle.notify_all();
    }

    bool waitUntilIdle()
    {
        std::unique_lock lock(mutex);
        return isIdle.wait_for(lock, LongestFarewell, [this] { return waiting == 0; });
    }
};

CanberraEventSounds::CanberraEventSounds()
    : m_player(std::make_unique<Player>())
{
}

CanberraEventSounds::~CanberraEventSounds()
{
    if (!m_player->waitUntilIdle()) {
        // Left to the end of the process: the server may take another half minute to give up on.
        static_cast<void>(m_player.release());
    }
}

void CanberraEventSounds::play(EventSound sound)
{
    Player& player = *m_player;
    {
        const std::lock_guard guard(player.mutex);
        // One may wait while another is handed over; what piles up while the server is away would only come late.
        if (player.waiting > 1) {
            return;
        }
        ++player.waiting;
    }
    player.queue.post([&player, sound] {
        player.play(sound);
        player.finished();
    });
}

} // namespace quelto
