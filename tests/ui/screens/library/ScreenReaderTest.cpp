// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ScreenReader.h"

#include "tests/ui/screens/library/LibraryScreenFixture.h"

namespace quelto {
namespace {

/// The focus events for screen readers.
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
        reader->setSend([this](QAccessibleEvent* event) {
            EXPECT_EQ(event->type(), QAccessible::Focus);
            announced.append(event->accessibleInterface()->text(QAccessible::Name).section(u',', 0, 0));
        });
    }

    /// The titles announced since the last call.
    QStringList announcedTitles()
    {
        settle(60);
        return std::exchange(announced, {});
    }

    ScreenReader* reader = nullptr;
    QStringList announced;
};

TEST_F(ScreenReaderTest, AnnouncesEveryCardReachedByKeys)
{
    key(Qt::Key_Home);
    EXPECT_EQ(announcedTitles(), QStringList{QStringLiteral("Nr 00")});
    key(Qt::Key_Right);
    EXPECT_EQ(announcedTitles(), QStringList{QStringLiteral("Nr 01")});
    // The target is out of view: the view scrolls there first.
    key(Qt::Key_End);
    EXPECT_EQ(announcedTitles(), QStringList{QStringLiteral("Nr 59")});
    key(Qt::Key_End);
    EXPECT_EQ(announcedTitles(), QStringList()) << "nothing has changed";
}

TEST_F(ScreenReaderTest, AnnouncesTheCurrentCardWhenFocusReturns)
{
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    item(QStringLiteral("Klasör"))->forceActiveFocus(Qt::TabFocusReason);
    announcedTitles();
    key(Qt::Key_Tab);
    EXPECT_EQ(announcedTitles(), QStringList{QStringLiteral("Nr 01")});
}

TEST_F(ScreenReaderTest, AnnouncesTheCardThatReplacesARemovedOne)
{
    key(Qt::Key_Home);
    announcedTitles();
    QFile::remove(path("Dota 2 - Nr 00.mp4"));
    reload();
    EXPECT_EQ(announcedTitles(), QStringList{QStringLiteral("Nr 01")});
}

TEST_F(ScreenReaderTest, AnnouncesNothingForTheMouse)
{
    click(card(QStringLiteral("Nr 04")));
    EXPECT_EQ(announcedTitles(), QStringList());
}

} // namespace
} // namespace quelto
