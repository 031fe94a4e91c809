// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/DetachableQueue.h"
#include "base/tasks/MainQueue.h"
#include "base/tasks/SerialQueue.h"
#include "platform/FolderDialog.h"
#include "platform/freedesktop/PortalFolderDialog.h"

#include <QObject>

#include <memory>

class QFileDialog;

namespace quelto {

/// The dialog of the desktop's portal, or Qt's own on a desktop without one. In Qt's, names that are not text cannot be
/// chosen. Requires QApplication.
///
/// The start folder is looked up in the background. If its disk does not respond, the dialog starts in the home folder.
class FreedesktopFolderDialog final : public FolderDialog {
public:
    /// The portal and its back end may have to start before the dialog opens; after the timeout, Qt's dialog opens.
    explicit FreedesktopFolderDialog(std::shared_ptr<PortalConnection> portal,
                                     std::chrono::milliseconds portalTimeout = std::chrono::seconds(10));
    ~FreedesktopFolderDialog() override;
    FreedesktopFolderDialog(const FreedesktopFolderDialog&) = delete;
    FreedesktopFolderDialog& operator=(const FreedesktopFolderDialog&) = delete;

    void choose(const Request& request, Reply reply) override;

private:
    void lookUpStartFolder(const Request& request);
    void open(Request request, const QString& startFolder);
    void openPortalDialog(const Request& request);
    void openQtDialog(const Request& request);
    void endWith(QWindow* parent);
    void confirm(const QString& path);
    void end();

    std::shared_ptr<PortalConnection> m_portal;
    std::chrono::milliseconds m_portalTimeout;
    /// Empty while no dialog is open.
    Reply m_reply;
    /// Of the connections to the dialog that is open.
    std::unique_ptr<QObject> m_context;
    std::unique_ptr<PortalFolderDialog> m_portalDialog;
    std::unique_ptr<QFileDialog> m_qtDialog;
    MainQueue m_main;
    /// For the start folder of the dialog that is about to open. Shared with a task that may hang on a disk.
    std::shared_ptr<DetachableQueue> m_lookup;
    /// Nothing before the first dialog.
    std::unique_ptr<SerialQueue> m_queue;
};

} // namespace quelto
