// SPDX-License-Identifier: GPL-3.0-or-later

// Qt's own libraries were built without the thread sanitizer, so it sees neither their locks nor that an event is
// handed from one thread to another: whatever goes through an event loop or the network's thread looks like a race. A
// program that waits for Qt's events of another thread and runs under the sanitizer lists this file among its sources.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __tsan_default_suppressions()
{
    return "called_from_lib:libQt6Network.so\nrace:libQt6Core\nrace:libQt6Network\nrace:libglib\n";
}
// NOLINTEND(bugprone-reserved-identifier)
