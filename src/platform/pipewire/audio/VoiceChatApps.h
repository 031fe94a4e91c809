// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pipewire/core/ProgramIdentity.h"

#include <QString>

namespace quelto::pipewire {

/// The id of the listed voice chat application that the program is, such as "discord". Empty if it is none.
///
/// Names are compared as a whole, without regard to case. An alternative client of a service counts as the service's
/// application. A web browser is never a voice chat application, because its sound may come from any page.
QString voiceChatAppOf(const ProgramIdentity& program);

/// The ids of all listed applications.
QStringList voiceChatApps();

} // namespace quelto::pipewire
