// SPDX-License-Identifier: GPL-3.0-or-later
//
// Plays a clip, and exits right after the player and its output are destroyed.
#include "base/tasks/BackgroundThreads.h"
#include "base/tasks/MainQueue.h"
#include "playback/mpv/MpvPlayer.h"
#include "playback/mpv/SoftwareVideo.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <clocale>

using namespace quelto;

int main(int argumentCount, char** arguments)
{
    QCoreApplication application(argumentCount, arguments);
    std::setlocale(LC_NUMERIC, "C");
    const auto path = QString::fromLocal8Bit(arguments[1]);
    const auto milliseconds = QByteArray(arguments[2]).toInt();
    MainQueue main;
    BackgroundThreads work(QStringLiteral("work"), 1);
    MpvPlayer player({.main = main, .work = [&](Task task) { work.post(std::move(task)); }});
    SoftwareVideo video(player.handle(),
                        {.onReady = [&] { main.post([&] { player.setOutputReady(); }); }, .onPicture = [] {}});
    video.setSize({320, 180});
    player.open(path);
    player.play(1);
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
    return 0;
}
