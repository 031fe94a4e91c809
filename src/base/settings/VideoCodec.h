// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

/// The format in which video is encoded. A preference, and a property of every encoded frame.
enum class VideoCodec { h264, hevc };

} // namespace quelto
