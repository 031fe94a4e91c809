// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QTest>

namespace quelto {
namespace {

class ContentAreaTest : public test::ShellFixture {
protected:
    void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        window->requestActivate();
        QTest::keyClick(window, key, modifiers);
    }

    /// The label of the fully visible toast; null if it does not appear.
    QQuickItem* toastLabel(const QString& text) const
    {
        const auto isVisible = [&] {
            const auto* label = textItem(text);
            return label != nullptr && label->parentItem()->opacity() == 1;
        };
        return QTest::qWaitFor(isVisible) ? textItem(text) : nullptr;
    }
};

TEST_F(ContentAreaTest, StartsWithTheWholeLibrary)
{
    EXPECT_NE(item(QStringLiteral("Klipler")), nullptr);
}

TEST_F(ContentAreaTest, OpenClipReplacesThePageAndEscapeClosesIt)
{
    makeClips({"Dota 2 - Roshan.mp4", "Counter - a.mp4"});
    navigation->showGame(QStringLiteral("Dota 2"));
    EXPECT_NE(item(QStringLiteral("Dota 2")), nullptr);
    navigation->openClip(library->clips().last().path);
    drawFrame();
    EXPECT_TRUE(shows(navigation->selectedTitle()));
    EXPECT_FALSE(shows(QStringLiteral("Ara")));
    picture(QStringLiteral("clip-page"));
    pressKey(Qt::Key_Escape);
    EXPECT_FALSE(navigation->hasSelected());
    EXPECT_NE(item(QStringLiteral("Dota 2")), nullptr);
    EXPECT_EQ(navigation->page(), Page{.game = QStringLiteral("Dota 2")});
}

TEST_F(ContentAreaTest, ClipPagePlaysTheClipAndReturnsToTheLibrary)
{
    makeClips({"Dota 2 - Roshan.mp4"});
    navigation->openClip(library->clips().first().path);
    drawFrame();
    ASSERT_TRUE(player);
    EXPECT_TRUE(player->takeCalls().contains(QStringLiteral("open ") + library->clips().first().path));
    click(QStringLiteral("Kütüphane"));
    EXPECT_FALSE(navigation->hasSelected());
}

TEST_F(ContentAreaTest, KeyboardStaysInTheSidebarForItsOwnPages)
{
    for (const auto* each : {"Maç Özetleri, 0", "Ayarlar"}) {
        auto* const entry = item(QString::fromUtf8(each));
        entry->forceActiveFocus(Qt::TabFocusReason);
        pressKey(Qt::Key_Space);
        EXPECT_NE(navigation->page(), Page{}) << each;
        EXPECT_TRUE(entry->hasActiveFocus()) << each;
    }
}

TEST_F(ContentAreaTest, ShortcutOpensTheSettingsPage)
{
    pressKey(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Settings);
    pressKey(Qt::Key_Escape);
    EXPECT_EQ(navigation->page(), Page{});
}

TEST_F(ContentAreaTest, PaletteChangeKeepsThePageAndTheOpenClip)
{
    makeClips({"Dota 2 - Roshan.mp4"});
    navigation->showGame(QStringLiteral("Dota 2"));
    navigation->openClip(library->clips().first().path);
    settings.setColorTheme(QStringLiteral("ocean"));
    drawFrame();
    EXPECT_TRUE(shows(navigation->selectedTitle()));
    ASSERT_TRUE(player);
    player->takeCalls();
    pressKey(Qt::Key_Space);
    EXPECT_EQ(player->takeCalls(), QStringList(QStringLiteral("pause"))) << "the page has the focus";
    pressKey(Qt::Key_Escape);
    EXPECT_NE(item(QStringLiteral("Dota 2")), nullptr);
}

TEST_F(ContentAreaTest, LanguageChangeKeepsThePageOfClipsWithoutAGame)
{
    makeClips({"holiday.mp4", "Dota 2 - Roshan.mp4"});
    click(QStringLiteral("Diğer, 1"));
    EXPECT_TRUE(shows(QStringLiteral("holiday")));
    settings.setLanguage(QStringLiteral("en"));
    reloadLibrary();
    EXPECT_TRUE(shows(QStringLiteral("holiday")));
    EXPECT_FALSE(shows(QStringLiteral("Roshan")));
    const auto* const row = item(QStringLiteral("Other, 1"));
    ASSERT_NE(row, nullptr);
    EXPECT_TRUE(row->property("active").toBool());
    settings.setLanguage(QStringLiteral("tr"));
}

TEST_F(ContentAreaTest, OpeningAnotherClipCreatesANewPage)
{
    makeClips({"Dota 2 - Roshan.mp4", "Dota 2 - Ace.mp4"});
    navigation->openClip(library->clips().first().path);
    drawFrame();
    const QPointer<QQuickItem> page = item(QStringLiteral("Kütüphane"));
    ASSERT_FALSE(page.isNull());
    navigation->openClip(library->clips().last().path);
    EXPECT_TRUE(QTest::qWaitFor([&] { return page.isNull(); }));
    EXPECT_TRUE(shows(navigation->selectedTitle()));
}

TEST_F(ContentAreaTest, EscapeLeavesTheSettingsPageAfterAMenuWasOpen)
{
    navigation->showSettings();
    window->requestActivate();
    const auto entry = QStringLiteral("Klip Klasörünü Aç");
    openMenu(QStringLiteral("Dosya"), entry);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shows(entry); }));
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Settings);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(navigation->page(), Page{});
}

TEST_F(ContentAreaTest, PaletteChangeKeepsTheToast)
{
    navigation->showToast(QStringLiteral("Klip panoya kopyalandı"));
    settings.setColorTheme(QStringLiteral("ocean"));
    EXPECT_NE(toastLabel(QStringLiteral("Klip panoya kopyalandı")), nullptr);
}

TEST_F(ContentAreaTest, ToastIsCenteredAboveTheBottomEdge)
{
    navigation->showToast(QStringLiteral("Klip panoya kopyalandı"));
    const auto* label = toastLabel(QStringLiteral("Klip panoya kopyalandı"));
    ASSERT_NE(label, nullptr);
    const auto* capsule = label->parentItem();
    const auto area = capsule->mapRectToScene(QRectF(0, 0, capsule->width(), capsule->height()));
    EXPECT_EQ(area.bottom(), window->height() - 24);
    EXPECT_NEAR(area.center().x(), 241 + (window->width() - 241) / 2.0, 1);
    EXPECT_EQ(capsule->width(), label->width() + 36);
    EXPECT_EQ(capsule->height(), label->height() + 22);
    EXPECT_EQ(test::colorOf(label), QColor(Qt::white));
    picture(QStringLiteral("toast"));
}

} // namespace
} // namespace quelto
