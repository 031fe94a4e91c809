// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/audio/PcmConverter.h"

namespace quelto {

/// A converter from any rate, layout, encoding and number of channels to planar floats at 48,000 Hz; mono stays mono,
/// everything else becomes stereo. Null for a format that nobody can read. A PcmConverterFactory.
std::unique_ptr<PcmConverter> makeResamplingConverter(const AudioFormat& from);

} // namespace quelto
