// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/VideoFormats.h"

#include "media/types/DrmFormat.h"

#include <spa/buffer/buffer.h>
#include <spa/buffer/meta.h>
#include <spa/param/buffers.h>
#include <spa/param/format-utils.h>
#include <spa/param/param.h>
#include <spa/param/video/format-utils.h>

namespace quelto::pipewire {

namespace {

constexpr std::uint32_t MaxSide = 16384;
constexpr SpaRange<spa_rectangle> AnySize = {.preferred = {1920, 1080}, .least = {1, 1}, .most = {MaxSide, MaxSide}};
// One buffer waits for its slot, one is read, and the source fills the others. Encoders hold a few DMA-BUFs longer.
constexpr SpaRange<std::int32_t> BufferCount = {.preferred = 8, .least = 3, .most = 16};

struct PixelFormat {
    spa_video_format format;
    PixelOrder order;
    /// The name that DRM has for it, which counts from the highest byte. 0: not offered for DMA-BUFs.
    std::uint32_t drmFormat;
};

constexpr std::array PixelFormats = {
    PixelFormat{SPA_VIDEO_FORMAT_BGRx, PixelOrder::bgrx, drm::Xrgb8888},
    PixelFormat{SPA_VIDEO_FORMAT_BGRA, PixelOrder::bgrx, drm::Argb8888},
    PixelFormat{SPA_VIDEO_FORMAT_RGBx, PixelOrder::rgbx, drm::Xbgr8888},
    PixelFormat{SPA_VIDEO_FORMAT_RGBA, PixelOrder::rgbx, drm::Abgr8888},
    PixelFormat{SPA_VIDEO_FORMAT_BGR, PixelOrder::bgr, 0},
};

const PixelFormat* findPixelFormat(std::uint32_t spaFormat)
{
    const auto* found = std::ranges::find(PixelFormats, spaFormat, &PixelFormat::format);
    return found == PixelFormats.end() ? nullptr : found;
}

const PixelFormat* findDrmFormat(std::uint32_t drmFormat)
{
    const auto* found = std::ranges::find(PixelFormats, drmFormat, &PixelFormat::drmFormat);
    return drmFormat == 0 || found == PixelFormats.end() ? nullptr : found;
}

void beginOffer(SpaObjects& objects)
{
    objects.begin(SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat);
    objects.addId(SPA_FORMAT_mediaType, SPA_MEDIA_TYPE_video);
    objects.addId(SPA_FORMAT_mediaSubtype, SPA_MEDIA_SUBTYPE_raw);
}

void endOffer(SpaObjects& objects, int maxFramesPerSecond)
{
    const spa_fraction most = {static_cast<std::uint32_t>(std::max(1, maxFramesPerSecond)), 1};
    const spa_fraction variable = {0, 1};
    objects.addRange(SPA_FORMAT_VIDEO_size, AnySize);
    objects.addRange(SPA_FORMAT_VIDEO_framerate,
                     SpaRange<spa_fraction>{.preferred = variable, .least = variable, .most = most});
    objects.addRange(SPA_FORMAT_VIDEO_maxFramerate,
                     SpaRange<spa_fraction>{.preferred = most, .least = {1, 1}, .most = most});
    objects.end();
}

struct Modifier {
    bool isPresent = false;
    /// Nothing while the source has to choose.
    std::optional<std::uint64_t> value;
};

Modifier readModifier(const spa_pod* object)
{
    const spa_pod_prop* property = spa_pod_find_prop(object, nullptr, SPA_FORMAT_VIDEO_modifier);
    if (!property) {
        return {};
    }
    std::uint32_t count = 0;
    std::uint32_t choice = SPA_CHOICE_None;
    const spa_pod* values = spa_pod_get_values(&property->value, &count, &choice);
    std::int64_t value = 0;
    const bool isFinal = choice == SPA_CHOICE_None && count == 1 && spa_pod_get_long(values, &value) == 0;
    return {.isPresent = true, .value = isFinal ? std::optional(static_cast<std::uint64_t>(value)) : std::nullopt};
}

} // namespace

std::vector<std::uint32_t> dmaBufPixelFormats()
{
    std::vector<std::uint32_t> formats;
    formats.reserve(PixelFormats.size());
    for (const PixelFormat& pixels : PixelFormats) {
        if (pixels.drmFormat != 0) {
            formats.push_back(pixels.drmFormat);
        }
    }
    return formats;
}

void addFormatOffers(SpaObjects& objects, const std::vector<DmaBufFormat>& dmaBufFormats, int maxFramesPerSecond)
{
    for (const DmaBufFormat& offer : dmaBufFormats) {
        const PixelFormat* pixels = findDrmFormat(offer.format);
        if (!pixels || offer.modifiers.empty()) {
            continue;
        }
        beginOffer(objects);
        objects.addId(SPA_FORMAT_VIDEO_format, pixels->format);
        // Only the source knows which of the modifiers it can allocate, so it chooses and not the server.
        objects.addLongs(SPA_FORMAT_VIDEO_modifier, SPA_POD_PROP_FLAG_MANDATORY | SPA_POD_PROP_FLAG_DONT_FIXATE,
                         offer.modifiers);
        endOffer(objects, maxFramesPerSecond);
    }
    std::array<std::uint32_t, PixelFormats.size()> formats = {};
    std::ranges::transform(PixelFormats, formats.begin(), &PixelFormat::format);
    beginOffer(objects);
    objects.addIds(SPA_FORMAT_VIDEO_format, formats);
    endOffer(objects, maxFramesPerSecond);
}

std::optional<VideoFormat> parseVideoFormat(const spa_pod* object)
{
    std::uint32_t type = 0;
    std::uint32_t subtype = 0;
    spa_video_info_raw info = {};
    if (!object || spa_format_parse(object, &type, &subtype) < 0 || type != SPA_MEDIA_TYPE_video ||
        subtype != SPA_MEDIA_SUBTYPE_raw) {
        return std::nullopt;
    }
    const Modifier modifier = readModifier(object);
    if ((modifier.isPresent && !modifier.value) || spa_format_video_raw_parse(object, &info) < 0) {
        return std::nullopt;
    }
    const PixelFormat* pixels = findPixelFormat(info.format);
    const auto isSide = [](std::uint32_t side) { return side >= 1 && side <= MaxSide; };
    if (!pixels || !isSide(info.size.width) || !isSide(info.size.height) ||
        (modifier.isPresent && pixels->drmFormat == 0)) {
        return std::nullopt;
    }
    VideoFormat format;
    format.size = QSize(static_cast<int>(info.size.width), static_cast<int>(info.size.height));
    format.order = pixels->order;
    if (modifier.value) {
        format.dmaBuf = {.format = pixels->drmFormat, .modifier = *modifier.value};
    }
    return format;
}

void addBufferRequests(SpaObjects& objects, const VideoFormat& format)
{
    const auto types = format.dmaBuf ? 1 << SPA_DATA_DmaBuf : 1 << SPA_DATA_MemPtr | 1 << SPA_DATA_MemFd;
    objects.begin(SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers);
    objects.addRange(SPA_PARAM_BUFFERS_buffers, BufferCount);
    objects.addFlags(SPA_PARAM_BUFFERS_dataType, types);
    objects.end();
    objects.begin(SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta);
    objects.addId(SPA_PARAM_META_type, SPA_META_Header);
    objects.addInt(SPA_PARAM_META_size, sizeof(spa_meta_header));
    objects.end();
}

} // namespace quelto::pipewire
