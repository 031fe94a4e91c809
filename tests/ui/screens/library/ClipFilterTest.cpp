// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ClipFilter.h"

#include "base/language/L10n.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

class ClipFilterTest : public testing::Test {
protected:
    void SetUp() override { L10n::use(QStringLiteral("en")); }
    void TearDown() override { L10n::use(QStringLiteral("tr")); }

    static QStringList matchingTitles(const ClipFilter& filter)
    {
        SearchableClips clips({
            Clip(QStringLiteral("/c/Dota 2 - 2026-03-01 20.15.07 [EFSANE 170] RAMPAGE.mp4")),
            Clip(QStringLiteral("/c/Dota 2 - 2026-03-01 20.15.08 [ORTA 45] Triple Kill.mp4")),
            Clip(QStringLiteral("/c/Dota - 2026-03-01 20.15.09.mp4")),
            Clip(QStringLiteral("/c/League - My Ace.mp4")),
            Clip(QStringLiteral("/c/League - 2026-03-01 20.15.10 [BASIT 15] Solo.mp4")),
        });
        QStringList titles;
        for (const auto index : clips.matching(filter)) {
            titles.append(clips.clips().at(index).displayTitle());
        }
        return titles;
    }
};

TEST_F(ClipFilterTest, DefaultMatchesAllClips)
{
    EXPECT_EQ(matchingTitles({}).size(), 5);
}

TEST_F(ClipFilterTest, MatchesTheGameExactly)
{
    EXPECT_EQ(matchingTitles({.game = QStringLiteral("Dota")}), QStringList{QStringLiteral("Dota clip")});
    EXPECT_TRUE(matchingTitles({.game = QStringLiteral("dota")}).isEmpty());
    EXPECT_TRUE(matchingTitles({.game = QString()}).isEmpty());
}

TEST_F(ClipFilterTest, MatchesClipsWithoutAGameInAnyLanguage)
{
    const auto matching = [] {
        SearchableClips clips({Clip(QStringLiteral("/c/holiday.mp4")), Clip(QStringLiteral("/c/Dota 2 - a.mp4")),
                               Clip(QStringLiteral("/c/Other - b.mp4"))});
        // Read again for the new language only some time after the change.
        L10n::use(QStringLiteral("tr"));
        const auto afterChange = clips.matching({.game = ClipGame::none()});
        L10n::use(QStringLiteral("en"));
        return std::pair(clips.matching({.game = ClipGame::none()}), afterChange);
    }();
    EXPECT_EQ(matching.first, (QList<qsizetype>{0, 2})) << "a game called Other is listed under the same name";
    EXPECT_EQ(matching.second, QList<qsizetype>{0});
}

TEST_F(ClipFilterTest, MatchesOneTier)
{
    EXPECT_EQ(matchingTitles({.tier = QStringLiteral("epic")}), QStringList{QStringLiteral("RAMPAGE")});
    EXPECT_EQ(matchingTitles({.tier = QStringLiteral("medium")}), QStringList{QStringLiteral("Triple Kill")});
    EXPECT_EQ(matchingTitles({.tier = QStringLiteral("basic")}), QStringList{QStringLiteral("Solo")});
    EXPECT_TRUE(matchingTitles({.tier = QStringLiteral("legendary")}).isEmpty());
}

TEST_F(ClipFilterTest, ManualMatchesClipsWithoutATier)
{
    EXPECT_EQ(matchingTitles({.tier = QStringLiteral("manual")}),
              (QStringList{QStringLiteral("Dota clip"), QStringLiteral("My Ace")}));
}

TEST_F(ClipFilterTest, SearchIgnoresCaseInTheTitle)
{
    EXPECT_EQ(matchingTitles({.search = QStringLiteral("rAmPaGe")}), QStringList{QStringLiteral("RAMPAGE")});
    EXPECT_EQ(matchingTitles({.search = QStringLiteral("ace")}), QStringList{QStringLiteral("My Ace")});
    EXPECT_TRUE(matchingTitles({.search = QStringLiteral("2026")}).isEmpty()) << "the date is not part of the title";
}

TEST_F(ClipFilterTest, SearchMatchesTheGame)
{
    EXPECT_EQ(matchingTitles({.search = QStringLiteral("league")}),
              (QStringList{QStringLiteral("My Ace"), QStringLiteral("Solo")}));
}

TEST_F(ClipFilterTest, AllConditionsMustMatch)
{
    EXPECT_EQ(
        matchingTitles(
            {.game = QStringLiteral("Dota 2"), .tier = QStringLiteral("medium"), .search = QStringLiteral("kill")}),
        QStringList{QStringLiteral("Triple Kill")});
    EXPECT_TRUE(matchingTitles({.game = QStringLiteral("League"), .tier = QStringLiteral("epic")}).isEmpty());
}

TEST_F(ClipFilterTest, SearchFollowsTheCaseRulesOfTheLanguage)
{
    SearchableClips clips({Clip(QStringLiteral("/c/Elden Ring - İlk Işık.mp4"))});
    L10n::use(QStringLiteral("tr"));
    EXPECT_EQ(clips.matching({.search = QStringLiteral("ilk ışık")}).size(), 1);
    EXPECT_EQ(clips.matching({.search = QStringLiteral("ILK")}).size(), 0);
    // The search keys are computed again for another language.
    L10n::use(QStringLiteral("en"));
    EXPECT_EQ(clips.matching({.search = QStringLiteral("ilk ışık")}).size(), 0);
    EXPECT_EQ(clips.matching({.search = QStringLiteral("RING")}).size(), 1);
}

TEST_F(ClipFilterTest, SearchMatchesDecomposedLetters)
{
    SearchableClips clips({Clip(QStringLiteral("/c/Pokémon - Cafe\u0301.mp4"))});
    EXPECT_EQ(clips.matching({.search = QStringLiteral("café")}).size(), 1);
    EXPECT_EQ(clips.matching({.search = QStringLiteral("poke\u0301mon")}).size(), 1);
}

TEST_F(ClipFilterTest, TierFiltersAreInDisplayOrder)
{
    QStringList labels;
    for (const auto& filter : tierFilters()) {
        labels.append(tierFilterLabel(filter));
    }
    L10n::use(QStringLiteral("tr"));
    QStringList turkish;
    for (const auto& filter : tierFilters()) {
        turkish.append(tierFilterLabel(filter));
    }
    EXPECT_EQ(turkish,
              (QStringList{QStringLiteral("Tümü"), QStringLiteral("Efsane"), QStringLiteral("Orta"),
                           QStringLiteral("Basit"), QStringLiteral("Manuel")}));
    EXPECT_EQ(labels.first(), QStringLiteral("All"));
    EXPECT_EQ(labels.last(), QStringLiteral("Manual"));
}

} // namespace
} // namespace quelto
