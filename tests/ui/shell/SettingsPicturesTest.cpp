// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/shell/SettingsFixture.h"

namespace quelto::test {
namespace {

struct PageLook {
    const char* language;
    const char* palette;
    QSize size;
};

/// Saves pictures of the whole page for review, screen by screen. Also run at a scale factor of 2.
class SettingsPicturesTest : public SettingsFixture, public testing::WithParamInterface<PageLook> {
protected:
    QQuickItem* cards() const
    {
        return firstVisible(window, [](const QQuickItem* each) {
            return each->inherits("QQuickFlickable") && each->property("scope").value<QQuickItem*>() != nullptr &&
                each->x() > 0;
        });
    }
};

TEST_P(SettingsPicturesTest, ShowEveryCard)
{
    const auto& look = GetParam();
    fakes.displays->displays.append({.id = 9, .name = QStringLiteral("DELL U2720Q"), .pixelSize = {2560, 1440}});
    setLook({look.language, look.palette, look.size});
    ASSERT_NE(cards(), nullptr);
    const auto height = cards()->property("contentHeight").toDouble();
    int screen = 0;
    for (double y = 0; y < height - 420; y += cards()->height()) {
        cards()->setProperty("contentY", std::min(y, height - cards()->height()));
        QTest::qWait(50);
        const auto name = QStringLiteral("settings-%1-%2-%3-%4")
                              .arg(QLatin1String(look.language), QLatin1String(look.palette))
                              .arg(look.size.width())
                              .arg(++screen);
        EXPECT_FALSE(picture(name).isNull());
        EXPECT_EQ(truncatedTexts().join(u'|').toStdString(), "") << name.toStdString();
    }
    EXPECT_GE(screen, 1);
}

INSTANTIATE_TEST_SUITE_P(Looks, SettingsPicturesTest,
                         testing::Values(PageLook{"de", "ember", {1020, 640}}, PageLook{"ru", "blurple", {1240, 780}},
                                         PageLook{"fr", "sunset", {1020, 640}}, PageLook{"es", "ocean", {1240, 780}},
                                         PageLook{"pt", "ember", {1920, 1080}}, PageLook{"tr", "neon", {1020, 640}},
                                         PageLook{"en", "sunset", {1920, 1080}}),
                         [](const auto& each) { return std::string(each.param.language); });

class SettingsReadmePicturesTest : public SettingsFixture { };

TEST_F(SettingsReadmePicturesTest, ShowTheTopAndSound)
{
    settings.setSaveFolder(QStringLiteral("/home/alex/Videos/Quelto"));
    setLook({"en", "ember", {1240, 780}});
    recorder->start();
    time.settle();
    // The page keeps its place for a moment after it was built again.
    QTest::qWait(300);
    EXPECT_FALSE(picture(QStringLiteral("readme-settings")).isNull());
    auto* const sound = card("Audio");
    ASSERT_NE(sound, nullptr);
    auto* view = sound->parentItem();
    while (view != nullptr && !view->inherits("QQuickFlickable")) {
        view = view->parentItem();
    }
    ASSERT_NE(view, nullptr);
    view->setProperty("contentY", view->property("contentY").toDouble() + topOf(sound) - 20);
    fakes.audioServer->mic->emitTone(0.6F);
    time.settle();
    QTest::qWait(400);
    EXPECT_FALSE(picture(QStringLiteral("readme-settings-sound")).isNull());
}

} // namespace
} // namespace quelto::test
