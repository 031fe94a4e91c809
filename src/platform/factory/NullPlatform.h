// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Displays.h"
#include "platform/FrameSource.h"

#include <memory>

namespace quelto {

/// The screen of a session in which it cannot be recorded: a display that never opens.
///
/// The message is a translated sentence for the user. FrameSource::open() throws it as a PlatformError.
std::unique_ptr<Displays> makeNullDisplays();
std::unique_ptr<FrameSource> makeNullFrameSource(const QString& message);

} // namespace quelto
