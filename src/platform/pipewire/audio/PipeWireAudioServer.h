// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioServer.h"

namespace quelto {

/// The session's PipeWire server. It need not be running: then there are no microphones, and sources do not start.
std::unique_ptr<AudioServer> makePipeWireAudioServer();

} // namespace quelto
