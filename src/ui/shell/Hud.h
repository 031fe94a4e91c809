// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"
#include "moments/scoring/ClipTier.h"
#include "platform/Overlay.h"

#include <QQmlEngine>
#include <QQuickView>

#include <chrono>
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
    /// A desktop notification that the user can click tells the same.
    bool isNotifiedToo = false;
};

/// Shows a message above all other windows, full-screen games included, for 2.6 seconds. The window never takes the
/// focus or pointer input. A new message replaces the current one at once.
///
/// Thread: main.
class Hud {
public:
    static constexpr std::chrono::milliseconds DisplayTime{2600};

    Hud(QQmlEngine& engine, TaskQueue& main);
    ~Hud();
    Hud(const Hud&) = delete;
    Hud& operator=(const Hud&) = delete;

    void show(const HudMessage& message);
    /// Shows the message as a picture, where no window of the program can be above those of others.
    void showOn(Overlay& overlay, const HudMessage& message);
    /// Null while no message is shown.
    const QQuickView* window() const { return m_window.get(); }

private:
    enum class Form { window, picture };

    std::unique_ptr<QQuickView> makeView(const HudMessage& message, Form form) const;
    /// Runs the task after the delay unless the current window is gone by then.
    void postForWindow(HostDuration delay, std::function<void()> task);

    QQmlEngine& m_engine;
    TaskQueue& m_main;
    std::unique_ptr<QQuickView> m_window;
};

} // namespace quelto
