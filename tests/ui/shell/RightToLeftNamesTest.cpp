// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/Hud.h"

#include "base/language/Isolate.h"

#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

namespace quelto {
namespace {

/// The window with names in Arabic and Hebrew.
class RightToLeftNamesTest : public test::ShellFixture {
protected:
    const QString game = QString::fromUtf8("سباق الصحراء");
    const QString title = QString::fromUtf8("שלום עולם!");

    void SetUp() override
    {
        ShellFixture::SetUp();
        makeClips({"سباق الصحراء - 2026-03-01 20.15.07.mp4", "سباق الصحراء - שלום עולם!.mp4", "Dota 2 - a.mp4"});
    }

    /// The visible texts below the root that contain the part.
    static QList<QQuickItem*> textsWith(QQuickItem* root, const QString& part)
    {
        QList<QQuickItem*> texts;
        test::visitVisible(root, [&](QQuickItem* each) {
            if (each->inherits("QQuickText") && each->property("text").toString().contains(part)) {
                texts.append(each);
            }
        });
        return texts;
    }

    /// Opens the question before the clip with that title is moved to the trash.
    QQuickItem* askToDelete(const QString& clip)
    {
        navigation->showGame(game);
        drawFrame();
        window->requestActivate();
        auto* const card = test::firstVisible(window, [&](const QQuickItem* each) {
            return each->property("title").toString() == clip && each->property("path").isValid();
        });
        EXPECT_NE(card, nullptr);
        QMetaObject::invokeMethod(card, "deleteRequested");
        const auto question = QStringLiteral("Klip çöp kutusuna taşınsın mı?");
        EXPECT_TRUE(QTest::qWaitFor([&] { return shows(question); }));
        return item(question);
    }

    static bool isAlignedLeft(const QQuickItem* text)
    {
        return text->property("effectiveHorizontalAlignment").toInt() == Qt::AlignLeft;
    }
};

TEST_F(RightToLeftNamesTest, AreAlignedLikeOtherNames)
{
    navigation->showGame(game);
    drawFrame();
    const auto games = textsWith(window->contentItem(), game);
    EXPECT_EQ(games.size(), 5) << "in the sidebar, in the heading, on two cards, and in a default title";
    const auto titles = textsWith(window->contentItem(), title);
    EXPECT_EQ(titles.size(), 1);
    EXPECT_TRUE(std::ranges::all_of(games + titles, isAlignedLeft));
    picture(QStringLiteral("window-right-to-left"));
}

TEST_F(RightToLeftNamesTest, StayPlainForScreenReaders)
{
    drawFrame();
    EXPECT_NE(item(game + QStringLiteral(", 2")), nullptr);
    navigation->showGame(game);
    drawFrame();
    const auto* heading = test::firstVisible(window, [this](QQuickItem* each) {
        const auto* interface = QAccessible::queryAccessibleInterface(each);
        return interface != nullptr && interface->role() == QAccessible::Heading &&
            interface->text(QAccessible::Name) == game;
    });
    EXPECT_NE(heading, nullptr);
    const auto* card = test::firstVisible(window, [this](QQuickItem* each) {
        const auto* interface = QAccessible::queryAccessibleInterface(each);
        return interface != nullptr &&
            interface->text(QAccessible::Name).startsWith(title + QStringLiteral(", ") + game);
    });
    EXPECT_NE(card, nullptr);
}

TEST_F(RightToLeftNamesTest, AreAlignedLeftInTheQuestionBeforeDeleting)
{
    const auto texts = textsWith(askToDelete(title), title);
    ASSERT_EQ(texts.size(), 1);
    EXPECT_TRUE(isAlignedLeft(texts.first()));
    picture(QStringLiteral("window-right-to-left-question"));
}

TEST_F(RightToLeftNamesTest, WordsHaveOneOrderOnTheCardInTheQuestionAndOnThePageOfTheClip)
{
    const auto mixed = game + QStringLiteral(" klibi");
    auto* const question = askToDelete(mixed);
    EXPECT_NE(test::labelOn(question, isolated(mixed)), nullptr);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(question)->text(QAccessible::Description), mixed);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(shows(isolated(mixed))) << "on the card";

    navigation->openClip(settings.saveFolder() + u'/' + game + QStringLiteral(" - 2026-03-01 20.15.07.mp4"));
    drawFrame();
    auto* const heading = textItem(isolated(mixed));
    ASSERT_NE(heading, nullptr);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(heading)->text(QAccessible::Name), mixed);
}

TEST_F(RightToLeftNamesTest, AreAlignedLeftInTheHud)
{
    Hud hud(*engine, main);
    hud.show({.title = QStringLiteral("Klip kaydedildi"), .subtitle = game + QStringLiteral(" - 2026-03-01 20.15.07")});
    auto* const root = hud.window()->rootObject();
    ASSERT_TRUE(QTest::qWaitFor([&] { return root->opacity() == 1; }));
    const auto texts = textsWith(root, game);
    ASSERT_EQ(texts.size(), 1);
    EXPECT_TRUE(isAlignedLeft(texts.first()));
    test::savePicture(const_cast<QQuickView*>(hud.window()), QStringLiteral("hud-right-to-left"));
}

TEST_F(RightToLeftNamesTest, ClipWithoutATitleShowsItsFileName)
{
    makeClips({"a - .mp4"});
    EXPECT_TRUE(shows(QStringLiteral("a - .mp4")));
}

} // namespace
} // namespace quelto
