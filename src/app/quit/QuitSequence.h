// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/quit/QuitGuard.h"
#include "base/tasks/TaskQueue.h"
#include "export/queue/ExportQueue.h"
#include "ui/shell/QuitQuestion.h"

#include <QObject>

namespace quelto {

/// Connects the decision how to quit with the exports and the window.
///
/// Thread: main.
class QuitSequence : public QObject {
    Q_OBJECT

public:
    struct Actions {
        /// Shows the window in front of the others.
        std::function<void()> showWindow;
        /// Whether the user sees what the window shows.
        std::function<bool()> isWindowActive;
        std::function<void(const QString& text)> showToast;
        /// Tells the user outside of the window why the program did not quit.
        std::function<void(const QString& failure)> notifyDesktop;
        std::function<void()> quit;
    };
    struct Dependencies {
        ExportQueue& exports;
        QuitQuestion& question;
        TaskQueue& main;
        Actions actions;
        std::function<HostTime()> clock = HostClock::now;
    };

    explicit QuitSequence(Dependencies dependencies, QObject* parent = nullptr);

    bool isQuitting() const { return m_guard.isQuitting(); }

    /// Asks first if clips are exported.
    void userQuits() { m_guard.userQuits(m_dependencies.exports.isBusy()); }
    /// Asks nothing and stops exports.
    void systemQuits() { m_guard.systemQuits(); }

private:
    void ask();
    void explain(const QString& failure);
    void busyChanged();
    void checkLater();

    Dependencies m_dependencies;
    QuitGuard m_guard;
    bool m_isChecking = false;
};

} // namespace quelto
