// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/picture/FrameConverter.h"

namespace quelto {

namespace {

constexpr int BytesPerPixel = 4;

bool fitsWithoutScaling(QSize source, QSize output)
{
    const auto rest = source - output;
    return rest.width() >= 0 && rest.width() <= 1 && rest.height() >= 0 && rest.height() <= 1;
}

} // namespace

FrameConverter::FrameConverter(InstructionSet instructionSet)
    : m_kernels(rowKernels(instructionSet))
{
}

void FrameConverter::convert(const BgrxPicture& picture, const VideoFrame& frame)
{
    if (picture.size.isEmpty() || frame.size.isEmpty()) {
        return;
    }
    if (fitsWithoutScaling(picture.size, frame.size)) {
        convertSameSize(picture, frame);
    } else {
        convertScaled(picture, frame);
    }
}

void FrameConverter::convertSameSize(const BgrxPicture& picture, const VideoFrame& frame) const
{
    const auto pictureStride = static_cast<std::ptrdiff_t>(picture.stride);
    const auto frameStride = static_cast<std::ptrdiff_t>(frame.stride);
    for (int row = 0; row + 1 < frame.size.height(); row += 2) {
        const auto* top = picture.pixels + row * pictureStride;
        auto* luma = frame.luma + row * frameStride;
        m_kernels.convertRows(
            {.top = top, .bottom = top + pictureStride},
            {.lumaTop = luma, .lumaBottom = luma + frameStride, .chroma = frame.chroma + row / 2 * frameStride},
            frame.size.width());
    }
}

void FrameConverter::convertScaled(const BgrxPicture& picture, const VideoFrame& frame)
{
    plan(picture.size, frame.size);
    const auto frameStride = static_cast<std::ptrdiff_t>(frame.stride);
    auto* top = m_scaled.data();
    auto* bottom = top + static_cast<std::size_t>(frame.size.width()) * BytesPerPixel;
    for (int row = 0; row + 1 < frame.size.height(); row += 2) {
        scaleRow(picture, row, top);
        scaleRow(picture, row + 1, bottom);
        auto* luma = frame.luma + row * frameStride;
        m_kernels.convertRows(
            {.top = top, .bottom = bottom},
            {.lumaTop = luma, .lumaBottom = luma + frameStride, .chroma = frame.chroma + row / 2 * frameStride},
            frame.size.width());
    }
}

void FrameConverter::plan(QSize source, QSize output)
{
    if (source == m_source && output == m_output) {
        return;
    }
    m_rows = RowPlan::make(source.height(), output.height());
    m_columns = ColumnPlan::make(source.width(), output.width());
    // The column kernels read pixels in pairs and may reach one past the last.
    m_blended.assign((static_cast<std::size_t>(source.width()) + 2) * BytesPerPixel, 0);
    m_scaled.resize(static_cast<std::size_t>(output.width()) * BytesPerPixel * 2);
    m_taps.resize(static_cast<std::size_t>(m_rows.taps));
    m_source = source;
    m_output = output;
}

void FrameConverter::scaleRow(const BgrxPicture& picture, int outputRow, std::uint8_t* scaled)
{
    if (picture.size == m_output * 2) {
        const auto* top = picture.pixels + std::ptrdiff_t{outputRow} * 2 * picture.stride;
        m_kernels.halveRows({.top = top, .bottom = top + picture.stride}, scaled, m_output.width());
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
            picture.pixels + (m_rows.first[index] + static_cast<std::ptrdiff_t>(tap)) * std::ptrdiff_t{picture.stride};
    }
    m_kernels.blendRows(std::span(m_taps).first(used), weights, m_blended.data(), picture.size.width() * BytesPerPixel);
    m_kernels.resampleRow(m_blended.data(), m_columns, scaled, m_output.width());
}

} // namespace quelto
