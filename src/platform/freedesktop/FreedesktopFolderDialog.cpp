// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopFolderDialog.h"

#include "base/files/FileName.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QWindow>

#include <filesystem>
#include <utility>

namespace quelto {

namespace {

/// How long a disk may take to find the start folder: users press the button again if nothing happens for longer.
constexpr std::chrono::seconds LookupTimeout{2};
constexpr std::chrono::seconds LookupExitTimeout{1};

/// The folder, or the nearest one above it that exists: the save folder does not before the first clip.
QString existing(QString folder)
{
    std::error_code ignored;
    while (!std::filesystem::is_directory(encodeFileName(folder).toStdString(), ignored) && folder.size() > 1) {
        folder = QFileInfo(folder).path();
    }
    return folder;
}

/// Deletes an object that may be the caller.
template <typename Object> void deleteLater(std::unique_ptr<Object>& object)
{
    if (object) {
        object.release()->deleteLater();
    }
}

} // namespace

FreedesktopFolderDialog::FreedesktopFolderDialog(std::shared_ptr<PortalConnection> portal,
                                                 std::chrono::milliseconds portalTimeout)
    : m_portal(std::move(portal))
    , m_portalTimeout(portalTimeout)
{
}

FreedesktopFolderDialog::~FreedesktopFolderDialog()
{
    if (m_lookup) {
        m_lookup->detach();
    }
    if (m_queue) {
        m_queue->finish(LookupExitTimeout);
    }
}

void FreedesktopFolderDialog::choose(const Request& request, Reply reply)
{
    if (m_reply) {
        return;
    }
    m_reply = std::move(reply);
    m_context = std::make_unique<QObject>();
    if (request.parent != nullptr) {
        endWith(request.parent);
    }
    lookUpStartFolder(request);
}

void FreedesktopFolderDialog::lookUpStartFolder(const Request& request)
{
    if (!m_queue) {
        m_queue = std::make_unique<SerialQueue>(QStringLiteral("quelto.dialog"));
    }
    m_lookup = std::make_shared<DetachableQueue>(m_main);
    m_queue->post([this, lookup = m_lookup, request] {
        lookup->post([this, request, folder = existing(request.startFolder)] { open(request, folder); });
    });
    m_main.postAfter(LookupTimeout, [this, lookup = m_lookup, request] {
        if (m_lookup == lookup) {
            open(request, QDir::homePath());
        }
    });
}

void FreedesktopFolderDialog::open(Request request, const QString& startFolder)
{
    m_lookup->detach();
    m_lookup.reset();
    request.startFolder = startFolder;
    if (m_portal->bus().isConnected()) {
        openPortalDialog(request);
    } else {
        openQtDialog(request);
    }
}

void FreedesktopFolderDialog::endWith(QWindow* parent)
{
    QObject::connect(parent, &QWindow::visibleChanged, m_context.get(), [this](bool isVisible) {
        if (!isVisible) {
            end();
        }
    });
    QObject::connect(parent, &QObject::destroyed, m_context.get(), [this] { end(); });
}

void FreedesktopFolderDialog::openPortalDialog(const Request& request)
{
    m_portalDialog = std::make_unique<PortalFolderDialog>(m_portal, request, m_portalTimeout);
    auto* const dialog = m_portalDialog.get();
    QObject::connect(dialog, &PortalFolderDialog::chosen, m_context.get(),
                     [this](const QString& path) { confirm(path); });
    QObject::connect(dialog, &PortalFolderDialog::cancelled, m_context.get(), [this] { end(); });
    QObject::connect(dialog, &PortalFolderDialog::unavailable, m_context.get(), [this, request] {
        deleteLater(m_portalDialog);
        openQtDialog(request);
    });
}

void FreedesktopFolderDialog::openQtDialog(const Request& request)
{
    m_qtDialog = std::make_unique<QFileDialog>(nullptr, request.title, request.startFolder);
    auto* const dialog = m_qtDialog.get();
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setLabelText(QFileDialog::Accept, request.acceptLabel);
    QObject::connect(dialog, &QFileDialog::accepted, m_context.get(), [this, dialog] {
        confirm(QDir::cleanPath(QDir::current().absoluteFilePath(dialog->selectedFiles().value(0))));
    });
    QObject::connect(dialog, &QFileDialog::rejected, m_context.get(), [this] { end(); });
    // It has a window from now on.
    dialog->winId();
    if (request.parent != nullptr && dialog->windowHandle() != nullptr) {
        dialog->windowHandle()->setTransientParent(request.parent);
    }
    dialog->open();
}

void FreedesktopFolderDialog::confirm(const QString& path)
{
    const auto reply = m_reply;
    end();
    reply(path);
}

void FreedesktopFolderDialog::end()
{
    m_reply = nullptr;
    if (m_lookup) {
        m_lookup->detach();
        m_lookup.reset();
    }
    deleteLater(m_portalDialog);
    if (m_qtDialog) {
        m_qtDialog->hide();
        deleteLater(m_qtDialog);
    }
    // The caller may be one of its connections.
    deleteLater(m_context);
}

} // namespace quelto
