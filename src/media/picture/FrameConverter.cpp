// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/picture/FrameConverter.h"

namespace quelto {

namespace {

constexpr int BytesPerPixel = 4;

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

void FrameConverter::convert(const BgrxImage& image, const VideoFrame& frame)
{
    if (image.size.isEmpty() || frame.size.isEmpty()) {
        return;
    }
    if (canCrop(image.size, frame.size)) {
        convertSameSize(image, frame);
    } else {
        convertScaled(image, frame);
    }
}

void FrameConverter::convertSameSize(const BgrxImage& image, const VideoFrame& frame) const
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

void FrameConverter::convertScaled(const BgrxImage& image, const VideoFrame& frame)
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

void FrameConverter::scaleRow(const BgrxImage& image, int outputRow, std::uint8_t* scaled)
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
