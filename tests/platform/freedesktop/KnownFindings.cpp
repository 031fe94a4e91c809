// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the thread sanitizer says of libraries that are built without it: it does not see their locks. Findings in our
// own code stay findings. NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __tsan_default_suppressions()
{
    return "called_from_lib:libdbus-1.so\ncalled_from_lib:libQt6DBus.so\nrace:libdbus-1\nrace:libQt6DBus\n"
           "race:libQt6Core\ndeadlock:libdbus-1\ncalled_from_lib:libpulse.so\ncalled_from_lib:libpulsecommon\n"
           "race:libpulse\nrace:libcanberra\nrace:libglib-2.0\nrace:libogg\nrace:libvorbis\n";
}
// NOLINTEND(bugprone-reserved-identifier)
