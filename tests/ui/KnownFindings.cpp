// SPDX-License-Identifier: GPL-3.0-or-later

// Qt's software renderer leaves some of its structures behind at the end of a process, and the thread sanitizer cannot
// see the locks of Qt's own libraries, which were built without it. Neither is a finding of ours. A program that draws
// and runs under a sanitizer lists this file among its sources. NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libQt6Gui\nleak:libQt6Quick\nleak:libfontconfig\n";
}

extern "C" const char* __tsan_default_suppressions()
{
    return "called_from_lib:libQt6Gui.so\ncalled_from_lib:libQt6Quick.so\nrace:libQt6Core\nrace:libQt6Gui\nrace:"
           "libQt6Quick\n";
}
// NOLINTEND(bugprone-reserved-identifier)
