// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"

namespace quelto {

/// The session's PipeWire server. While it is not running there are no microphones, and sources fail to start.
std::unique_ptr<AudioServer> makePipeWireAudioServer();

} // namespace quelto
