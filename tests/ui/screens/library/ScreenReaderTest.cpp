// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ScreenReader.h"

#include "tests/ui/screens/library/LibraryScreenFixture.h"

namespace quelto {
namespace {

/// What screen readers are told.
class ScreenReaderTest : public test::LibraryScreenFixture {
protected:
    void SetUp() override
    {
        LibraryScreenFixture::SetUp();
        for (int i = 0; i < 60; ++i) {
            makeFile(QStringLiteral("Dota 2 - Nr %1.mp4").arg(i, 2, 10, QLatin1Char('0')).toUtf8().constData(), i * 60);
        }
        reload();
        show();
        reader = engine->singletonInstance<ScreenReader*>(qmlTypeId("Quelto.Library", 1, 0, "ScreenReader"));
        ASSERT_NE(reader, nullptr);
        reader->setListener([this](QAccessibleEvent* event) {
            EXPECT_EQ(event->type(), QAccessible::Focus);
            told.append(event->accessibleInterface()->text(QAccessible::Name).section(u',', 0, 0));
        });
    }

    /// The titles of the cards since the last time.
    QStringList heard()
    {
        settle(60);
        return std::exchange(told, {});
    }

    ScreenReader* reader = nullptr;
    QStringList told;
};

TEST_F(ScreenReaderTest, HearsOfEveryCardThatTheKeysLeadTo)
{
    key(Qt::Key_Home);
    EXPECT_EQ(heard(), QStringList{QStringLiteral("Nr 00")});
    key(Qt::Key_Right);
    EXPECT_EQ(heard(), QStringList{QStringLiteral("Nr 01")});
    // Far out of view: its card is filled first.
    key(Qt::Key_End);
    EXPECT_EQ(heard(), QStringList{QStringLiteral("Nr 59")});
    key(Qt::Key_End);
    EXPECT_EQ(heard(), QStringList()) << "nothing has changed";
}

TEST_F(ScreenReaderTest, HearsOfTheCurrentCardWhenTheKeyboardComesBack)
{
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    item(QStringLiteral("Klasör"))->forceActiveFocus(Qt::TabFocusReason);
    heard();
    key(Qt::Key_Tab);
    EXPECT_EQ(heard(), QStringList{QStringLiteral("Nr 01")});
}

TEST_F(ScreenReaderTest, HearsOfTheCardThatTakesThePlaceOfAnother)
{
    key(Qt::Key_Home);
    heard();
    QFile::remove(path("Dota 2 - Nr 00.mp4"));
    reload();
    EXPECT_EQ(heard(), QStringList{QStringLiteral("Nr 01")});
}

TEST_F(ScreenReaderTest, HearsNothingOfCardsThatTheMouseUses)
{
    click(card(QStringLiteral("Nr 04")));
    EXPECT_EQ(heard(), QStringList());
}

} // namespace
} // namespace quelto
