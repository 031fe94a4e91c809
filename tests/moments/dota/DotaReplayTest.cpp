// SPDX-License-Identifier: GPL-3.0-or-later
// Whole matches, as the game posts them. A fixture's first line is a whole post; each line after it holds what the next
// post has otherwise, as a merge patch: an object goes into the object there, null takes a field away. "whole" stands
// for a post that has nothing of the one before. The table beside it lists what is told, with its time.
#include "moments/dota/DotaMatch.h"

#include "tests/moments/dota/EventText.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace quelto {
namespace {

QStringList linesOf(const QString& fileName)
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

/// Hands posts to the rules at their times and ticks at every whole second, as long as a minute after the last post.
class Replay {
public:
    QStringList told;

    void run(const QStringList& lines)
    {
        QJsonObject post;
        for (const auto& line : lines) {
            const auto entry = QJsonDocument::fromJson(line.toUtf8()).object();
            ASSERT_TRUE(entry.contains(QStringLiteral("at"))) << line.toStdString();
            tickUntil(entry[QStringLiteral("at")].toDouble());
            post = entry.contains(QStringLiteral("whole")) ? entry[QStringLiteral("whole")].toObject()
                                                           : merged(post, entry[QStringLiteral("post")].toObject());
            const auto state = readDotaState(QJsonDocument(post).toJson());
            ASSERT_TRUE(state);
            note(m_now, m_match.posted(*state, m_now));
        }
        tickUntil(m_now + 60);
    }

private:
    void tickUntil(double time)
    {
        for (double second = std::floor(m_now) + 1; second <= time; ++second) {
            const bool isNeeded = m_match.needsTick();
            const auto news = m_match.tick(second);
            EXPECT_TRUE(isNeeded || news.isEmpty());
            note(second, news);
        }
        m_now = time;
    }

    void note(double time, const MatchEvents& news)
    {
        for (const auto& text : eventText(news)) {
            told.append(QStringLiteral("%1 %2").arg(time).arg(text));
        }
    }

    double m_now = 0;
    DotaMatch m_match;
};

class DotaReplay : public testing::TestWithParam<const char*> { };

TEST_P(DotaReplay, TellsWhatItsTableLists)
{
    const auto name = QString::fromUtf8(GetParam());
    Replay replay;
    replay.run(linesOf(name + QStringLiteral(".jsonl")));
    EXPECT_EQ(replay.told.join(u'\n').toStdString(),
              linesOf(name + QStringLiteral(".expected")).join(u'\n').toStdString());
}

INSTANTIATE_TEST_SUITE_P(Matches, DotaReplay,
                         testing::Values("WholeMatch", "StartInMidMatch", "Reconnect", "Abandoned", "Spectating",
                                         "NextMatchInOpenClient", "MenuInBetween"),
                         [](const auto& each) { return std::string(each.param); });

} // namespace
} // namespace quelto
