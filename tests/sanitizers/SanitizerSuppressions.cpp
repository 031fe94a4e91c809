// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the sanitizers report in libraries that were built without them: the thread sanitizer does not see their locks,
// and some of them never free what they allocate once. Reports in Quelto's own code are never suppressed.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libcrypto\n"
           // Leaks at each opening of the encoder.
           "leak:libx265\n"
           // The software renderer leaves structures behind at exit.
           "leak:libQt6Gui\nleak:libQt6Quick\nleak:libfontconfig\n";
}

extern "C" const char* __tsan_default_suppressions()
{
    return "called_from_lib:libQt6Core.so\ncalled_from_lib:libQt6DBus.so\ncalled_from_lib:libQt6Gui.so\n"
           "called_from_lib:libQt6Network.so\ncalled_from_lib:libQt6Quick.so\ncalled_from_lib:libdbus-1.so\n"
           "called_from_lib:libglib-2.0.so\ncalled_from_lib:libpulse.so\ncalled_from_lib:libpulsecommon\n"
           "called_from_lib:libx265\n"
           "race:libQt6Core\nrace:libQt6DBus\nrace:libQt6Gui\nrace:libQt6Quick\nrace_top:libQt6Network\n"
           "race:libcanberra\nrace:libdbus-1\nrace:libglib-2.0\nrace:libogg\nrace:libpulse\nrace:libvorbis\n"
           "race:libx265\nrace:tzset_internal\ndeadlock:libdbus-1\n"
           // Qt counts the users of a connection in its headers, and the network thread may be the last one.
           "race:QtPrivate::QSlotObject<void (quelto::LeaguePoll\n"
           // OpenSSL frees the locks of a finished network thread at exit; Qt's wait for that thread is not seen.
           "race:CRYPTO_THREAD_lock_free\n";
}
// NOLINTEND(bugprone-reserved-identifier)
