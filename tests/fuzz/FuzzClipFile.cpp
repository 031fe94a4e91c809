// SPDX-License-Identifier: GPL-3.0-or-later
// Reads arbitrary bytes as a clip file. Requires no crash and results within bounds.
#include "media/reader/ClipReader.h"

#include "tests/fuzz/MemoryFile.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using quelto::fuzz::require;
    const quelto::fuzz::MemoryFile file(data, size);
    const auto preview = quelto::readClip(file.path(), {}, std::chrono::seconds(2));
    require(std::isfinite(preview.info.duration) && preview.info.duration >= 0);
    require(std::isfinite(preview.info.fps) && preview.info.fps >= 0);
    require(preview.info.width >= 0 && preview.info.height >= 0);
    require(preview.thumbnail.width() <= 640 && preview.thumbnail.height() <= 640);
    return 0;
}
