// SPDX-License-Identifier: GPL-3.0-or-later
// Replays whole sessions in the game's log format, read once a second while the logs grow. The ".moments" file next to
// each log lists the expected moments.
#include "moments/wow/LogTail.h"
#include "moments/wow/WowFights.h"
#include "tests/moments/wow/Fixtures.h"
#include "tests/moments/wow/TestFolder.h"

#include <QRegularExpression>
#include <QStringList>

#include <gtest/gtest.h>

#include <map>

namespace quelto {
namespace {

struct TimedLine {
    double time = 0;
    std::string file;
    QByteArray bytes;
};

double secondsOf(const QByteArray& line)
{
    static const QRegularExpression stamp(QStringLiteral(R"( (\d+):(\d+):(\d+)\.(\d{3}))"));
    const auto match = stamp.match(QString::fromUtf8(line.left(40)));
    EXPECT_TRUE(match.hasMatch()) << line.toStdString();
    return match.captured(1).toInt() * 3600 + match.captured(2).toInt() * 60 + match.captured(3).toInt() +
        match.captured(4).toInt() / 1000.0;
}

QString toText(double readAt, const Moment& moment)
{
    QStringList markers;
    for (const auto& event : moment.events) {
        markers.append(event.name + u' ' + QString::number(event.secondsBeforeEnd));
    }
    return QStringLiteral("%1 | %2 | %3 | %4 | %5 | %6")
        .arg(QString::number(readAt), tagOf(moment.tier), QString::number(moment.score),
             QString::number(moment.seconds), moment.label, markers.join(QStringLiteral(", ")));
}

/// A session of one or more logs. Times are in seconds since the second of the first line.
class Session {
public:
    explicit Session(const QStringList& names)
    {
        for (const auto& name : names) {
            auto lines = readFixture(name + QStringLiteral(".log")).split('\n');
            lines.removeLast();
            for (const auto& line : lines) {
                m_lines.push_back({secondsOf(line), "WoWCombatLog-" + name.toStdString() + ".txt", line + '\n'});
            }
        }
        const auto firstSecond = std::floor(m_lines.front().time);
        for (auto& line : m_lines) {
            line.time -= firstSecond;
            // The session continues after midnight.
            line.time += line.time < 0 ? 86'400 : 0;
        }
        std::stable_sort(m_lines.begin(), m_lines.end(),
                         [](const auto& one, const auto& other) { return one.time < other.time; });
    }

    /// Replays the session for a watcher that starts at the given second; returns its moments.
    QStringList replay(double start = 0)
    {
        QStringList moments;
        const TestFolder folder;
        WowFights fights;
        double now = start;
        const auto record = [&](const QList<Moment>& list) {
            for (const auto& moment : list) {
                moments.append(toText(now, moment));
            }
        };
        LogTail tail([&](QByteArrayView line) {
            if (const auto event = logEvent(line)) {
                record(fights.take(*event, now));
            }
        });
        auto next = m_lines.begin();
        for (; next != m_lines.end() || now < m_lines.back().time + 20; ++now) {
            std::map<std::string, double> written;
            for (; next != m_lines.end() && next->time <= now; ++next) {
                TestFolder::append(folder.path() / next->file, next->bytes);
                written[next->file] = next->time;
            }
            for (const auto& [file, time] : written) {
                TestFolder::setModified(folder.path() / file, time);
            }
            if (const auto log = newestLog({folder.path()})) {
                tail.follow(*log, now - log->modified);
            }
            record(fights.tick(now));
        }
        return moments;
    }

private:
    std::vector<TimedLine> m_lines;
};

QStringList expected(const QString& name, double from = 0)
{
    QStringList rows;
    for (const auto& row : QString::fromUtf8(readFixture(name + QStringLiteral(".moments"))).split(u'\n')) {
        if (!row.isEmpty() && !row.startsWith(u'#') && row.section(u' ', 0, 0).toDouble() >= from) {
            rows.append(row);
        }
    }
    EXPECT_FALSE(rows.isEmpty());
    return rows;
}

TEST(Replay, DetectsMomentsOfBattleground)
{
    EXPECT_EQ(Session({QStringLiteral("battleground")}).replay(), expected(QStringLiteral("battleground")));
}

TEST(Replay, DetectsMomentsOfRaidOverMidnight)
{
    EXPECT_EQ(Session({QStringLiteral("raid-night")}).replay(), expected(QStringLiteral("raid-night")));
}

TEST(Replay, DetectsMomentsOfKeystoneRuns)
{
    EXPECT_EQ(Session({QStringLiteral("keystones")}).replay(), expected(QStringLiteral("keystones")));
}

TEST(Replay, DetectsMomentsInTwoLogs)
{
    EXPECT_EQ(Session({QStringLiteral("evening-first"), QStringLiteral("evening-second")}).replay(),
              expected(QStringLiteral("evening")));
}

TEST(Replay, StartMidSessionIgnoresOldEvents)
{
    EXPECT_EQ(Session({QStringLiteral("raid-night")}).replay(90), expected(QStringLiteral("raid-night"), 90));
}

} // namespace
} // namespace quelto
