// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace quelto {

/// How long a media file's picture lasts, or its sound if it has no picture. Units: seconds. Nothing for a file that
/// cannot be read. Reads the file's index only.
std::optional<double> mediaDuration(const QString& path);

} // namespace quelto
