// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FolderDialog.h"
#include "platform/portal/PortalRequest.h"

#include <QObject>

namespace quelto {

/// One dialog that the desktop shows through org.freedesktop.portal.FileChooser. Destruction closes it.
///
/// Emits one of its signals, once.
class PortalFolderDialog final : public QObject {
    Q_OBJECT

public:
    /// The timeout is for opening the dialog, not for the user.
    PortalFolderDialog(const std::shared_ptr<PortalConnection>& portal, const FolderDialog::Request& request,
                       std::chrono::milliseconds timeout);

Q_SIGNALS:
    void chosen(const QString& path);
    void cancelled();
    /// The desktop shows no such dialog.
    void unavailable();

private:
    void respond(const PortalResponse& response);

    PortalRequest m_request;
};

} // namespace quelto
