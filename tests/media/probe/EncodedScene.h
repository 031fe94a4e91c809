// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/codec/VideoEncoder.h"

namespace quelto::test {

/// A moving scene, really encoded: one sample for each of the times.
std::vector<EncodedFramePtr> encodedScene(const EncoderRequest& request, const std::vector<HostTime>& times);

} // namespace quelto::test
