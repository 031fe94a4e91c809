// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/picture/FrameConverter.h"

namespace quelto {

namespace {

constexpr int BytesPerPixel = bytesPerPixel(PixelOrder::bgrx);

bool canCrop(QSize source, QSize output)
{
    const auto excess = source - output;
    return excess.width() >= 0 && excess.width() <= 1 && excess.height() >= 0 && excess.height() <= 1;
}

} // namespace

FrameConverter::FrameConverter(InstructionSet instructionSet)
    : m_kernels(rowKernels(instructionSet))
{
}

void FrameConverter::convert(const RgbImage& image, const VideoFrame& frame)
{
    if (image.size.isEmpty() || frame.size.isEmpty()) {
        return;
    }
    const auto source = image.order == PixelOrder::bgrx ? image : reordered(image);
    if (canCrop(source.size, frame.size)) {
        convertSameSize(source, frame);
    } else {
        convertScaled(source, frame);
    }
}

RgbImage FrameConverter::reordered(const RgbImage& image)
{
    const int stride = image.size.width() * BytesPerPixel;
    const int step = bytesPerPixel(image.order);
    const std::ptrdiff_t blue = image.order == PixelOrder::rgbx ? 2 : 0;
    const std::ptrdiff_t red = 2 - blue;
    m_reordered.resize(static_cast<std::size_t>(stride) * static_cast<std::size_t>(image.size.height()));
    auto* to = m_reordered.data();
    for (int row = 0; row < image.size.height(); ++row) {
        const auto* from = image.pixels + static_cast<std::ptrdiff_t>(row) * image.stride;
        for (int column = 0; column < image.size.width(); ++column, from += step, to += BytesPerPixel) {
            to[0] = from[blue];
            to[1] = from[1];
            to[2] = from[red];
        }
    }
    return {.pixels = m_reordered.data(), .stride = stride, .size = image.size};
}

void FrameConverter::convertSameSize(const RgbImage& image, const VideoFrame& frame) const
{
    const auto imageStride = static_cast<std::ptrdiff_t>(image.stride);
    const auto frameStride = static_cast<std::ptrdiff_t>(frame.stride);
    for (int row = 0; row + 1 < frame.size.height(); row += 2) {
        const auto* top = image.pixels + row * imageStride;
        auto* luma = frame.luma + row * frameStride;
        m_kernels.convertRows(
            {.top = top, .bottom = top + imageStride},
            {.lumaTop = luma, .lumaBottom = luma + frameStride, .chroma = frame.chroma + row / 2 * frameStride},
            frame.size.width());
    }
}

void FrameConverter::convertScaled(const RgbImage& image, const VideoFrame& frame)
{
    updatePlan(image.size, frame.size);
    const auto frameStride = static_cast<std::ptrdiff_t>(frame.stride);
    auto* top = m_scaled.data();
    auto* bottom = top + static_cast<std::size_t>(frame.size.width()) * BytesPerPixel;
    for (int row = 0; row + 1 < frame.size.height(); row += 2) {
        scaleRow(image, row, top);
        scaleRow(image, row + 1, bottom);
        auto* luma = frame.luma + row * frameStride;
        m_kernels.convertRows(
            {.top = top, .bottom = bottom},
            {.lumaTop = luma, .lumaBottom = luma + frameStride, .chroma = frame.chroma + row / 2 * frameStride},
            frame.size.width());
    }
}

void FrameConverter::updatePlan(QSize source, QSize output)
{
    if (source == m_source && output == m_output) {
        return;
    }
    m_rows = RowPlan::make(source.height(), output.height());
    m_columns = ColumnPlan::make(source.width(), output.width());
    // The column kernels read pixels in pairs and may read one past the last.
    m_blended.assign((static_cast<std::size_t>(source.width()) + 2) * BytesPerPixel, 0);
    m_scaled.resize(static_cast<std::size_t>(output.width()) * BytesPerPixel * 2);
    m_taps.resize(static_cast<std::size_t>(m_rows.taps));
    m_source = source;
    m_output = output;
}

void FrameConverter::scaleRow(const RgbImage& image, int outputRow, std::uint8_t* scaled)
{
    if (image.size == m_output * 2) {
        const auto* top = image.pixels + std::ptrdiff_t{outputRow} * 2 * image.stride;
        m_kernels.halveRows({.top = top, .bottom = top + image.stride}, scaled, m_output.width());
        return;
    }
    const auto index = static_cast<std::size_t>(outputRow);
    const auto taps = static_cast<std::size_t>(m_rows.taps);
    const auto* weights = m_rows.weights.data() + index * taps;
    std::size_t used = 0;
    for (std::size_t tap = 0; tap < taps; ++tap) {
        if (weights[tap] != 0) {
            used = tap + 1;
        }
        m_taps[tap] =
            image.pixels + (m_rows.first[index] + static_cast<std::ptrdiff_t>(tap)) * std::ptrdiff_t{image.stride};
    }
    m_kernels.blendRows(std::span(m_taps).first(used), weights, m_blended.data(), image.size.width() * BytesPerPixel);
    m_kernels.resampleRow(m_blended.data(), m_columns, scaled, m_output.width());
}

} // namespace quelto
