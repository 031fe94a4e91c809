// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/SerialQueue.h"

#include <QString>

#include <memory>
#include <optional>

namespace quelto {

/// What the portal gave for the screen that the user chose, so that it does not ask again at the next start. A desktop
/// may accept it only once: each start returns the one for the next.
///
/// Kept in a file that other users cannot read. Without the file, the token is kept until the program ends.
///
/// Thread: main. Errors: none; without a token, the desktop asks the user.
class RestoreToken {
public:
    /// In the user's folder for states of programs.
    static QString defaultPath();

    explicit RestoreToken(QString path = defaultPath());
    ~RestoreToken();
    RestoreToken(const RestoreToken&) = delete;
    RestoreToken& operator=(const RestoreToken&) = delete;

    /// Empty without one.
    QString load();
    /// Replaces the token. Empty: forgets it. The file is written in the background, because the disk may hang.
    void save(const QString& token);

private:
    QString m_path;
    /// Nothing before the file was read.
    std::optional<QString> m_token;
    /// Nothing before the first token is saved.
    std::unique_ptr<SerialQueue> m_queue;
};

} // namespace quelto
