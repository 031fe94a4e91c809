// SPDX-License-Identifier: GPL-3.0-or-later

// What the HEVC encoder's library loses by itself at each opening, and locks in ways that the thread sanitizer cannot
// see, is no finding of ours; nor is the C library's reading of the time zone. A program that opens that encoder and
// runs under a sanitizer lists this file among its sources.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libx265\n";
}

extern "C" const char* __tsan_default_suppressions()
{
    return "race:libx265\ncalled_from_lib:libx265\nrace:tzset_internal\n";
}
// NOLINTEND(bugprone-reserved-identifier)
