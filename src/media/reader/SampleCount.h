// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quelto {

/// How many samples the tracks and fragments of a movie file claim to have, all together. A few damaged bytes can claim
/// billions, for which the library would make room before it misses the first one.
///
/// Left out is sound without compression, which is not kept by the sample. Only the heads of boxes are read, and not
/// endlessly many: it is a check for damage, not a parser.
std::uint64_t claimedSamples(int file);

} // namespace quelto
