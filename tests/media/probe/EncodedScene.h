// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/VideoEncoder.h"

namespace quelto::test {

/// A moving scene encoded with a real encoder: one frame for each time.
std::vector<EncodedFramePtr> encodedScene(const EncoderRequest& request, const std::vector<HostTime>& times);

} // namespace quelto::test
