// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace quelto {

/// The actions of the window's menus and buttons, other than those of the recorder.
///
/// Thread: main.
class WindowCommands : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString version READ version CONSTANT)

public:
    struct Actions {
        std::function<void()> openFolder;
        std::function<void()> hide;
        std::function<void()> minimize;
        std::function<void()> close;
        std::function<void()> quit;
    };

    explicit WindowCommands(Actions actions, QObject* parent = nullptr);

    QString version() const;

    Q_INVOKABLE void openFolder() const { m_actions.openFolder(); }
    Q_INVOKABLE void hide() const { m_actions.hide(); }
    Q_INVOKABLE void minimize() const { m_actions.minimize(); }
    Q_INVOKABLE void close() const { m_actions.close(); }
    Q_INVOKABLE void quit() const { m_actions.quit(); }
    /// Calls the item's method "undo", "cut", "copy", "paste" or "selectAll" if it has it. The item may be null.
    Q_INVOKABLE static void edit(const QString& method, QObject* item);

private:
    Actions m_actions;
};

} // namespace quelto
