// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/SampleClips.h"
#include "tests/ui/screens/library/LibraryScreenFixture.h"

#include "base/language/L10n.h"

#include <QTest>

namespace quelto {
namespace {

class LibraryPicturesTest : public test::LibraryScreenFixture {
protected:
    void open(const QString& properties = {})
    {
        reload();
        show(properties);
        settle(700);
    }
};

TEST_F(LibraryPicturesTest, Empty)
{
    open();
    EXPECT_TRUE(shows(QStringLiteral("Henüz klip yok")));
    picture(QStringLiteral("library-empty"));
}

TEST_F(LibraryPicturesTest, TwelveClipsInThreePalettes)
{
    test::addTwelveClips(settings.saveFolder());
    open();
    for (const auto* palette : {"ember", "blurple", "ocean"}) {
        settings.setColorTheme(QLatin1String(palette));
        picture(QStringLiteral("library-12-") + QLatin1String(palette));
    }
}

TEST_F(LibraryPicturesTest, TwelveClipsInOtherLanguages)
{
    test::addTwelveClips(settings.saveFolder());
    for (const auto* language : {"de", "ru"}) {
        settings.setLanguage(QLatin1String(language));
        open();
        picture(QStringLiteral("library-12-") + QLatin1String(language));
        engine.reset();
    }
}

TEST_F(LibraryPicturesTest, MinimumWindow)
{
    test::addTwelveClips(settings.saveFolder());
    size = {779, 640};
    settings.setLanguage(QStringLiteral("ru"));
    open();
    picture(QStringLiteral("library-smallest"));
}

TEST_F(LibraryPicturesTest, FiveHundredClips)
{
    test::addClips(settings.saveFolder(), 500);
    open();
    picture(QStringLiteral("library-500"));
}

TEST_F(LibraryPicturesTest, FilteredAndWithoutResult)
{
    test::addTwelveClips(settings.saveFolder());
    open();
    click(item(QStringLiteral("Efsane")));
    picture(QStringLiteral("library-filtered"));
    click(item(QStringLiteral("Ara")));
    for (const char letter : {'x', 'q'}) {
        QTest::keyClick(window, letter);
    }
    picture(QStringLiteral("library-no-result"));
}

TEST_F(LibraryPicturesTest, Hovered)
{
    test::addTwelveClips(settings.saveFolder());
    open();
    QTest::mouseMove(window, middleOf(card(QStringLiteral("Triple Kill (Ahri)"))));
    picture(QStringLiteral("library-hover"));
    QTest::mouseMove(window, middleOf(card(QStringLiteral("PENTAKILL (Ahri) (9x16)"))));
    picture(QStringLiteral("library-hover-tall"));
}

TEST_F(LibraryPicturesTest, WithMenuAndConfirmation)
{
    test::addTwelveClips(settings.saveFolder());
    open();
    auto* target = card(QStringLiteral("Triple Kill (Ahri)"));
    click(target, Qt::RightButton);
    picture(QStringLiteral("library-menu"));
    key(Qt::Key_Escape);
    settle();
    key(Qt::Key_Delete);
    picture(QStringLiteral("library-confirm"));
}

TEST_F(LibraryPicturesTest, ByKeyboard)
{
    test::addTwelveClips(settings.saveFolder());
    open();
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    picture(QStringLiteral("library-keyboard"));
}

} // namespace
} // namespace quelto
