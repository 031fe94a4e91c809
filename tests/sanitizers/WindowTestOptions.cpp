// SPDX-License-Identifier: GPL-3.0-or-later
//
// At exit, Qt's libraries hold memory for fonts and shaders. A leak report does not name their functions, so they
// cannot be suppressed one by one.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __asan_default_options();

extern "C" const char* __asan_default_options()
{
    return "detect_leaks=0";
}
// NOLINTEND(bugprone-reserved-identifier)
