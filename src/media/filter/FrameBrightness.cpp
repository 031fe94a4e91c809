// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/FrameBrightness.h"

#include "media/ffmpeg/FfmpegError.h"

namespace quelto {

namespace {

constexpr int LumaZero = 16;
constexpr int ChromaZero = 128;

using Table = std::array<std::uint8_t, 256>;

/// Values below the zero of luma are allowed, and move towards it.
Table tableFor(int zero, double factor)
{
    Table table{};
    for (int value = 0; value < int(table.size()); ++value) {
        table[static_cast<std::size_t>(value)] = static_cast<std::uint8_t>(std::lround(zero + (value - zero) * factor));
    }
    return table;
}

void apply(const Table& table, std::uint8_t* data, int stride, QSize size)
{
    for (int y = 0; y < size.height(); ++y) {
        auto* row = data + std::ptrdiff_t{y} * stride;
        for (int x = 0; x < size.width(); ++x) {
            row[x] = table[row[x]];
        }
    }
}

} // namespace

void multiplyBrightness(AVFrame& frame, double factor)
{
    if (factor >= 1) {
        return;
    }
    ffmpeg::checked(av_frame_make_writable(&frame));
    const auto limited = std::max(0.0, factor);
    const auto chroma = tableFor(ChromaZero, limited);
    const QSize chromaSize((frame.width + 1) / 2, (frame.height + 1) / 2);
    apply(tableFor(LumaZero, limited), frame.data[0], frame.linesize[0], {frame.width, frame.height});
    apply(chroma, frame.data[1], frame.linesize[1], chromaSize);
    apply(chroma, frame.data[2], frame.linesize[2], chromaSize);
}

} // namespace quelto
