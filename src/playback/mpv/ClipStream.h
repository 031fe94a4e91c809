// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

struct mpv_handle;

namespace quelto {

/// Lets a libmpv core read clips by ClipStream::addressOf. Unlike libmpv's own file access, it rejects pipes and
/// devices instead of blocking on them, and a path is never taken for an address of another kind.
namespace ClipStream {

/// Errors: std::runtime_error.
void addTo(mpv_handle& mpv);
/// What to load in place of the path.
QByteArray addressOf(const QString& path);

} // namespace ClipStream

} // namespace quelto
