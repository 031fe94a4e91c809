// SPDX-License-Identifier: GPL-3.0-or-later

// What the HEVC encoder's library loses by itself at each opening is no finding. A program that opens it and runs under
// the address sanitizer lists this file among its sources.
extern "C" const char* __lsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier)

extern "C" const char* __lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "leak:libx265\n";
}
