// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace quelto {

/// What the window's menus and buttons make happen beyond the recorder, and why the last save failed, if it did.
///
/// Thread: main.
class WindowCommands : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString lastFailure READ lastFailure NOTIFY lastSaveChanged)
    Q_PROPERTY(QString settingsPath READ settingsPath CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)

public:
    struct Actions {
        std::function<void()> openFolder;
        /// In the desktop's own player.
        std::function<void(const QString& path)> play;
        std::function<void()> hide;
        std::function<void()> minimize;
        std::function<void()> close;
        std::function<void()> quit;
    };

    WindowCommands(Actions actions, QString settingsPath, QObject* parent = nullptr);

    /// Why the last save failed; empty if it did not.
    QString lastFailure() const { return m_lastFailure; }
    QString settingsPath() const { return m_settingsPath; }
    QString version() const;

    Q_INVOKABLE void openFolder() const { m_actions.openFolder(); }
    Q_INVOKABLE void play(const QString& path) const { m_actions.play(path); }
    Q_INVOKABLE void hide() const { m_actions.hide(); }
    Q_INVOKABLE void minimize() const { m_actions.minimize(); }
    Q_INVOKABLE void close() const { m_actions.close(); }
    Q_INVOKABLE void quit() const { m_actions.quit(); }
    /// Lets the item do "undo", "cut", "copy", "paste" or "selectAll", if it can.
    Q_INVOKABLE static void edit(const QString& verb, QObject* item);

    void clipSaved();
    void saveFailed(const QString& message);

Q_SIGNALS:
    void lastSaveChanged();

private:
    Actions m_actions;
    QString m_settingsPath;
    QString m_lastFailure;
};

} // namespace quelto
