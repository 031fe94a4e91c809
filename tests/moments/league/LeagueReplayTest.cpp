// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueMatch.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace Qt::StringLiterals;

const QString Folder = QStringLiteral(LEAGUE_FIXTURES "/replays/");

QByteArray contents(const QString& name)
{
    QFile file(Folder + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

QJsonObject object(const QString& name)
{
    QJsonParseError error{};
    const auto document = QJsonDocument::fromJson(contents(name), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError)
        << name.toStdString() << " at " << error.offset << ": " << error.errorString().toStdString();
    return document.object();
}

/// One number as the tables write it.
QString number(double value)
{
    return QString::number(value, 'f', 1);
}

QString line(const MatchEvent& news)
{
    if (const auto* const state = std::get_if<MatchState>(&news)) {
        return state->inGame
            ? QStringLiteral("in game | ") + (state->character.isEmpty() ? QStringLiteral("nobody") : state->character)
            : QStringLiteral("not in game");
    }
    if (const auto* const moment = std::get_if<Moment>(&news)) {
        QStringList markers;
        for (const auto& event : moment->events) {
            markers.append(event.name + u'@' + number(event.secondsBeforeEnd));
        }
        return QStringLiteral("moment | %1 | %2 | %3 s | %4 | %5")
            .arg(tagOf(moment->tier))
            .arg(moment->score)
            .arg(moment->seconds)
            .arg(moment->label, markers.join(u' '));
    }
    return std::holds_alternative<GameDetected>(news) ? QStringLiteral("detected") : QStringLiteral("ended");
}

/// Plays what a client would answer, poll by poll, and notes what becomes of it.
///
/// A recording holds matches, each with the player's part of the answer, the list of players and the whole list of
/// events, and a course: which match is polled from when to when on its clock, how often, and with how much health; or
/// how many polls fail. As the client does, each answer lists all that has happened by its time.
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
            note(QStringLiteral("-"), m_match.pollFailed());
        }
        if (!leg.contains("match"_L1)) {
            return;
        }
        const auto match = m_recording["matches"_L1].toObject()[leg["match"_L1].toString()].toObject();
        const auto step = leg["every"_L1].toDouble(1.0);
        const auto from = leg["from"_L1].toDouble();
        for (int poll = 0; from + poll * step <= leg["to"_L1].toDouble(); ++poll) {
            const auto time = from + poll * step;
            const auto data = readLeagueData(answer(match, leg, time));
            ASSERT_TRUE(data);
            note(number(time), m_match.polled(*data));
        }
    }

    static QByteArray answer(const QJsonObject& match, const QJsonObject& leg, double time)
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

    void note(const QString& time, const MatchEvents& news)
    {
        for (const auto& each : news) {
            m_lines.append(time + QStringLiteral(" | ") + line(each));
        }
    }

    QJsonObject m_recording;
    LeagueMatch m_match;
    QStringList m_lines;
};

class LeagueReplayTest : public testing::TestWithParam<std::string> { };

TEST_P(LeagueReplayTest, TellsWhatTheTableBesideItSays)
{
    const auto name = QString::fromStdString(GetParam());
    QStringList expected;
    for (const auto& line : QString::fromUtf8(contents(name + QStringLiteral(".expected"))).split(u'\n')) {
        if (!line.isEmpty() && !line.startsWith(u'#')) {
            expected.append(line);
        }
    }
    const auto told = Replay(object(name + QStringLiteral(".json"))).lines();
    EXPECT_EQ(told.join(u'\n').toStdString(), expected.join(u'\n').toStdString());
}

std::vector<std::string> replays()
{
    std::vector<std::string> names;
    for (const auto& name : QDir(Folder).entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
        names.push_back(name.chopped(5).toStdString());
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Each, LeagueReplayTest, testing::ValuesIn(replays()), [](const auto& name) {
    auto word = name.param;
    std::replace(word.begin(), word.end(), '-', '_');
    return word;
});

TEST(LeagueReplays, AreAllThere)
{
    EXPECT_GE(replays().size(), 6U);
}

} // namespace
} // namespace quelto
