// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/watcher/MatchWatcher.h"

#include <QCoreApplication>

namespace quelto::test {

/// Publishes the events given by the test when it opens, and records the emitted signals.
class ScriptedWatcher final : public MatchWatcher {
public:
    explicit ScriptedWatcher(MatchEvents eventsOnOpen = {})
        : MatchWatcher(QStringLiteral("test"))
        , m_eventsOnOpen(std::move(eventsOnOpen))
    {
        connect(this, &MatchWatcher::inGameChanged, this, [this] { m_received.append(QStringLiteral("inGame")); });
        connect(this, &MatchWatcher::characterChanged, this, [this](const QString& name) { m_received.append(name); });
        connect(this, &MatchWatcher::gameDetected, this, [this] { m_received.append(QStringLiteral("detected")); });
        connect(this, &MatchWatcher::gameEnded, this, [this] { m_received.append(QStringLiteral("ended")); });
        connect(this, &MatchWatcher::lastMomentChanged, this, [this] { m_received.append(lastMoment()); });
        connect(this, &MatchWatcher::momentDetected, this,
                [this](const Moment& moment) { m_received.append(QStringLiteral("moment ") + moment.label); });
    }

    ~ScriptedWatcher() override { stopAndWait(); }

    using GameWatcher::stopAndWait;

    QStringList takeReceived()
    {
        QCoreApplication::sendPostedEvents();
        return std::exchange(m_received, {});
    }

    std::atomic<int> openCount{0};
    std::atomic<int> closeCount{0};

private:
    void open() override
    {
        ++openCount;
        publishEvents(m_eventsOnOpen);
    }
    void close() override { ++closeCount; }

    MatchEvents m_eventsOnOpen;
    QStringList m_received;
};

} // namespace quelto::test
