// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the Dota 2 watcher during a match: the game posts ten times a second, its maximum rate.
//
//     bench_dota_posts [--seconds N] [--runs N]
//
// Sends posts of 15 KB over real connections to a watcher that runs as in the program. Prints the medians of the
// thread's CPU time as a share of one core and of the response time.
#include "base/time/HostClock.h"
#include "moments/dota/DotaWatcher.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <cstdio>
#include <filesystem>
#include <thread>

namespace {

using namespace quelto;
using namespace Qt::StringLiterals;

constexpr qsizetype BodyBytes = 15'000;
constexpr auto PostPeriod = std::chrono::milliseconds(100);

QByteArray bodyWith(int assists)
{
    QJsonObject items;
    for (int slot = 0; slot < 9; ++slot) {
        items[QStringLiteral("slot%1").arg(slot)] = QJsonObject{{"name"_L1, "item_ultimate_scepter"_L1},
                                                                {"purchaser"_L1, 2},
                                                                {"can_cast"_L1, true},
                                                                {"cooldown"_L1, 0},
                                                                {"passive"_L1, true}};
    }
    QJsonObject hero{
        {"id"_L1, 22}, {"name"_L1, "npc_dota_hero_zuus"_L1}, {"alive"_L1, true}, {"health_percent"_L1, 71}};
    QJsonObject player{{"team_name"_L1, "radiant"_L1}, {"kills"_L1, 3}, {"deaths"_L1, 1}, {"assists"_L1, assists}};
    QJsonObject kills;
    QByteArray body;
    for (int i = 0; body.size() < BodyBytes; ++i) {
        hero[QStringLiteral("talent_%1").arg(i)] = i % 3 == 0;
        hero[QStringLiteral("mana_%1").arg(i)] = 1000.5 + i;
        kills[QStringLiteral("victimid_%1").arg(i)] = i;
        player["kill_list"_L1] = kills;
        body = QJsonDocument(QJsonObject{{"provider"_L1, QJsonObject{{"name"_L1, "Dota 2"_L1}, {"appid"_L1, 570}}},
                                         {"map"_L1,
                                          QJsonObject{{"matchid"_L1, "7463520011"_L1},
                                                      {"game_state"_L1, "DOTA_GAMERULES_STATE_GAME_IN_PROGRESS"_L1},
                                                      {"win_team"_L1, "none"_L1}}},
                                         {"player"_L1, player},
                                         {"hero"_L1, hero},
                                         {"items"_L1, items}})
                   .toJson();
    }
    return body;
}

/// User and system CPU seconds of the watcher's thread.
double watcherCpuSeconds()
{
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        const auto folder = QString::fromStdString(thread.path().string());
        QFile name(folder + QStringLiteral("/comm"));
        QFile times(folder + QStringLiteral("/schedstat"));
        if (name.open(QIODevice::ReadOnly) && name.readAll().trimmed() == "quelto.dota" &&
            times.open(QIODevice::ReadOnly)) {
            return static_cast<double>(times.readAll().split(' ').first().toLongLong()) / 1e9;
        }
    }
    return 0;
}

quint16 freePort()
{
    QTcpServer server;
    server.listen(QHostAddress(QHostAddress::LocalHost));
    return server.serverPort();
}

/// Milliseconds until the complete response; negative if there was none.
double post(quint16 port, const QByteArray& body)
{
    const auto start = HostClock::now();
    QTcpSocket socket;
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
    socket.waitForConnected();
    socket.write("POST / HTTP/1.1\r\ncontent-type: application/json\r\nContent-Length: " +
                 QByteArray::number(body.size()) + "\r\n\r\n" + body);
    while (socket.state() == QAbstractSocket::ConnectedState && socket.waitForReadyRead()) { }
    return socket.readAll().startsWith("HTTP/1.1 200 OK") ? toSeconds(HostClock::now() - start) * 1000 : -1;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int count, char** arguments)
{
    const QCoreApplication application(count, arguments);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption seconds(QStringLiteral("seconds"), QStringLiteral("Length of a run"), QStringLiteral("N"),
                                     QStringLiteral("10"));
    const QCommandLineOption runs(QStringLiteral("runs"), QStringLiteral("Number of runs"), QStringLiteral("N"),
                                  QStringLiteral("5"));
    parser.addOptions({seconds, runs});
    parser.process(application);

    const QTemporaryDir home;
    const auto port = freePort();
    DotaWatcher watcher(home.path(), port);
    watcher.start();
    std::vector<double> shares;
    std::vector<double> delays;
    int assists = 0;
    auto next = std::chrono::steady_clock::now();
    for (int run = 0; run < parser.value(runs).toInt(); ++run) {
        const auto before = watcherCpuSeconds();
        const auto start = HostClock::now();
        for (int i = 0; i < parser.value(seconds).toInt() * 10; ++i) {
            std::this_thread::sleep_until(next += PostPeriod);
            // Every fifth post contains a change.
            delays.push_back(post(port, bodyWith(assists = (assists + (i % 5 == 0 ? 1 : 0)) % 1000)));
            QCoreApplication::processEvents();
            if (delays.back() < 0 && delays.size() > 1) {
                std::fputs("a post got no response\n", stderr);
                return 1;
            }
        }
        shares.push_back((watcherCpuSeconds() - before) / toSeconds(HostClock::now() - start));
    }
    std::printf("%.3f %% of a core for ten posts of %lld bytes a second; response after %.2f ms\n",
                median(shares) * 100, static_cast<long long>(bodyWith(0).size()), median(delays));
    return watcher.inGame() ? 0 : 1;
}
