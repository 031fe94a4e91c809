// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/export/queue/Gate.h"
#include "tests/media/probe/CounterClip.h"
#include "tests/ui/shell/PlayingShellFixture.h"

namespace quelto {
namespace {

/// Saves pictures of the page of a clip, with the real player and real clips, for review.
class ClipPagePicturesTest : public test::PlayingShellFixture {
protected:
    /// The automatic clip with the most points.
    Clip automatic() const
    {
        const auto& clips = library->clips();
        return *std::ranges::max_element(clips, {}, &Clip::autoScore);
    }
    void open(const Clip& clip)
    {
        ClipMeta meta;
        meta.events = {{.t = 8, .name = QStringLiteral("kill")},
                       {.t = 21, .name = QStringLiteral("multikill_3")},
                       {.t = 44, .name = QStringLiteral("steal_Baron")}};
        meta.save(clip.path);
        navigation->openClip(clip.path);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !shows(QStringLiteral("0:00 / 0:00")); }));
    }
    /// Also a button that is scrolled out of the window.
    void clickNamed(const char* name)
    {
        item(QString::fromUtf8(name))->forceActiveFocus(Qt::OtherFocusReason);
        click(QString::fromUtf8(name));
    }
};

TEST_F(ClipPagePicturesTest, States)
{
    open(automatic());
    show(QStringLiteral("clip-playing"));
    clickNamed("Kırp");
    show(QStringLiteral("clip-trimming"));
    clickNamed("Vazgeç");
    clickNamed("Yeniden adlandır");
    show(QStringLiteral("clip-rename"));
    QTest::keyClick(window, Qt::Key_Escape);
    QTest::qWait(100);
    settings.setDiscordLimitMB(0);
    test::Gate gate;
    onExport = [&](const QString&, const QString& clip) {
        gate.pass();
        return clip;
    };
    clickNamed("Yeni oranla dışa aktar");
    show(QStringLiteral("clip-busy"));
    gate.open();
    QTest::qWait(200);
    clickNamed("Çöp Kutusuna Taşı");
    show(QStringLiteral("clip-delete"));
}

/// The picture of README.md.
TEST_F(ClipPagePicturesTest, ForTheReadme)
{
    settings.setLanguage(QStringLiteral("en"));
    time.settle();
    QTest::qWait(100);
    open(automatic());
    QTest::mouseMove(window, {5, 5});
    show(QStringLiteral("readme-clip"));
}

TEST_F(ClipPagePicturesTest, PausedTallClipWithoutEvents)
{
    const auto path =
        settings.saveFolder() + QStringLiteral("/Dota 2 - Ein sehr langer Titel, den niemand kürzen wollte (9x16).mp4");
    test::GeneratedClips tall;
    ASSERT_TRUE(QFile::copy(test::makeClip(tall, QStringLiteral("a.mp4"), {.size = {360, 640}, .seconds = 3}), path));
    reloadLibrary();
    navigation->openClip(path);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("0:00 / 0:03")); }));
    QTest::keyClick(window, Qt::Key_Space);
    show(QStringLiteral("clip-tall-paused"));
    EXPECT_EQ(test::itemNamed(window, QStringLiteral("Kill • 0:08")), nullptr);
}

TEST_F(ClipPagePicturesTest, FilesThatAreUnusual)
{
    makeClips({"Broken - Not a video.mp4"});
    navigation->openClip(settings.saveFolder() + QStringLiteral("/Broken - Not a video.mp4"));
    show(QStringLiteral("clip-unreadable"));
}

TEST_F(ClipPagePicturesTest, LanguagesPalettesAndSizes)
{
    settings.setDiscordLimitMB(0);
    const std::array<Look, 5> looks{{
        {"en", "ember", {1240, 900}},
        {"de", "blurple", {1020, 640}},
        {"ru", "ocean", {1020, 640}},
        {"tr", "ember", {683, 384}},
        {"fr", "sunset", {1600, 1000}},
    }};
    for (const auto& look : looks) {
        setLook(look);
        open(automatic());
        show(QStringLiteral("clip-%1-%2").arg(QLatin1String(look.language), QLatin1String(look.palette)));
        navigation->closeClip();
    }
}

} // namespace
} // namespace quelto
