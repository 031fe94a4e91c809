// SPDX-License-Identifier: GPL-3.0-or-later

// Qt's libraries were built without the thread sanitizer, so it sees neither their locks nor that a task is handed from
// one thread's event loop to another's: all that passes there looks like a race.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __tsan_default_suppressions()
{
    return "race:libQt6Core\nrace:libQt6Network\nrace:libglib\n";
}
// NOLINTEND(bugprone-reserved-identifier)
