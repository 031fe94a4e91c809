// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "playback/model/Player.h"

#include <QStringList>

namespace quelto::test {

/// A player whose time the test moves. Records what it is asked to do.
class FakePlayer final : public Player {
public:
    void open(const QString& path) override
    {
        calls.append(QStringLiteral("open ") + path);
        m_position = 0;
        m_rate = 0;
        m_duration.reset();
        m_isOpening = true;
    }
    bool isOpening() const override { return m_isOpening; }
    void close() override
    {
        calls.append(QStringLiteral("close"));
        m_duration.reset();
        m_isOpening = false;
    }
    void play(double rate) override
    {
        calls.append(QStringLiteral("play %1").arg(rate));
        m_rate = rate;
    }
    void pause() override
    {
        calls.append(QStringLiteral("pause"));
        m_rate = 0;
    }
    void seek(double seconds) override
    {
        calls.append(QStringLiteral("seek %1").arg(seconds));
        m_position = seconds;
    }
    void setVolume(double volume) override { calls.append(QStringLiteral("volume %1").arg(volume)); }
    double position() const override { return m_position; }
    std::optional<double> duration() const override { return m_duration; }
    double rate() const override { return m_rate; }
    const FrameTimes& frames() const override { return frameTimes; }

    /// The file is open.
    void opened(double duration)
    {
        m_isOpening = false;
        m_duration = duration;
        Q_EMIT changed();
    }
    /// The file cannot be played.
    void failed()
    {
        m_isOpening = false;
        Q_EMIT changed();
    }
    void playTo(double position) { m_position = position; }
    void playToTheEnd()
    {
        m_position = m_duration.value_or(0);
        m_rate = 0;
        Q_EMIT ended();
    }
    /// What it was asked since the last call.
    QStringList takeCalls() { return std::exchange(calls, {}); }

    QStringList calls;
    FrameTimes frameTimes;

private:
    double m_position = 0;
    std::optional<double> m_duration;
    double m_rate = 0;
    bool m_isOpening = false;
};

} // namespace quelto::test
