// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/SettingsFile.h"

#include <QObject>
#include <QWindow>

#include <functional>

namespace quelto {

/// Tells the user once in the life of an installation that the program goes on without its window: when the window is
/// first closed or hidden on a desktop without a status area, where nothing else shows it. Owned by the window.
///
/// Thread: main.
class BackgroundNotice : public QObject {
    Q_OBJECT

public:
    struct Desktop {
        std::function<bool()> hasStatusArea;
        /// Shows the notice to the user.
        std::function<void()> tell;
    };

    BackgroundNotice(QWindow& window, SettingsFile& settings, Desktop desktop);

    bool eventFilter(QObject* watched, QEvent* event) override;
    /// To be called after the user hid the window in another way than by closing it.
    void windowPutAway();

private:
    SettingsFile& m_settings;
    Desktop m_desktop;
    bool m_isTold;
};

} // namespace quelto
