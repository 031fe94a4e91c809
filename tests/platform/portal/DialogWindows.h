// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>

namespace quelto::test {

/// The windows in which GNOME asks which screen to share, as screen readers find them.
class DialogWindows {
public:
    DialogWindows();

    /// 0 also if the program that shows them is not running.
    int count() const;

private:
    QVariant property(const QString& program, const char* name) const;

    QDBusConnection m_bus;
};

} // namespace quelto::test
