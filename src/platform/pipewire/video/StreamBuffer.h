// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/PipeWireHandles.h"
#include "platform/pipewire/video/VideoBuffer.h"

namespace quelto::pipewire {

/// A buffer that was taken from a stream. Gives it back when it is destroyed.
///
/// Thread: the loop's lock held.
class StreamBuffer {
public:
    StreamBuffer(pw_stream* stream, pw_buffer* buffer, const VideoFormat& format) noexcept
        : m_stream(stream)
        , m_buffer(buffer)
        , m_format(format)
        , m_picture(readPicture(*buffer->buffer, format))
    {
    }
    ~StreamBuffer()
    {
        if (m_buffer) {
            pw_stream_queue_buffer(m_stream, m_buffer);
        }
    }
    StreamBuffer(StreamBuffer&& other) noexcept
        : m_stream(other.m_stream)
        , m_buffer(std::exchange(other.m_buffer, nullptr))
        , m_format(other.m_format)
        , m_picture(other.m_picture)
    {
    }
    StreamBuffer& operator=(StreamBuffer&&) = delete;

    const spa_buffer& contents() const noexcept { return *m_buffer->buffer; }
    /// The format of its picture, also after the stream has changed to another.
    const VideoFormat& format() const noexcept { return m_format; }
    /// As it was when the buffer was taken. Nothing if it has none.
    const std::optional<RgbImage>& picture() const noexcept { return m_picture; }
    bool is(const pw_buffer* buffer) const noexcept { return m_buffer == buffer; }
    /// The stream has removed the buffer, so it must not get it back.
    void forget() noexcept { m_buffer = nullptr; }

private:
    pw_stream* m_stream;
    pw_buffer* m_buffer;
    VideoFormat m_format;
    std::optional<RgbImage> m_picture;
};

} // namespace quelto::pipewire
