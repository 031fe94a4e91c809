// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/Presets.h"

#include <QSize>

#include <optional>

namespace quelto {

/// The encoder's average bit rate: pixels × frames per second × bits per pixel, times 0.7 for HEVC, clamped to
/// 2 to 100 Mbit/s. Units: bits per second.
int bitrateFor(QSize size, int framesPerSecond, QualityPreset quality, VideoCodec codec);

/// The output size for a display of the given size: scaled down to the target height, never up; no wider than common
/// decoders accept (4096 for H.264, 8192 for HEVC); both sides even.
QSize scaledSize(QSize display, std::optional<int> targetHeight, VideoCodec codec);

} // namespace quelto
