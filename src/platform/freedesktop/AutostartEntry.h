// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace quelto {

/// The contents of a desktop entry that starts a program at login. Keys that are none of our business stay as they are,
/// also comments and translations. Damaged contents count up to the damage, and contents that are no desktop entry as
/// an empty one.
///
/// Thread: any.
class AutostartEntry {
public:
    /// The names of the desktop as in XDG_CURRENT_DESKTOP, some of which an entry may name.
    AutostartEntry(QByteArray contents, QByteArrayList desktops);

    /// Whether the desktop starts the program at login.
    bool isEnabled() const;
    /// Whether enabled() and disabled() lose some of the contents.
    bool isDamaged() const;
    /// An entry that starts the program, whatever switched this one off before. Keeps a command that starts the program
    /// with arguments of the user.
    QByteArray enabled(const QByteArray& program) const;
    QByteArray disabled() const;

    /// The value of the key Exec that starts the program without arguments, before the file's own escapes.
    static QByteArray commandFor(const QByteArray& program);

private:
    QByteArray m_contents;
    QByteArrayList m_desktops;
};

} // namespace quelto
