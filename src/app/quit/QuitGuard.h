// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/quit/StallWatch.h"

#include <QString>

#include <functional>

namespace quelto {

/// Decides what a request to quit does while clips are exported. A user is asked once. The system, for example at
/// logout, is not delayed by a question.
///
/// Quitting after the exports is cancelled by an export that fails or hangs, because the user has to learn of it.
///
/// Thread: main.
class QuitGuard {
public:
    struct Actions {
        /// Opens the question. If it is open, only brings it to the user's attention.
        std::function<void()> ask;
        /// Closes the question, which no longer matters.
        std::function<void()> withdraw;
        /// Tells the user that the program quits when the exports are done.
        std::function<void()> announce;
        /// Tells the user why the program did not quit.
        std::function<void(const QString& failure)> explain;
        std::function<void()> stopExports;
        /// Called once.
        std::function<void()> quit;
    };

    explicit QuitGuard(Actions actions);

    /// Whether the program ends, which cannot be undone.
    bool isQuitting() const { return m_state == State::quitting; }

    void userQuits(bool isExporting);
    void systemQuits();

    // The answers to the question.
    void quitWhenDone();
    void quitNow();
    void stay();

    void exportsEnded();
    void exportFailed(const QString& message);
    /// Call this every second or so while clips are exported. An export hangs if `signsOfLife` has not changed for a
    /// minute; it may compute for a while without a change.
    void check(HostTime now, std::uint64_t signsOfLife);

private:
    enum class State { running, asking, waiting, quitting };

    void stopAndQuit();
    void quit();

    Actions m_actions;
    State m_state = State::running;
    StallWatch m_stallWatch;
};

} // namespace quelto
