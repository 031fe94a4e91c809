// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quelto {

/// The total number of samples that the tracks and fragments of an MP4 file declare. A few damaged bytes can declare
/// billions, for which FFmpeg would allocate index entries before it notices that the data is missing.
///
/// Uncompressed audio does not count: FFmpeg does not index its samples one by one. This is a check for damaged files,
/// not a parser: it reads box headers only, and a limited number of them.
std::uint64_t declaredSampleCount(int fd);

} // namespace quelto
