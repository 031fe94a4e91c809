// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/Presets.h"

#include <QSize>

#include <optional>

namespace quelto {

/// The encoder's average rate: pixels × frames × bits a pixel, 0.7 of it for HEVC, from 2 to 100 Mbit/s.
/// Units: bits per second.
int bitrateFor(QSize size, int framesPerSecond, QualityPreset quality, VideoCodec codec);

/// The size in which a display of the given size is recorded: never scaled up, no wider than the codec's decoders take,
/// both sides even.
QSize scaledSize(QSize display, std::optional<int> targetHeight, VideoCodec codec);

} // namespace quelto
