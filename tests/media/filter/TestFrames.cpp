// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/filter/TestFrames.h"

#include "media/ffmpeg/FfmpegError.h"
#include "media/filter/FilterGraph.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <cstring>

namespace quelto::test {

namespace {

const AVPixFmtDescriptor& descriptorOf(const AVFrame& frame)
{
    return *av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
}

/// Position of a pixel in a component's plane.
QPoint planePosition(const AVPixFmtDescriptor& format, int component, QPoint pixel)
{
    const bool isSubsampled = (format.flags & AV_PIX_FMT_FLAG_RGB) == 0 && component > 0;
    return isSubsampled ? QPoint(pixel.x() >> format.log2_chroma_w, pixel.y() >> format.log2_chroma_h) : pixel;
}

/// The bytes of a component at a pixel. Formats with whole bytes only.
std::uint8_t* bytesAt(const AVFrame& frame, int component, QPoint pixel)
{
    const auto& format = descriptorOf(frame);
    const auto& layout = format.comp[component];
    const auto position = planePosition(format, component, pixel);
    return frame.data[layout.plane] + std::ptrdiff_t{position.y()} * frame.linesize[layout.plane] +
        std::ptrdiff_t{position.x()} * layout.step + layout.offset;
}

void setValue(AVFrame& frame, int component, QPoint pixel, int value)
{
    const auto& layout = descriptorOf(frame).comp[component];
    const auto stored = static_cast<std::uint16_t>(value << layout.shift);
    std::memcpy(bytesAt(frame, component, pixel), &stored, layout.depth > 8 ? 2 : 1);
}

} // namespace

ffmpeg::Frame makePicture(QSize size, AVPixelFormat format)
{
    auto frame = ffmpeg::makeFrame();
    frame->width = size.width();
    frame->height = size.height();
    frame->format = format;
    frame->colorspace = AVCOL_SPC_BT709;
    frame->color_range = AVCOL_RANGE_MPEG;
    ffmpeg::checked(av_frame_get_buffer(frame.get(), 0));
    return frame;
}

ffmpeg::Frame plainPicture(QSize size, AVPixelFormat format, std::array<int, 3> values)
{
    auto frame = makePicture(size, format);
    fill(*frame, {{}, size}, values);
    return frame;
}

void fill(AVFrame& frame, QRect rect, std::array<int, 3> values)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            for (int component = 0; component < std::min<int>(descriptorOf(frame).nb_components, 3); ++component) {
                setValue(frame, component, {x, y}, values[static_cast<std::size_t>(component)]);
            }
        }
    }
}

int valueAt(const AVFrame& frame, int component, QPoint pixel)
{
    const auto& layout = descriptorOf(frame).comp[component];
    std::uint16_t stored = 0;
    std::memcpy(&stored, bytesAt(frame, component, pixel), layout.depth > 8 ? 2 : 1);
    return stored >> layout.shift;
}

std::array<int, 3> pixelAt(const AVFrame& frame, QPoint pixel)
{
    return {valueAt(frame, 0, pixel), valueAt(frame, 1, pixel), valueAt(frame, 2, pixel)};
}

int largestChange(const AVFrame& first, const AVFrame& second)
{
    int largest = 0;
    for (int component = 0; component < 3; ++component) {
        const int step = component == 0 ? 1 : 2;
        for (int y = 0; y < first.height / step; ++y) {
            for (int x = 0; x < first.width / step; ++x) {
                const int before = first.data[component][y * first.linesize[component] + x];
                largest =
                    std::max(largest, std::abs(before - second.data[component][y * second.linesize[component] + x]));
            }
        }
    }
    return largest;
}

ffmpeg::Frame generatedPicture(const std::string& description)
{
    FilterGraph graph(std::span<const AVFrame* const>(), description + ",format=yuv420p");
    auto frame = graph.tryPull();
    frame->colorspace = AVCOL_SPC_BT709;
    frame->color_range = AVCOL_RANGE_MPEG;
    return frame;
}

} // namespace quelto::test
