// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"
#include "moments/scoring/ClipTier.h"

#include <QQmlEngine>
#include <QQuickView>

#include <memory>
#include <optional>

namespace quelto {

struct HudMessage {
    QString title;
    QString subtitle;
    /// The message reports a failure.
    bool error = false;
    /// Set for an automatic clip.
    std::optional<ClipTier> tier = std::nullopt;
};

/// Shows a message above all other windows, full-screen games included, for 2.6 seconds. The window never takes the
/// focus or pointer input. A new message replaces the current one at once.
///
/// Thread: main.
class Hud {
public:
    Hud(QQmlEngine& engine, TaskQueue& main);
    ~Hud();
    Hud(const Hud&) = delete;
    Hud& operator=(const Hud&) = delete;

    void show(const HudMessage& message);
    /// Null while no message is shown.
    const QQuickView* window() const { return m_window.get(); }

private:
    /// Runs the task after the delay unless the current window is gone by then.
    void postForWindow(HostDuration delay, std::function<void()> task);

    QQmlEngine& m_engine;
    TaskQueue& m_main;
    std::unique_ptr<QQuickView> m_window;
};

} // namespace quelto
