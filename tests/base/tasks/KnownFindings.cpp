// SPDX-License-Identifier: GPL-3.0-or-later

// The thread sanitizer cannot see the locks of libraries that were built without it, and OpenSSL keeps what a thread of
// Qt's that lives to the end of the process has not given back. What one of them does to its own objects is no finding
// of ours; what we do is looked at, wherever it is called from. A program with an event loop in a thread of its own
// lists this file among its sources. NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libcrypto\n";
}

extern "C" const char* __tsan_default_suppressions()
{
    return "called_from_lib:libQt6Core.so\ncalled_from_lib:libQt6Network.so\ncalled_from_lib:libglib-2.0.so\n"
           "race_top:libQt6Core\nrace_top:libQt6Network\n"
           // Qt counts the users of a connection in its headers, and the network's thread may be the last one.
           "race:QtPrivate::QSlotObject<void (quelto::LeaguePoll\n";
}
// NOLINTEND(bugprone-reserved-identifier)
