// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusError>

namespace quelto {

/// Whether the call did not reach a portal or the portal ended before it replied, so that it may work the next time.
/// The portal also passes on such an error of the program behind it that shows the dialogs.
bool isTransportError(const QDBusError& error);

/// Whether there is no portal, nor a file that starts one.
bool isWithoutPortal(const QDBusError& error);

} // namespace quelto
