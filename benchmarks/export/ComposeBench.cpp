// SPDX-License-Identifier: GPL-3.0-or-later
// Times the drawing of one 9:16 picture from a 1080p one: cropped, on the blurred background, and on a background that
// FFmpeg's filter blurs at full size.
#include "export/rules/Placement.h"
#include "media/ffmpeg/BlackFrame.h"
#include "media/filter/FilterGraph.h"
#include "media/filter/FrameComposer.h"

#include <benchmark/benchmark.h>

#include <array>

namespace quelto {
namespace {

constexpr QSize Canvas(1080, 1920);

/// A moving texture, so that no two pictures are alike.
ffmpeg::Frame texture(int index)
{
    auto frame = blackFrame({1920, 1080});
    for (int y = 0; y < frame->height; ++y) {
        auto* row = frame->data[0] + static_cast<std::ptrdiff_t>(frame->linesize[0]) * y;
        for (int x = 0; x < frame->width; ++x) {
            row[x] = static_cast<std::uint8_t>(16 + (x * 3 + y * 5 + index * 7) % 200);
        }
    }
    return frame;
}

std::array<ffmpeg::Frame, 4> pictures()
{
    return {texture(0), texture(1), texture(2), texture(3)};
}

void composed(benchmark::State& state, FillMode fill)
{
    const auto frames = pictures();
    FrameComposer composer([fill](QSizeF size) { return frameLayout(size, Canvas, fill); });
    std::size_t next = 0;
    for (const auto& iteration : state) {
        static_cast<void>(iteration);
        benchmark::DoNotOptimize(composer.compose(*frames[next++ % frames.size()], {1, 1}, {}));
    }
}

void fullSizeBlur(benchmark::State& state)
{
    const auto frames = pictures();
    FilterGraph graph(
        *frames.front(),
        "split[a][b];[b]scale=-2:1920,crop=1080:1920,gblur=sigma=38.57,eq=brightness=-0.12:saturation=1.15[c];"
        "[a]scale=1080:608[d];[c][d]overlay=0:656");
    std::int64_t next = 0;
    for (const auto& iteration : state) {
        static_cast<void>(iteration);
        auto& frame = *frames[static_cast<std::size_t>(next) % frames.size()];
        frame.pts = next++;
        graph.push(frame);
        benchmark::DoNotOptimize(graph.tryPull());
    }
}

BENCHMARK_CAPTURE(composed, crop, FillMode::crop)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(composed, blur, FillMode::blur)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(fullSizeBlur)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quelto
