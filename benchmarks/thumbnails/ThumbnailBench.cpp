// SPDX-License-Identifier: GPL-3.0-or-later
// Measures reading a clip's thumbnail: reads it COUNT times, writes it once as a PNG, and prints the median time in
// milliseconds.
//
//   bench_thumbnail CLIP THUMBNAIL.png COUNT
#include "media/reader/ClipReader.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    using Clock = std::chrono::steady_clock;
    const int count = argc == 4 ? std::atoi(argv[3]) : 0;
    if (count < 1) {
        std::fputs("usage: bench_thumbnail CLIP THUMBNAIL.png COUNT\n", stderr);
        return 64;
    }
    const auto clip = QString::fromLocal8Bit(argv[1]);
    QImage thumbnail;
    std::vector<double> milliseconds;
    for (int i = 0; i < count; ++i) {
        const auto start = Clock::now();
        thumbnail = quelto::readClip(clip).thumbnail;
        milliseconds.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    if (!thumbnail.save(QString::fromLocal8Bit(argv[2]))) {
        std::fputs("cannot save the thumbnail\n", stderr);
        return 1;
    }
    const auto middle = milliseconds.begin() + count / 2;
    std::nth_element(milliseconds.begin(), middle, milliseconds.end());
    std::printf("%.2f\n", *middle);
    return 0;
}
