// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/DetachableQueue.h"
#include "base/tasks/MainQueue.h"
#include "base/tasks/SerialQueue.h"
#include "platform/LoginItem.h"

#include <QByteArrayList>
#include <QStringList>

#include <memory>

namespace quelto {

/// An entry in the user's folder of programs that the desktop starts at login.
///
/// An entry that the desktop has switched off reads as off, and switching on mends it. The file is replaced as a whole,
/// so a failure leaves it as it was. A file that cannot be read as a whole stays beside it, with the ending ".damaged".
/// The destructor waits for requested changes, for at most three seconds.
class FreedesktopLoginItem final : public LoginItem {
public:
    struct Options {
        /// Those of the user first.
        QStringList configFolders;
        /// What to start: an absolute path in the bytes of the file system.
        QByteArray program;
        /// As in XDG_CURRENT_DESKTOP.
        QByteArrayList desktops;
    };
    /// This program, or the AppImage that has it, on this desktop. Asked for at the start of the program, because an
    /// upgrade moves its file.
    static Options ofThisProgram();

    explicit FreedesktopLoginItem(Options options = ofThisProgram());
    ~FreedesktopLoginItem() override;
    FreedesktopLoginItem(const FreedesktopLoginItem&) = delete;
    FreedesktopLoginItem& operator=(const FreedesktopLoginItem&) = delete;

    void read(Reply reply) override;
    void setEnabled(bool isEnabled, Reply reply) override;

private:
    void post(std::function<Result()> work, Reply reply);

    const Options m_options;
    MainQueue m_main;
    /// Shared with tasks that hang on a disk.
    std::shared_ptr<DetachableQueue> m_replies = std::make_shared<DetachableQueue>(m_main);
    /// Nothing before the first request.
    std::unique_ptr<SerialQueue> m_queue;
};

} // namespace quelto
