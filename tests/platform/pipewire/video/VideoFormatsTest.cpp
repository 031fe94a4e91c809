// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/VideoFormats.h"

#include <spa/buffer/buffer.h>
#include <spa/buffer/meta.h>
#include <spa/param/buffers.h>
#include <spa/param/format.h>
#include <spa/param/param.h>
#include <spa/param/video/format.h>
#include <spa/param/video/raw.h>
#include <spa/pod/iter.h>

#include <gtest/gtest.h>

namespace quelto::pipewire {
namespace {

constexpr std::uint32_t Xrgb = 0x34325258;
constexpr std::uint32_t Abgr = 0x34324241;

struct FormatFields {
    std::uint32_t mediaType = SPA_MEDIA_TYPE_video;
    std::uint32_t mediaSubtype = SPA_MEDIA_SUBTYPE_raw;
    std::uint32_t format = SPA_VIDEO_FORMAT_BGRx;
    spa_rectangle size = {640, 360};
    std::vector<std::uint64_t> modifiers = {};
};

std::optional<VideoFormat> parse(const FormatFields& fields)
{
    std::array<std::uint64_t, 256> memory = {};
    spa_pod_builder builder = {};
    spa_pod_builder_init(&builder, memory.data(), sizeof memory);
    spa_pod_frame frame = {};
    const auto addId = [&](std::uint32_t key, std::uint32_t value) {
        spa_pod_builder_prop(&builder, key, 0);
        spa_pod_builder_id(&builder, value);
    };
    spa_pod_builder_push_object(&builder, &frame, SPA_TYPE_OBJECT_Format, SPA_PARAM_Format);
    addId(SPA_FORMAT_mediaType, fields.mediaType);
    addId(SPA_FORMAT_mediaSubtype, fields.mediaSubtype);
    addId(SPA_FORMAT_VIDEO_format, fields.format);
    spa_pod_builder_prop(&builder, SPA_FORMAT_VIDEO_size, 0);
    spa_pod_builder_rectangle(&builder, fields.size.width, fields.size.height);
    if (!fields.modifiers.empty()) {
        spa_pod_builder_prop(&builder, SPA_FORMAT_VIDEO_modifier,
                             fields.modifiers.size() > 1 ? SPA_POD_PROP_FLAG_DONT_FIXATE : 0);
        spa_pod_frame choice = {};
        if (fields.modifiers.size() > 1) {
            spa_pod_builder_push_choice(&builder, &choice, SPA_CHOICE_Enum, 0);
        }
        for (const std::uint64_t modifier : fields.modifiers) {
            spa_pod_builder_long(&builder, static_cast<std::int64_t>(modifier));
        }
        if (fields.modifiers.size() > 1) {
            spa_pod_builder_pop(&builder, &choice);
        }
    }
    return parseVideoFormat(static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &frame)));
}

std::vector<std::uint64_t> valuesOf(const spa_pod* object, std::uint32_t key)
{
    const spa_pod_prop* property = spa_pod_find_prop(object, nullptr, key);
    if (!property) {
        return {};
    }
    std::uint32_t count = 0;
    std::uint32_t choice = 0;
    const spa_pod* values = spa_pod_get_values(&property->value, &count, &choice);
    const auto* bytes = static_cast<const std::byte*>(SPA_POD_BODY_CONST(values));
    std::vector<std::uint64_t> result;
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint64_t value = 0;
        std::memcpy(&value, bytes + i * values->size, values->size);
        result.push_back(value);
    }
    return result;
}

TEST(VideoFormats, ReadsEveryOrderOfPixels)
{
    const std::vector<std::pair<spa_video_format, PixelOrder>> expected = {
        {SPA_VIDEO_FORMAT_BGRx, PixelOrder::bgrx}, {SPA_VIDEO_FORMAT_BGRA, PixelOrder::bgrx},
        {SPA_VIDEO_FORMAT_RGBx, PixelOrder::rgbx}, {SPA_VIDEO_FORMAT_RGBA, PixelOrder::rgbx},
        {SPA_VIDEO_FORMAT_BGR, PixelOrder::bgr},
    };
    for (const auto& [format, order] : expected) {
        const auto parsed = parse({.format = format, .size = {641, 363}});
        ASSERT_TRUE(parsed) << format;
        EXPECT_EQ(parsed->order, order) << format;
        EXPECT_EQ(parsed->size, QSize(641, 363));
        EXPECT_FALSE(parsed->dmaBuf);
    }
}

TEST(VideoFormats, ReadsAModifier)
{
    const auto parsed = parse({.format = SPA_VIDEO_FORMAT_RGBA, .modifiers = {0x0100'0000'0000'0002}});
    ASSERT_TRUE(parsed && parsed->dmaBuf);
    EXPECT_EQ(parsed->dmaBuf->format, Abgr);
    EXPECT_EQ(parsed->dmaBuf->modifier, 0x0100'0000'0000'0002u);
}

TEST(VideoFormats, ModifierZeroIsALayoutToo)
{
    const auto parsed = parse({.modifiers = {0}});
    ASSERT_TRUE(parsed && parsed->dmaBuf);
    EXPECT_EQ(parsed->dmaBuf->modifier, 0u);
}

TEST(VideoFormats, FormatWithAChoiceOfModifiersIsNotFinal)
{
    EXPECT_FALSE(parse({.modifiers = {0, 0, 1}}));
}

TEST(VideoFormats, RejectsWhatWasNotOffered)
{
    EXPECT_TRUE(parse({}));
    EXPECT_FALSE(parse({.mediaType = SPA_MEDIA_TYPE_audio}));
    EXPECT_FALSE(parse({.mediaSubtype = SPA_MEDIA_SUBTYPE_h264}));
    EXPECT_FALSE(parse({.format = SPA_VIDEO_FORMAT_NV12}));
    EXPECT_FALSE(parse({.size = {0, 360}}));
    EXPECT_FALSE(parse({.size = {640, 0}}));
    EXPECT_FALSE(parse({.size = {16385, 360}}));
    EXPECT_FALSE(parse({.format = SPA_VIDEO_FORMAT_BGR, .modifiers = {0}})) << "only offered in shared memory";
    EXPECT_FALSE(parseVideoFormat(nullptr));
}

TEST(VideoFormats, OffersSharedMemoryOnlyWithoutDmaBufs)
{
    SpaObjects offers;
    addFormatOffers(offers, {}, 1000);
    ASSERT_EQ(offers.all().size(), 1u);
    const spa_pod* offer = offers.all()[0];
    EXPECT_FALSE(spa_pod_find_prop(offer, nullptr, SPA_FORMAT_VIDEO_modifier));
    EXPECT_EQ(valuesOf(offer, SPA_FORMAT_VIDEO_format),
              (std::vector<std::uint64_t>{SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRA,
                                          SPA_VIDEO_FORMAT_RGBx, SPA_VIDEO_FORMAT_RGBA, SPA_VIDEO_FORMAT_BGR}));
    const std::uint64_t most = 1000 | std::uint64_t{1} << 32;
    const std::uint64_t least = 1 | std::uint64_t{1} << 32;
    EXPECT_EQ(valuesOf(offer, SPA_FORMAT_VIDEO_maxFramerate), (std::vector<std::uint64_t>{most, least, most}));
}

TEST(VideoFormats, OffersDmaBufsBeforeSharedMemory)
{
    SpaObjects offers;
    addFormatOffers(offers, {{Abgr, {7, 8}}, {Xrgb, {0}}}, 1000);
    ASSERT_EQ(offers.all().size(), 3u);
    EXPECT_EQ(valuesOf(offers.all()[0], SPA_FORMAT_VIDEO_format), std::vector<std::uint64_t>{SPA_VIDEO_FORMAT_RGBA});
    EXPECT_EQ(valuesOf(offers.all()[0], SPA_FORMAT_VIDEO_modifier), (std::vector<std::uint64_t>{7, 7, 8}));
    const spa_pod_prop* modifiers = spa_pod_find_prop(offers.all()[0], nullptr, SPA_FORMAT_VIDEO_modifier);
    EXPECT_EQ(modifiers->flags, SPA_POD_PROP_FLAG_MANDATORY | SPA_POD_PROP_FLAG_DONT_FIXATE);
    EXPECT_EQ(valuesOf(offers.all()[1], SPA_FORMAT_VIDEO_format), std::vector<std::uint64_t>{SPA_VIDEO_FORMAT_BGRx});
    EXPECT_FALSE(spa_pod_find_prop(offers.all()[2], nullptr, SPA_FORMAT_VIDEO_modifier));
}

TEST(VideoFormats, LeavesOutDmaBufFormatsWithoutAnSpaFormatAndTooLongLists)
{
    SpaObjects offers;
    addFormatOffers(offers, {{0, {0}}, {0x3231564e, {0}}, {Xrgb, std::vector<std::uint64_t>(5000)}}, 1000);
    ASSERT_EQ(offers.all().size(), 1u);
    EXPECT_FALSE(spa_pod_find_prop(offers.all()[0], nullptr, SPA_FORMAT_VIDEO_modifier));
}

TEST(VideoFormats, RequestsBuffersOfTheFormatsMemory)
{
    const auto typesFor = [](const VideoFormat& format) {
        SpaObjects requests;
        addBufferRequests(requests, format);
        EXPECT_EQ(requests.all().size(), 2u);
        EXPECT_EQ(valuesOf(requests.all()[1], SPA_PARAM_META_type), std::vector<std::uint64_t>{SPA_META_Header});
        return valuesOf(requests.all()[0], SPA_PARAM_BUFFERS_dataType).at(0);
    };
    EXPECT_EQ(typesFor({.size = {640, 360}}), 1u << SPA_DATA_MemPtr | 1u << SPA_DATA_MemFd);
    EXPECT_EQ(typesFor({.size = {640, 360}, .dmaBuf = VideoFormat::DmaBuf{Xrgb, 0}}), 1u << SPA_DATA_DmaBuf);
}

} // namespace
} // namespace quelto::pipewire
