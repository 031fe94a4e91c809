// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/time/HostClock.h"
#include "platform/pipewire/core/PipeWireHandles.h"

#include <QSize>

#include <spa/param/video/raw.h>

#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace quelto::pipewire {

/// A node in PipeWire's graph that offers pictures as a compositor does, in any way that the test asks for.
class FakeScreen {
public:
    struct Settings {
        QSize size = {320, 180};
        spa_video_format format = SPA_VIDEO_FORMAT_BGRx;
        /// Units: bytes. 0: without padding.
        int stride = 0;
        std::uint32_t offset = 0;
        bool hasHeader = true;
        /// If there are any, buffers are said to be DMA-BUFs if the other side takes them.
        std::vector<std::uint64_t> modifiers;
    };

    enum class Flaw { none, corruptedChunk, corruptedHeader, empty };

    /// The top left quarter has the colour. The others have those of quarterColours().
    struct Picture {
        std::uint32_t rgb = 0;
        /// Now, if not given.
        std::optional<HostTime> time = std::nullopt;
        Flaw flaw = Flaw::none;
    };

    explicit FakeScreen(const Settings& settings);
    ~FakeScreen();
    FakeScreen(const FakeScreen&) = delete;
    FakeScreen& operator=(const FakeScreen&) = delete;

    /// Waits until the server knows the node.
    std::uint32_t nodeId();
    /// Whether the other side has agreed on a format and takes buffers.
    bool waitUntilStreaming();
    /// Waits for a free buffer. False if none becomes free.
    bool show(const Picture& picture);
    /// Shows a picture if a buffer is free.
    bool tryShow(const Picture& picture);
    /// Offers another format in place of the present one.
    void change(const Settings& settings);
    /// The modifier of the buffers. Nothing if they are shared memory.
    std::optional<std::uint64_t> modifier() const;

private:
    struct Memory {
        /// What was agreed on when the buffer was made.
        Settings settings;
        int descriptor = -1;
        std::uint8_t* bytes = nullptr;
        std::size_t size = 0;
    };

    static const pw_stream_events StreamEvents;

    void offer(std::optional<std::uint64_t> chosen);
    void handleFormat(const spa_pod* format);
    void addBuffer(pw_buffer* buffer);
    void removeBuffer(pw_buffer* buffer);
    void runCycle();

    /// With the loop's lock held.
    Settings m_settings;
    /// With a stride that is not 0.
    Settings m_agreed;
    std::optional<std::uint64_t> m_modifier;
    std::map<pw_buffer*, Memory> m_memory;
    bool m_isCycleRunning = false;

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    pw_stream_state m_state = PW_STREAM_STATE_UNCONNECTED;

    ThreadLoopPtr m_loop;
    std::optional<LoopTimer> m_cycleTimer;
    StreamPtr m_stream;
};

/// The colours of the top right, bottom left and bottom right quarter of a picture.
inline constexpr std::array<std::uint32_t, 3> QuarterColours = {0xc02040, 0x20b050, 0x3050d0};

} // namespace quelto::pipewire
