// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/audio/PcmConverter.h"

namespace quelto {

/// A PcmConverterFactory for any sample rate, layout, encoding and channel count. Mono stays mono; everything else
/// becomes stereo. Null for a format that is not supported.
std::unique_ptr<PcmConverter> makeResamplingConverter(const AudioFormat& from);

} // namespace quelto
