// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueMatch.h"

#include "tests/moments/league/Fixtures.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace Qt::StringLiterals;

const QString Folder = QStringLiteral("replays/");

QJsonObject object(const QString& name)
{
    QJsonParseError error{};
    const auto document = QJsonDocument::fromJson(test::readFixture(Folder + name), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError)
        << name.toStdString() << " at " << error.offset << ": " << error.errorString().toStdString();
    return document.object();
}

/// A number in the format of the expected tables.
QString number(double value)
{
    return QString::number(value, 'f', 1);
}

QString line(const MatchEvent& event)
{
    if (const auto* const state = std::get_if<MatchState>(&event)) {
        return state->inGame
            ? QStringLiteral("in game | ") + (state->character.isEmpty() ? QStringLiteral("nobody") : state->character)
            : QStringLiteral("not in game");
    }
    if (const auto* const moment = std::get_if<Moment>(&event)) {
        QStringList markers;
        for (const auto& marker : moment->events) {
            markers.append(marker.name + u'@' + number(marker.secondsBeforeEnd));
        }
        return QStringLiteral("moment | %1 | %2 | %3 s | %4 | %5")
            .arg(tagOf(moment->tier))
            .arg(moment->score)
            .arg(moment->seconds)
            .arg(moment->label, markers.join(u' '));
    }
    return std::holds_alternative<GameDetected>(event) ? QStringLiteral("detected") : QStringLiteral("ended");
}

/// Replays a recording poll by poll and records the resulting events.
///
/// A recording holds matches and a course. A match holds the active player, the list of players and all events. Each
/// leg of the course states which match is polled, from when to when on the match's clock, how often and with what
/// health; or how many polls fail. As in the client, each response lists all events up to its game time.
class Replay {
public:
    explicit Replay(const QJsonObject& recording)
        : m_recording(recording)
    {
        for (const auto& leg : recording["course"_L1].toArray()) {
            run(leg.toObject());
        }
    }

    QStringList lines() const { return m_lines; }

private:
    void run(const QJsonObject& leg)
    {
        for (int failure = 0; failure < leg["fails"_L1].toInt(); ++failure) {
            record(QStringLiteral("-"), m_match.pollFailed());
        }
        if (!leg.contains("match"_L1)) {
            return;
        }
        const auto match = m_recording["matches"_L1].toObject()[leg["match"_L1].toString()].toObject();
        const auto step = leg["every"_L1].toDouble(1.0);
        const auto from = leg["from"_L1].toDouble();
        for (int poll = 0; from + poll * step <= leg["to"_L1].toDouble(); ++poll) {
            const auto time = from + poll * step;
            const auto data = readLeagueData(response(match, leg, time));
            ASSERT_TRUE(data);
            record(number(time), m_match.polled(*data));
        }
    }

    static QByteArray response(const QJsonObject& match, const QJsonObject& leg, double time)
    {
        QJsonArray events;
        for (const auto& event : match["events"_L1].toArray()) {
            if (event.toObject()["EventTime"_L1].toDouble() <= time) {
                events.append(event);
            }
        }
        auto player = match["activePlayer"_L1].toObject();
        if (leg.contains("health"_L1)) {
            auto stats = player["championStats"_L1].toObject();
            stats["currentHealth"_L1] = leg["health"_L1];
            player["championStats"_L1] = stats;
        }
        return QJsonDocument(
                   QJsonObject{{"activePlayer"_L1, player},
                               {"allPlayers"_L1, match["allPlayers"_L1]},
                               {"events"_L1, QJsonObject{{"Events"_L1, events}}},
                               {"gameData"_L1, QJsonObject{{"gameMode"_L1, "CLASSIC"_L1}, {"gameTime"_L1, time}}}})
            .toJson();
    }

    void record(const QString& time, const MatchEvents& events)
    {
        for (const auto& event : events) {
            m_lines.append(time + QStringLiteral(" | ") + line(event));
        }
    }

    QJsonObject m_recording;
    LeagueMatch m_match;
    QStringList m_lines;
};

class LeagueReplayTest : public testing::TestWithParam<std::string> { };

TEST_P(LeagueReplayTest, MatchesExpectedTable)
{
    const auto name = QString::fromStdString(GetParam());
    QStringList expected;
    for (const auto& line :
         QString::fromUtf8(test::readFixture(Folder + name + QStringLiteral(".expected"))).split(u'\n')) {
        if (!line.isEmpty() && !line.startsWith(u'#')) {
            expected.append(line);
        }
    }
    const auto actual = Replay(object(name + QStringLiteral(".json"))).lines();
    EXPECT_EQ(actual.join(u'\n').toStdString(), expected.join(u'\n').toStdString());
}

std::vector<std::string> replays()
{
    std::vector<std::string> names;
    for (const auto& name : QDir(QStringLiteral(LEAGUE_FIXTURES "/") + Folder)
                                .entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
        names.push_back(name.chopped(5).toStdString());
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Each, LeagueReplayTest, testing::ValuesIn(replays()), [](const auto& name) {
    auto word = name.param;
    std::replace(word.begin(), word.end(), '-', '_');
    return word;
});

TEST(LeagueReplays, AllRecordingsAreFound)
{
    EXPECT_GE(replays().size(), 6U);
}

} // namespace
} // namespace quelto
