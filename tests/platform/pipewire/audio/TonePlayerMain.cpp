// SPDX-License-Identifier: GPL-3.0-or-later
// Plays a tone, as a program other than the test: tone_player LEFT_HERTZ RIGHT_HERTZ AMPLITUDE [beep|steady [TARGET]]
// Prints the time of each beep in nanoseconds. Exits when its input is closed.
#include "TonePlayer.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>

using namespace quelto;
using namespace quelto::pipewire;

int main(int count, char** arguments)
{
    if (count < 4) {
        return 64;
    }
    const Tone tone = {
        .leftHertz = std::atof(arguments[1]),
        .rightHertz = std::atof(arguments[2]),
        .amplitude = static_cast<float>(std::atof(arguments[3])),
        .target = count > 5 ? QString::fromUtf8(arguments[5]) : QString(),
        .isBeeping = count > 4 && std::string_view(arguments[4]) == "beep",
    };
    const TonePlayer player(tone, [](HostTime time) {
        std::printf("%lld\n", static_cast<long long>(time.time_since_epoch().count()));
        std::fflush(stdout);
    });
    while (std::getchar() != EOF) { }
    return 0;
}
