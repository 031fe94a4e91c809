// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the sanitizers report in libraries that were built without them: the thread sanitizer does not see their locks,
// and some of them never free what they allocate once. Reports in Quelto's own code are never suppressed: entries for
// Qt match only the innermost frame, because most of Quelto's code is called from Qt's event loop.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libcrypto\n"
           // Leaks at each opening of the encoder, and x264 at each one that fails.
           "leak:libx264\nleak:libx265\n";
}

extern "C" const char* __tsan_default_suppressions()
{
    return "called_from_lib:libQt6Core.so\ncalled_from_lib:libQt6Network.so\ncalled_from_lib:libglib-2.0.so\n"
           "called_from_lib:libavcodec.so\ncalled_from_lib:libavfilter.so\ncalled_from_lib:libavutil.so\n"
           "called_from_lib:libswscale.so\n"
           "called_from_lib:libx264\ncalled_from_lib:libx265\ncalled_from_lib:libzimg\n"
           "race_top:libQt6Core\nrace_top:libQt6Network\nrace_top:libavcodec\nrace_top:libavutil\n"
           "race:libx264\nrace:libx265\nrace:libzimg\nmutex:libavfilter\nmutex:libswscale\nrace:tzset_internal\n"
           // Qt counts the users of a connection in its headers, and the network thread may be the last one.
           "race:QtPrivate::QSlotObject<void (quelto::LeaguePoll\n"
           // OpenSSL frees the locks of a finished network thread at exit; Qt's wait for that thread is not seen.
           "race:CRYPTO_THREAD_lock_free\n";
}
// NOLINTEND(bugprone-reserved-identifier)
