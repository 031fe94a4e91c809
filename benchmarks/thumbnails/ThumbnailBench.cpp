// SPDX-License-Identifier: GPL-3.0-or-later
// What a clip's picture costs: reads it as often as told, writes it as a PNG once, and prints the median of the
// readings in milliseconds.
//
//   bench_thumbnail CLIP PICTURE.png COUNT
#include "media/reader/ClipReader.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    using Clock = std::chrono::steady_clock;
    const int count = argc == 4 ? std::atoi(argv[3]) : 0;
    if (count < 1) {
        std::fputs("usage: bench_thumbnail CLIP PICTURE.png COUNT\n", stderr);
        return 64;
    }
    const auto clip = QString::fromLocal8Bit(argv[1]);
    QImage picture;
    std::vector<double> milliseconds;
    for (int i = 0; i < count; ++i) {
        const auto start = Clock::now();
        picture = quelto::readClip(clip).picture;
        milliseconds.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    if (!picture.save(QString::fromLocal8Bit(argv[2]))) {
        std::fputs("no picture\n", stderr);
        return 1;
    }
    const auto middle = milliseconds.begin() + count / 2;
    std::nth_element(milliseconds.begin(), middle, milliseconds.end());
    std::printf("%.2f\n", *middle);
    return 0;
}
