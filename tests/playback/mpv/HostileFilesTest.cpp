// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/FileName.h"
#include "tests/playback/mpv/MpvPlayerFixture.h"

#include <QDir>
#include <QFile>
#include <QTcpServer>

#include <filesystem>
#include <sys/stat.h>

namespace quelto {
namespace {

using namespace test;

class HostileFilesTest : public MpvPlayerTest {
protected:
    /// Opens a file, and waits until libmpv has given it up.
    bool isRefused(const QString& path)
    {
        player->open(path);
        player->play(1);
        // Returns when libmpv has read the commands that were sent before.
        std::array<const char*, 2> command{"ignore", nullptr};
        EXPECT_EQ(mpv_command(player->handle()->get(), command.data()), 0);
        return QTest::qWaitFor([&] {
            int isIdle = 0;
            mpv_get_property(player->handle()->get(), "idle-active", MPV_FORMAT_FLAG, &isIdle);
            return isIdle != 0;
        });
    }
    QString property(const char* name) const
    {
        const std::unique_ptr<char, void (*)(void*)> text(mpv_get_property_string(player->handle()->get(), name),
                                                          mpv_free);
        return QString::fromUtf8(text.get());
    }
    /// Waits until files are opened.
    void showAClip()
    {
        good = makeClip(clips, QStringLiteral("good.mp4"), {.seconds = 0.5, .firstNumber = 3});
        player->open(good);
        ASSERT_TRUE(isShown(3));
        ASSERT_TRUE(isOpen(0.5));
    }

    QString good;
};

TEST_F(HostileFilesTest, WhatIsNotAClipHasNoDurationAndShowsNothing)
{
    showAClip();
    const auto bytes = GeneratedClips::read(good);
    clips.write(QStringLiteral("empty.mp4"), "");
    clips.write(QStringLiteral("text.mp4"), "not a movie");
    clips.write(QStringLiteral("truncated.mp4"), bytes.left(bytes.size() / 2));
    clips.write(QStringLiteral("zeros.mp4"), QByteArray(100000, '\0'));
    ASSERT_EQ(::mkfifo(clips.path(QStringLiteral("pipe.mp4")).toUtf8().constData(), 0600), 0);
    for (const auto* name :
         {"empty.mp4", "text.mp4", "truncated.mp4", "zeros.mp4", "pipe.mp4", "missing.mp4", ".", "good.mp4/x.mp4"}) {
        EXPECT_TRUE(isRefused(clips.path(QString::fromUtf8(name)))) << name;
        EXPECT_EQ(player->duration(), std::nullopt) << name;
    }
    player->open(good);
    EXPECT_TRUE(isShown(3));
    EXPECT_TRUE(isOpen(0.5));
}

TEST_F(HostileFilesTest, IncompleteClipPlaysAsFarAsItGoes)
{
    const auto path =
        makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 2, .muxing = QStringLiteral("-movflags faststart")});
    const auto bytes = GeneratedClips::read(path);
    player->open(clips.write(QStringLiteral("b.mp4"), bytes.left(bytes.size() / 2)));
    EXPECT_TRUE(isShown(0));
    int ends = 0;
    QObject::connect(player.get(), &Player::ended, player.get(), [&] { ++ends; });
    player->play(2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ends == 1; }));
}

TEST_F(HostileFilesTest, AnyNameIsThatOfAFile)
{
    const auto original = makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 0.5, .firstNumber = 40});
    int number = 40;
    for (const auto* name : {"-loop.mp4", "100 % #1?.mp4", "%41.mp4", "two\nlines.mp4", "http:\\x.mp4", "a.mp4|b.mp4",
                             "\xff\xfe latin.mp4", "\xc3\xbc\xf0\x9f\x8e\xae.mp4", " .mp4", "edl:%1%a;b.mp4"}) {
        ++number;
        const auto path = clips.path(decodeFileName(name));
        std::filesystem::copy_file(
            makeClip(clips, QStringLiteral("b.mp4"), {.seconds = 0.5, .firstNumber = number}).toStdString(),
            encodeFileName(path).toStdString());
        player->open(path);
        EXPECT_TRUE(isShown(number)) << name;
        // QTemporaryDir does not find every name.
        std::filesystem::remove(encodeFileName(path).toStdString());
    }
}

TEST_F(HostileFilesTest, FilesWithAddressesAreNotFollowed)
{
    showAClip();
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    bool isConnected = false;
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&] { isConnected = true; });
    const auto address = QStringLiteral("http://127.0.0.1:%1/x.mp4").arg(server.serverPort()).toUtf8();
    const auto local = good.toUtf8();
    for (const QByteArray& text :
         {address, "#EXTM3U\n" + address + "\n", "#EXTM3U\n#EXTINF:1,\n" + local + "\n",
          "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" + address + "\n#EXT-X-ENDLIST\n",
          "# mpv EDL v0\n" + local + "\n", "# mpv EDL v0\n" + address + "\n", "ffconcat version 1.0\nfile " + local,
          "[playlist]\nFile1=" + address + "\n", "[InternetShortcut]\nURL=" + address + "\n",
          "[Reference]\nRef1=" + address + "\n"}) {
        for (const auto* name : {"list.mp4", "list.m3u8", "list.edl"}) {
            EXPECT_TRUE(isRefused(clips.write(QString::fromUtf8(name), text))) << text.constData();
            EXPECT_EQ(player->duration(), std::nullopt) << text.constData();
        }
    }
    // The address itself, as a path.
    EXPECT_TRUE(isRefused(QString::fromUtf8(address)));
    EXPECT_FALSE(isConnected);
}

TEST_F(HostileFilesTest, FilesBesideTheClipAreNotOpened)
{
    showAClip();
    const auto path = makeClip(clips, QStringLiteral("film.mp4"), {.seconds = 0.5, .firstNumber = 9});
    clips.write(QStringLiteral("film.srt"), "1\n00:00:00,000 --> 00:00:01,000\nText\n");
    makeClip(clips, QStringLiteral("film.mka"), {.seconds = 0.5});
    clips.write(QStringLiteral("film.mp4.conf"), "speed=2\n");
    player->open(path);
    ASSERT_TRUE(isShown(9));
    EXPECT_EQ(property("track-list/count"), QStringLiteral("2"));
    EXPECT_EQ(property("speed").toDouble(), 1);
}

TEST_F(HostileFilesTest, UsersConfigurationHasNoEffect)
{
    const auto script =
        QStringLiteral("io.open('%1', 'w'):close()\n").arg(clips.path(QStringLiteral("trace"))).toUtf8();
    for (const auto* folder : {"home", "config/mpv"}) {
        ASSERT_TRUE(QDir(clips.path({})).mkpath(QString::fromUtf8(folder) + QStringLiteral("/scripts")));
        const auto write = [&](const char* name, const QByteArray& text) {
            clips.write(QString::fromUtf8(folder) + u'/' + QString::fromUtf8(name), text);
        };
        write("mpv.conf", "speed=2\nvf=hflip\nvolume=10\nfullscreen=yes\n");
        write("input.conf", "F5 show-text users-own\n");
        write("scripts/x.lua", script);
    }
    const auto check = [&] {
        player = makePlayer();
        video = makeVideo();
        player->open(makeClip(clips, QStringLiteral("a.mp4"), {.seconds = 0.5, .firstNumber = 21}));
        EXPECT_TRUE(isShown(21)) << shown();
        EXPECT_EQ(property("speed").toDouble(), 1);
        EXPECT_EQ(property("volume").toDouble(), 100);
        EXPECT_FALSE(property("input-bindings").contains(u"users-own"));
        EXPECT_FALSE(QFile::exists(clips.path(QStringLiteral("trace"))));
    };
    qputenv("MPV_HOME", clips.path(QStringLiteral("home")).toUtf8());
    check();
    qunsetenv("MPV_HOME");
    qputenv("XDG_CONFIG_HOME", clips.path(QStringLiteral("config")).toUtf8());
    check();
    qunsetenv("XDG_CONFIG_HOME");
}

TEST_F(HostileFilesTest, EnabledAudioTrackIsPlayed)
{
    for (const int enabled : {0, 2}) {
        const auto path =
            makeClip(clips, QStringLiteral("a.mp4"),
                     {.seconds = 0.5,
                      .firstNumber = 50 + enabled,
                      .audio = {{}, {}, {}, {}},
                      .muxing = QStringLiteral("-disposition:a 0 -disposition:a:%1 default").arg(enabled)});
        player->open(path);
        ASSERT_TRUE(isShown(50 + enabled));
        EXPECT_EQ(property("current-tracks/audio/id"), QString::number(enabled + 1));
    }
}

} // namespace
} // namespace quelto
