// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/SampleClips.h"
#include "tests/ui/SceneryClips.h"
#include "tests/ui/shell/MatchPageFixture.h"

#include <QTest>

namespace quelto {
namespace {

/// Saves pictures of the page of a match for review.
class MatchPagePicturesTest : public test::MatchPageFixture {
protected:
    /// A match with the clips of the save folder.
    QUuid playAll()
    {
        reloadLibrary();
        QStringList paths;
        std::ranges::transform(library->clips(), std::back_inserter(paths), &Clip::path);
        return playWith(paths);
    }
    void select(const QStringList& titles)
    {
        for (const auto& title : titles) {
            const auto* found = card(title.toUtf8().constData());
            QTest::mouseClick(window, Qt::LeftButton, {},
                              found->mapToScene({found->width() / 2, found->height() / 2}).toPoint());
        }
        QTest::mouseMove(window, {5, 5});
    }
    void show(const QString& name)
    {
        QTest::qWait(600);
        EXPECT_FALSE(picture(name).isNull());
    }
};

TEST_F(MatchPagePicturesTest, States)
{
    test::addSceneryClips(settings.saveFolder());
    window->resize(1240, 900);
    const auto id = playAll();
    open(id);
    show(QStringLiteral("match-opened"));
    select(cardTitles().mid(1, 2));
    show(QStringLiteral("match-selected"));
    click(QStringLiteral("Seçilenleri sil (2)"));
    show(QStringLiteral("match-delete-clips"));
    QTest::keyClick(window, Qt::Key_Escape);
    QTest::qWait(100);
    click(QStringLiteral("Özeti Sil"));
    show(QStringLiteral("match-delete"));
    QTest::keyClick(window, Qt::Key_Escape);
    QTest::qWait(100);
    item(QStringLiteral("Tümünü seç"))->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window, Qt::Key_Tab);
    QTest::keyClick(window, Qt::Key_Tab);
    QTest::keyClick(window, Qt::Key_Right);
    show(QStringLiteral("match-keyboard"));
}

TEST_F(MatchPagePicturesTest, NumbersOfClips)
{
    open(QUuid::createUuid());
    time.settle();
    show(QStringLiteral("match-missing"));
    window->resize(1440, 900);
    test::addClips(settings.saveFolder(), 30);
    open(playAll());
    show(QStringLiteral("match-30-clips"));
    const auto few = play({"Ace.mp4"});
    open(few);
    show(QStringLiteral("match-1-clip"));
    matches->deleteClips({pathOf("Ace.mp4")}, few);
    show(QStringLiteral("match-empty"));
}

TEST_F(MatchPagePicturesTest, LanguagesPalettesAndSizes)
{
    test::addSceneryClips(settings.saveFolder());
    const auto id = playAll();
    const std::array<Look, 5> looks{{
        {"de", "blurple", {1020, 640}},
        {"ru", "ocean", {1020, 640}},
        {"fr", "sunset", {1440, 900}},
        {"tr", "ember", {683, 384}},
        {"ru", "ember", {560, 640}},
    }};
    for (const auto& look : looks) {
        setLook(look);
        open(id);
        select(cardTitles().mid(0, 1));
        show(QStringLiteral("match-%1-%2-%3")
                 .arg(QLatin1String(look.language), QLatin1String(look.palette))
                 .arg(look.size.width()));
        navigation->showLibrary();
    }
}

} // namespace
} // namespace quelto
