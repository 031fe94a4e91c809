// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "capture/recorder/Recorder.h"
#include "hotkey/HotKeyManager.h"

#include <QMenu>
#include <QSystemTrayIcon>

#include <functional>

namespace quelto {

/// The commands of the status item's menu and of the window's menu.
struct ShellCommands {
    std::function<void()> showWindow;
    std::function<void()> showSettings;
    std::function<void()> openFolder;
    std::function<void()> quit;
};

/// The icon in the desktop's status area. Its menu is rebuilt each time it opens.
///
/// Thread: main.
class StatusItem : public QObject {
    Q_OBJECT

public:
    /// All outlive the object.
    struct Dependencies {
        Recorder& recorder;
        const AppSettings& settings;
        const HotKeyManager& hotKeys;
    };

    StatusItem(const Dependencies& dependencies, ShellCommands commands);

    QMenu& menu() { return m_menu; }
    QIcon icon() const { return m_icon.icon(); }
    void updateIcon();

private:
    void rebuildMenu();
    QString statusLine() const;

    QString saveText() const;

    Recorder& m_recorder;
    const AppSettings& m_settings;
    const HotKeyManager& m_hotKeys;
    ShellCommands m_commands;
    QMenu m_menu;
    QSystemTrayIcon m_icon;
};

} // namespace quelto
