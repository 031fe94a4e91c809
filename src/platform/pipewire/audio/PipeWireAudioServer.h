// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"

namespace quelto {

/// The session's PipeWire server. While it is not running there are no microphones, and sources wait for it.
std::unique_ptr<AudioServer> makePipeWireAudioServer();

} // namespace quelto
