// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/SettingsScroll.h"

#include "tests/base/tasks/ManualQueue.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using Section = SettingsSection;

class SettingsScrollTest : public testing::Test {
protected:
    /// Reports cards of that height, one below the other, scrolled by the distance.
    void scrollTo(double distance, double cardHeight = 300)
    {
        SectionOffsets offsets;
        for (const auto section : AllSettingsSections) {
            offsets.insert(section, 100 + static_cast<int>(section) * cardHeight - distance);
        }
        scroll->report(offsets);
    }
    int highlight() const { return scroll->highlight(); }

    test::ManualTime time;
    test::ManualQueue main{time};
    std::unique_ptr<SettingsScroll> scroll = std::make_unique<SettingsScroll>(
        SettingsScroll::Dependencies{.main = main, .now = [this] { return time.now(); }});
    QSignalSpy fadeOuts{scroll.get(), &SettingsScroll::fadeOutRequested};
    QSignalSpy jumps{scroll.get(), &SettingsScroll::jumpRequested};
};

TEST_F(SettingsScrollTest, LastCardThatReachedTheTopIsLit)
{
    EXPECT_EQ(scroll->activeSection(), Section::Appearance);
    scrollTo(0);
    EXPECT_EQ(scroll->activeSection(), Section::Appearance);
    // The card of the clip settings starts at 400.
    scrollTo(339);
    EXPECT_EQ(scroll->activeSection(), Section::Appearance);
    scrollTo(340);
    EXPECT_EQ(scroll->activeSection(), Section::Clip);
    scrollTo(5000);
    EXPECT_EQ(scroll->activeSection(), Section::General);
    scrollTo(0);
    EXPECT_EQ(scroll->activeSection(), Section::Appearance);
}

TEST_F(SettingsScrollTest, CardsWithoutAKnownPlaceDoNotCount)
{
    EXPECT_EQ(sectionAt({}), Section::Appearance);
    EXPECT_EQ(sectionAt({{Section::Match, 10}, {Section::Storage, 61}}), Section::Match);
    EXPECT_EQ(sectionAt({{Section::Match, 10}, {Section::Storage, 60}}), Section::Storage);
    // The order of the sections decides, not that of the offsets.
    EXPECT_EQ(sectionAt({{Section::Match, 10}, {Section::Storage, -500}}), Section::Storage);
}

TEST_F(SettingsScrollTest, TellsOnlyAboutChanges)
{
    QSignalSpy changes(scroll.get(), &SettingsScroll::activeSectionChanged);
    scrollTo(400);
    scrollTo(410);
    scrollTo(420);
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(SettingsScrollTest, JumpFadesOutThenScrollsAndHighlights)
{
    scroll->select(Section::Audio);
    EXPECT_EQ(scroll->activeSection(), Section::Audio);
    EXPECT_EQ(fadeOuts.size(), 1);
    time.advance(109ms);
    EXPECT_EQ(jumps.size(), 0);
    EXPECT_EQ(highlight(), -1);
    time.advance(1ms);
    ASSERT_EQ(jumps.size(), 1);
    EXPECT_EQ(jumps.first().first().value<Section>(), Section::Audio);
    EXPECT_EQ(highlight(), static_cast<int>(Section::Audio));
    time.advance(699ms);
    EXPECT_EQ(highlight(), static_cast<int>(Section::Audio));
    time.advance(1ms);
    EXPECT_EQ(highlight(), -1);
}

TEST_F(SettingsScrollTest, ScrollingDoesNotMoveTheLitSectionDuringAJump)
{
    scroll->select(Section::Audio);
    scrollTo(0);
    EXPECT_EQ(scroll->activeSection(), Section::Audio);
    time.advance(600ms);
    scrollTo(0);
    EXPECT_EQ(scroll->activeSection(), Section::Audio);
    time.advance(1ms);
    scrollTo(0);
    EXPECT_EQ(scroll->activeSection(), Section::Appearance);
}

TEST_F(SettingsScrollTest, LitSectionIsHighlightedWithoutAJump)
{
    scroll->select(Section::Appearance);
    EXPECT_EQ(highlight(), static_cast<int>(Section::Appearance));
    time.advance(10s);
    EXPECT_EQ(highlight(), -1);
    EXPECT_EQ(fadeOuts.size(), 0);
    EXPECT_EQ(jumps.size(), 0);
}

TEST_F(SettingsScrollTest, SecondClickDuringTheFadeDoesNothing)
{
    scroll->select(Section::Audio);
    time.advance(50ms);
    scroll->select(Section::Audio);
    EXPECT_EQ(highlight(), -1);
    EXPECT_EQ(fadeOuts.size(), 1);
    time.advance(60ms);
    EXPECT_EQ(jumps.size(), 1);
    // The fade has ended: another click only highlights.
    time.advance(300ms);
    scroll->select(Section::Audio);
    time.advance(10s);
    EXPECT_EQ(jumps.size(), 1);
    EXPECT_EQ(highlight(), -1);
}

TEST_F(SettingsScrollTest, SecondHighlightOfACardEndsWithTheFirst)
{
    scroll->select(Section::Appearance);
    time.advance(500ms);
    scroll->select(Section::Appearance);
    time.advance(199ms);
    EXPECT_EQ(highlight(), 0);
    time.advance(1ms);
    EXPECT_EQ(highlight(), -1);
}

TEST_F(SettingsScrollTest, TwoQuickJumpsEndAtTheSecond)
{
    scroll->select(Section::Audio);
    time.advance(50ms);
    scroll->select(Section::Storage);
    EXPECT_EQ(scroll->activeSection(), Section::Storage);
    EXPECT_EQ(fadeOuts.size(), 2);
    time.advance(60ms);
    time.advance(50ms);
    ASSERT_EQ(jumps.size(), 2);
    EXPECT_EQ(jumps.last().first().value<Section>(), Section::Storage);
    EXPECT_EQ(highlight(), static_cast<int>(Section::Storage));
    // The highlight of the first card does not end that of the second.
    time.advance(650ms);
    EXPECT_EQ(highlight(), static_cast<int>(Section::Storage));
    time.advance(50ms);
    EXPECT_EQ(highlight(), -1);
    EXPECT_EQ(scroll->activeSection(), Section::Storage);
}

TEST_F(SettingsScrollTest, LockStartsAgainWithASecondJump)
{
    scroll->select(Section::Audio);
    time.advance(500ms);
    scroll->select(Section::Storage);
    time.advance(600ms);
    scrollTo(0);
    EXPECT_EQ(scroll->activeSection(), Section::Storage);
    time.advance(1ms);
    scrollTo(0);
    EXPECT_EQ(scroll->activeSection(), Section::Appearance);
}

TEST_F(SettingsScrollTest, PageMayBeLeftDuringAJump)
{
    scroll->select(Section::Audio);
    scroll.reset();
    time.advance(10s);
    scroll = std::make_unique<SettingsScroll>(
        SettingsScroll::Dependencies{.main = main, .now = [this] { return time.now(); }});
    EXPECT_EQ(scroll->activeSection(), Section::Appearance);
    EXPECT_EQ(highlight(), -1);
}

} // namespace
} // namespace quelto
