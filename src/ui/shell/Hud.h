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
    /// It tells of a failure.
    bool error = false;
    /// Of an automatic clip.
    std::optional<ClipTier> tier = std::nullopt;
};

/// The notice that stands above other windows for a moment, full-screen games among them. It never takes the focus or
/// the pointer. At most one stands at a time: a new one takes the old one's place at once.
///
/// Thread: main.
class Hud {
public:
    Hud(QQmlEngine& engine, TaskQueue& main);
    ~Hud();
    Hud(const Hud&) = delete;
    Hud& operator=(const Hud&) = delete;

    void show(const HudMessage& message);
    /// Nothing while none stands.
    const QQuickView* window() const { return m_window.get(); }

private:
    /// Runs the task if the notice of now still stands by then.
    void later(HostDuration delay, std::function<void()> task);

    QQmlEngine& m_engine;
    TaskQueue& m_main;
    std::unique_ptr<QQuickView> m_window;
};

} // namespace quelto
