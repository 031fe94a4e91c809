// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/ReadFrameTimes.h"

#include "media/ffmpeg/Handles.h"
#include "media/reader/Demuxer.h"

#include <algorithm>
#include <utility>

namespace quelto {

namespace {

/// Frames that an edit list cuts off are decoded and not shown.
bool isShown(const AVPacket& packet)
{
    return packet.pts != AV_NOPTS_VALUE && (packet.flags & AV_PKT_FLAG_DISCARD) == 0;
}

/// The index has decoding times only. They are the times of presentation if no frame waits for a later one, which the
/// first packet confirms.
bool isIndexInOrder(AVStream& stream, const AVPacket& first)
{
    const auto* entry = avformat_index_get_entry(&stream, 0);
    return stream.codecpar->video_delay == 0 && entry != nullptr && first.pts == first.dts &&
        first.pts == entry->timestamp && isShown(first);
}

std::vector<std::int64_t> indexTimes(AVStream& stream)
{
    std::vector<std::int64_t> times;
    const auto count = avformat_index_get_entries_count(&stream);
    for (int i = 0; i < count; ++i) {
        const auto* entry = avformat_index_get_entry(&stream, i);
        if ((entry->flags & AVINDEX_DISCARD_FRAME) == 0) {
            times.push_back(entry->timestamp);
        }
    }
    return times;
}

} // namespace

std::vector<double> readFrameTimes(const QString& path, const std::stop_token& stop)
{
    const Demuxer demuxer(path, Deadline(stop));
    auto* const stream = demuxer.videoStream();
    if (stream == nullptr) {
        return {};
    }
    for (unsigned i = 0; i < demuxer.context().nb_streams; ++i) {
        auto* const other = demuxer.context().streams[i];
        other->discard = other == stream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
    std::vector<std::int64_t> ticks;
    const auto packet = ffmpeg::makePacket();
    bool isFirst = true;
    while (av_read_frame(&demuxer.context(), packet.get()) >= 0) {
        const bool isVideo = packet->stream_index == stream->index;
        if (isVideo && std::exchange(isFirst, false) && isIndexInOrder(*stream, *packet)) {
            ticks = indexTimes(*stream);
            break;
        }
        if (isVideo && isShown(*packet)) {
            ticks.push_back(packet->pts);
        }
        av_packet_unref(packet.get());
    }
    if (stop.stop_requested()) {
        return {};
    }
    std::ranges::sort(ticks);
    std::vector<double> times;
    times.reserve(ticks.size());
    for (const auto tick : ticks) {
        times.push_back(static_cast<double>(tick) * av_q2d(stream->time_base));
    }
    return times;
}

} // namespace quelto
