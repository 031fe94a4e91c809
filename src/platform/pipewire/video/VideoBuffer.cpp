// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/VideoBuffer.h"

#include <spa/buffer/meta.h>

namespace quelto::pipewire {

namespace {

// A busy compositor delivers late, and may announce when the screen is going to show a picture.
constexpr HostDuration MaxAge = std::chrono::seconds(2);
constexpr HostDuration MaxLead = std::chrono::milliseconds(100);

const spa_meta_header* headerOf(const spa_buffer& buffer)
{
    return static_cast<const spa_meta_header*>(
        spa_buffer_find_meta_data(&buffer, SPA_META_Header, sizeof(spa_meta_header)));
}

std::int64_t rowBytes(const VideoFormat& format)
{
    return std::int64_t{format.size.width()} * bytesPerPixel(format.order);
}

std::optional<RgbImage> readPixels(const spa_data& data, const VideoFormat& format)
{
    const std::int64_t offset = data.chunk->offset;
    const std::int64_t given = data.chunk->stride;
    // Some sources leave it out where rows have no padding.
    const std::int64_t stride = given == 0 ? rowBytes(format) : given;
    // Not compared with the size of the chunk, which sources set to other values than that of the picture.
    const std::int64_t end = offset + stride * (format.size.height() - 1) + rowBytes(format);
    if (!data.data || stride < rowBytes(format) || end > std::int64_t{data.maxsize}) {
        return std::nullopt;
    }
    return RgbImage{.pixels = static_cast<const std::uint8_t*>(data.data) + offset,
                    .stride = static_cast<int>(stride),
                    .size = format.size,
                    .order = format.order};
}

bool isDmaBuf(const spa_buffer& buffer)
{
    return std::ranges::all_of(std::span(buffer.datas, buffer.n_datas), [](const spa_data& data) {
        return data.type == SPA_DATA_DmaBuf && data.fd >= 0 && data.chunk && data.chunk->stride > 0;
    });
}

} // namespace

std::optional<RgbImage> readPicture(const spa_buffer& buffer, const VideoFormat& format)
{
    if (buffer.n_datas == 0 || !buffer.datas[0].chunk) {
        return std::nullopt;
    }
    const spa_data& data = buffer.datas[0];
    const spa_meta_header* header = headerOf(buffer);
    if ((data.chunk->flags & SPA_CHUNK_FLAG_CORRUPTED) != 0 || data.chunk->size == 0 ||
        (header && (header->flags & SPA_META_HEADER_FLAG_CORRUPTED) != 0)) {
        return std::nullopt;
    }
    if (!format.dmaBuf) {
        return readPixels(data, format);
    }
    return isDmaBuf(buffer) ? std::optional(RgbImage{.size = format.size}) : std::nullopt;
}

HostTime presentationTimeOf(const spa_buffer& buffer, HostTime arrival)
{
    const spa_meta_header* header = headerOf(buffer);
    if (!header) {
        return arrival;
    }
    const HostTime time{HostDuration(header->pts)};
    return time >= arrival - MaxAge && time <= arrival + MaxLead ? time : arrival;
}

} // namespace quelto::pipewire
