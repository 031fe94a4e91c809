// SPDX-License-Identifier: GPL-3.0-or-later
// Replays whole matches, as the game posts them. The first line of a fixture is a complete post. Each further line
// holds the changes in the next post as a merge patch: an object is merged, null removes a field. "whole" marks a
// complete post. The ".expected" file next to the fixture lists the resulting events with their times.
#include "moments/dota/DotaMatch.h"

#include "tests/moments/dota/EventText.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace quelto {
namespace {

QStringList readLines(const QString& fileName)
{
    QFile file(QStringLiteral(QUELTO_DOTA_FIXTURES "/") + fileName);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << fileName.toStdString();
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

QJsonObject merged(QJsonObject object, const QJsonObject& patch)
{
    for (auto field = patch.begin(); field != patch.end(); ++field) {
        if (field->isNull()) {
            object.remove(field.key());
        } else if (field->isObject()) {
            object[field.key()] = merged(object.value(field.key()).toObject(), field->toObject());
        } else {
            object[field.key()] = *field;
        }
    }
    return object;
}

/// Passes the posts to the match at their times, and ticks at every whole second until a minute after the last post.
class Replay {
public:
    QStringList lines;

    void run(const QStringList& recording)
    {
        QJsonObject post;
        for (const auto& line : recording) {
            const auto entry = QJsonDocument::fromJson(line.toUtf8()).object();
            ASSERT_TRUE(entry.contains(QStringLiteral("at"))) << line.toStdString();
            tickUntil(entry[QStringLiteral("at")].toDouble());
            post = entry.contains(QStringLiteral("whole")) ? entry[QStringLiteral("whole")].toObject()
                                                           : merged(post, entry[QStringLiteral("post")].toObject());
            const auto state = readDotaState(QJsonDocument(post).toJson());
            ASSERT_TRUE(state);
            record(m_now, m_match.posted(*state, m_now));
        }
        tickUntil(m_now + 60);
    }

private:
    void tickUntil(double time)
    {
        for (double second = std::floor(m_now) + 1; second <= time; ++second) {
            const bool isNeeded = m_match.needsTick();
            const auto events = m_match.tick(second);
            EXPECT_TRUE(isNeeded || events.isEmpty());
            record(second, events);
        }
        m_now = time;
    }

    void record(double time, const MatchEvents& events)
    {
        for (const auto& text : eventTexts(events)) {
            lines.append(QStringLiteral("%1 %2").arg(time).arg(text));
        }
    }

    double m_now = 0;
    DotaMatch m_match;
};

class DotaReplay : public testing::TestWithParam<const char*> { };

TEST_P(DotaReplay, MatchesExpectedTable)
{
    const auto name = QString::fromUtf8(GetParam());
    Replay replay;
    replay.run(readLines(name + QStringLiteral(".jsonl")));
    EXPECT_EQ(replay.lines.join(u'\n').toStdString(),
              readLines(name + QStringLiteral(".expected")).join(u'\n').toStdString());
}

INSTANTIATE_TEST_SUITE_P(Matches, DotaReplay,
                         testing::Values("WholeMatch", "StartInMidMatch", "Reconnect", "Abandoned", "Spectating",
                                         "NextMatchInOpenClient", "MenuInBetween"),
                         [](const auto& name) { return std::string(name.param); });

} // namespace
} // namespace quelto
