// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace quelto {

/// The duration of a media file's video track, or of its audio track if it has no video. Nothing for a file that cannot
/// be read. Reads the index only. Units: seconds.
std::optional<double> mediaDuration(const QString& path);

} // namespace quelto
