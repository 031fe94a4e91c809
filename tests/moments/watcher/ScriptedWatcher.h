// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/watcher/MatchWatcher.h"

#include <QCoreApplication>

namespace quelto::test {

/// Says what a test puts into it.
class ScriptedWatcher final : public MatchWatcher {
public:
    explicit ScriptedWatcher(MatchEvents atOpening = {})
        : MatchWatcher(QStringLiteral("test"))
        , m_atOpening(std::move(atOpening))
    {
        connect(this, &MatchWatcher::inGameChanged, this, [this] { m_told.append(QStringLiteral("inGame")); });
        connect(this, &MatchWatcher::characterChanged, this, [this](const QString& name) { m_told.append(name); });
        connect(this, &MatchWatcher::gameDetected, this, [this] { m_told.append(QStringLiteral("detected")); });
        connect(this, &MatchWatcher::gameEnded, this, [this] { m_told.append(QStringLiteral("ended")); });
        connect(this, &MatchWatcher::lastMomentChanged, this, [this] { m_told.append(lastMoment()); });
        connect(this, &MatchWatcher::momentDetected, this,
                [this](const Moment& moment) { m_told.append(QStringLiteral("moment ") + moment.label); });
    }

    ~ScriptedWatcher() override { finish(); }

    using GameWatcher::finish;

    QStringList told()
    {
        QCoreApplication::sendPostedEvents();
        return std::exchange(m_told, {});
    }

    std::atomic<int> opened{0};
    std::atomic<int> closed{0};

private:
    void open() override
    {
        ++opened;
        publishEvents(m_atOpening);
    }
    void close() override { ++closed; }

    MatchEvents m_atOpening;
    QStringList m_told;
};

} // namespace quelto::test
