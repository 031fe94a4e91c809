// SPDX-License-Identifier: GPL-3.0-or-later
// Measures grabbing and converting the screen: bench_grab [seconds] [width height]
#include "platform/x11/X11Platform.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>

int main(int argumentCount, char** arguments)
{
    using namespace quelto;
    const int seconds = argumentCount > 1 ? std::atoi(arguments[1]) : 10;
    const auto displays = makeX11Displays()->all();
    if (displays.isEmpty()) {
        std::fputs("no X server\n", stderr);
        return 1;
    }
    const auto& display = displays.first();
    const auto size = argumentCount > 3 ? QSize(std::atoi(arguments[2]), std::atoi(arguments[3])) : display.pixelSize;
    std::atomic<int> frames = 0;
    const auto source = makeX11FrameSource();
    source->open({.displayID = display.id}, {});
    source->start({.outputSize = size},
                  {.onFrame = [&](const VideoFramePtr&) { ++frames; }, .onStopped = [](const QString&) {}});
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const int framesBefore = frames;
    const auto cpuBefore = std::clock();
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    const auto cpuSeconds = static_cast<double>(std::clock() - cpuBefore) / CLOCKS_PER_SEC;
    const int grabbed = frames - framesBefore;
    std::printf("%dx%d to %dx%d: %.2f frames/s, %.3f %% of one core, %.3f ms per frame\n", display.pixelSize.width(),
                display.pixelSize.height(), size.width(), size.height(), static_cast<double>(grabbed) / seconds,
                100 * cpuSeconds / seconds, grabbed > 0 ? 1000 * cpuSeconds / grabbed : 0);
}
