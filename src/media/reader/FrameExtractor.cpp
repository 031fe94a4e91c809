// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/FrameExtractor.h"

namespace quelto {

namespace {

constexpr int MaxDiscardedEntries = 10'000;

/// Frames after the end of an edit list stay in the index, and FFmpeg's seek takes time quadratic in their number.
bool isSeekFast(AVStream& stream)
{
    int discarded = 0;
    for (int i = 0; i < avformat_index_get_entries_count(&stream); ++i) {
        discarded += (avformat_index_get_entry(&stream, i)->flags & AVINDEX_DISCARD_FRAME) != 0 ? 1 : 0;
    }
    return discarded <= MaxDiscardedEntries;
}

} // namespace

FrameExtractor::FrameExtractor(const Demuxer& demuxer, AVStream& stream)
    // Threads add latency to a single frame, and the caller reads several files in parallel.
    : m_decoder(demuxer, stream, StreamDecoder::Threads::one)
{
}

ffmpeg::Frame FrameExtractor::frameAt(double seconds, double tolerance)
{
    const auto target = toTicks(seconds);
    if (!isSeekFast(m_decoder.stream())) {
        // Decode from the start without seeking; the target is within the first seconds.
        return decodeUpTo(target, toTicks(tolerance));
    }
    if (auto frame = keyFrameNear(target, toTicks(tolerance))) {
        return frame;
    }
    return m_decoder.seek(target) ? decodeUpTo(target, toTicks(tolerance)) : nullptr;
}

std::int64_t FrameExtractor::toTicks(double seconds) const
{
    return av_rescale_q(static_cast<std::int64_t>(seconds * AV_TIME_BASE), av_get_time_base_q(),
                        m_decoder.stream().time_base);
}

ffmpeg::Frame FrameExtractor::keyFrameNear(std::int64_t target, std::int64_t tolerance)
{
    ffmpeg::Packet nearest;
    auto distance = tolerance;
    for (const int direction : {AVSEEK_FLAG_BACKWARD, 0}) {
        if (!m_decoder.seek(target, direction)) {
            continue;
        }
        auto packet = m_decoder.readPacket();
        if (!packet || (packet->flags & AV_PKT_FLAG_KEY) == 0 || packet->pts == AV_NOPTS_VALUE) {
            continue;
        }
        if (const auto offset = std::abs(packet->pts - target); offset <= distance) {
            distance = offset;
            nearest = std::move(packet);
        }
    }
    return nearest ? m_decoder.decodeAlone(*nearest) : nullptr;
}

ffmpeg::Frame FrameExtractor::decodeUpTo(std::int64_t target, std::int64_t tolerance)
{
    ffmpeg::Frame latest;
    while (auto frame = m_decoder.next()) {
        const auto time = frame->best_effort_timestamp;
        if (time != AV_NOPTS_VALUE && time > target) {
            return latest ? std::move(latest) : std::move(frame);
        }
        latest = std::move(frame);
        if (time != AV_NOPTS_VALUE && time >= target - tolerance) {
            return latest;
        }
    }
    return latest;
}

} // namespace quelto
