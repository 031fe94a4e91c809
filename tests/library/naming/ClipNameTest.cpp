// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/ClipName.h"

#include "base/files/FileName.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

const QDateTime Evening(QDate(2026, 3, 1), QTime(20, 15, 7));

TEST(ClipName, HasGameDateAndExtension)
{
    EXPECT_EQ(clipFileStem(QStringLiteral("Dota 2"), Evening), QStringLiteral("Dota 2 - 2026-03-01 20.15.07"));
    EXPECT_EQ(clipFileName({.game = QStringLiteral("Dota 2"), .date = Evening}),
              QStringLiteral("Dota 2 - 2026-03-01 20.15.07.mp4"));
}

TEST(ClipName, SuffixFollowsTheDate)
{
    EXPECT_EQ(clipFileName({.game = QStringLiteral("League of Legends"),
                            .date = Evening,
                            .suffix = QStringLiteral("[EFSANE 95] Penta Kill")}),
              QStringLiteral("League of Legends - 2026-03-01 20.15.07 [EFSANE 95] Penta Kill.mp4"));
}

TEST(ClipName, CollisionMarkPrecedesTheSuffix)
{
    EXPECT_EQ(
        clipFileName(
            {.game = QStringLiteral("League of Legends"), .date = Evening, .suffix = QStringLiteral("[EFSANE 95] x")},
            2),
        QStringLiteral("League of Legends - 2026-03-01 20.15.07 (2) [EFSANE 95] x.mp4"));
    EXPECT_EQ(clipFileName({.game = QStringLiteral("Dota 2"), .date = Evening}, 11),
              QStringLiteral("Dota 2 - 2026-03-01 20.15.07 (11).mp4"));
}

TEST(ClipName, ReplacesSlashesAndColons)
{
    EXPECT_EQ(clipFileStem(QStringLiteral("AC/DC: Live"), Evening),
              QStringLiteral("AC-DC- Live - 2026-03-01 20.15.07"));
    EXPECT_EQ(clipFileName({.game = QStringLiteral("../../etc"), .date = Evening, .suffix = QStringLiteral("a/b:c")}),
              QStringLiteral("-..-etc - 2026-03-01 20.15.07 a-b-c.mp4"));
}

TEST(ClipName, RemovesControlCharacters)
{
    const QString text = QStringLiteral("a") + QChar(0) + QStringLiteral("b\x1b[31m\n\r\tc\x7f") + QChar(0x85);
    EXPECT_EQ(clipFileStem(text, Evening), QStringLiteral("ab[31mc - 2026-03-01 20.15.07"));
    EXPECT_EQ(clipFileName({.game = QStringLiteral("Game"), .date = Evening, .suffix = text}),
              QStringLiteral("Game - 2026-03-01 20.15.07 ab[31mc.mp4"));
}

TEST(ClipName, GameWithLeadingDotsGivesAVisibleFile)
{
    for (const auto& [game, expected] :
         {std::pair{".hack//G.U.", "hack--G.U."}, std::pair{".blueman-manager-wrapped", "blueman-manager-wrapped"},
          std::pair{"...", "-"}, std::pair{"\n.\t.x", "x"}, std::pair{"", ""}, std::pair{"a...", "a..."}}) {
        const auto name = clipFileName({.game = QString::fromLatin1(game), .date = Evening});
        EXPECT_EQ(name, QString::fromLatin1(expected) + QStringLiteral(" - 2026-03-01 20.15.07.mp4"));
        EXPECT_TRUE(isClipFileName(name.toUtf8())) << game;
    }
    const auto blank = QString(200, u' ') + QStringLiteral(".x") + QString(200, u'y');
    EXPECT_TRUE(isClipFileName(clipFileName({.game = blank, .date = Evening}).toUtf8())) << "shortening uncovers a dot";
}

TEST(ClipName, PortablePartsHaveNoCharacterThatOtherSystemsReject)
{
    const ClipNameParts parts{
        .game = QStringLiteral("What? *\"<|>\\"), .date = Evening, .suffix = QStringLiteral("[ORTA 45] Who?")};
    EXPECT_EQ(clipFileName(portableClipNameParts(parts)),
              QStringLiteral("What- ------ - 2026-03-01 20.15.07 [ORTA 45] Who-.mp4"));
    const ClipNameParts ordinary{.game = QStringLiteral("Gördüm (2) [x]'!"), .date = Evening};
    EXPECT_EQ(portableClipNameParts(ordinary), ordinary);
}

struct LongName {
    const char* name;
    QString game;
    std::optional<QString> suffix;
};

class ClipNameLength : public testing::TestWithParam<LongName> { };

TEST_P(ClipNameLength, FitsIntoNameMaxWithItsSidecar)
{
    const auto name = clipFileName({.game = GetParam().game, .date = Evening, .suffix = GetParam().suffix}, 1000);
    EXPECT_LE(name.toUtf8().size() + 6, 255);
    EXPECT_TRUE(name.contains(QStringLiteral(" - 2026-03-01 20.15.07 (1000)")));
    EXPECT_TRUE(name.endsWith(QStringLiteral(".mp4")));
    EXPECT_FALSE(name.contains(QChar::ReplacementCharacter));
    EXPECT_EQ(QString::fromUtf8(name.toUtf8()), name) << "a surrogate pair was split";
}

INSTANTIATE_TEST_SUITE_P(Cases, ClipNameLength,
                         testing::Values(LongName{"Latin", QString(400, u'x'), std::nullopt},
                                         LongName{"Cyrillic", QString(300, QChar(0x0416)), std::nullopt},
                                         LongName{"Suffix", QStringLiteral("WoW"), QString(400, QChar(0x0416))},
                                         LongName{"Both", QString(300, QChar(0x0416)), QString(300, u'y')},
                                         LongName{"ControlCharacters", QString(230, u'x') + QString(200, QChar(1)),
                                                  std::nullopt},
                                         LongName{"Emoji", QStringLiteral("😀").repeated(100), std::nullopt}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(ClipName, ShorteningKeepsTheTier)
{
    const auto name = clipFileName({.game = QStringLiteral("World of Warcraft"),
                                    .date = Evening,
                                    .suffix = QStringLiteral("[EFSANE 95] ") + QString(300, QChar(0x0416))});
    EXPECT_TRUE(name.startsWith(QStringLiteral("World of Warcraft - 2026-03-01 20.15.07 [EFSANE 95] Ж")));
}

TEST(ClipName, MomentSuffixHasTierScoreAndLabel)
{
    EXPECT_EQ(momentSuffix(ClipTier::epic, 170, QStringLiteral("PENTAKILL %1")),
              QStringLiteral("[EFSANE 170] PENTAKILL %1"));
    EXPECT_EQ(momentSuffix(ClipTier::basic, -5, QStringLiteral("x")), QStringLiteral("[BASIT -5] x"));
}

TEST(ClipName, ParsesWhatItComposes)
{
    const auto label = QStringLiteral("Penta Kill (Ahri)");
    const auto name = clipFileName({.game = QStringLiteral("League of Legends"),
                                    .date = Evening,
                                    .suffix = momentSuffix(ClipTier::medium, 45, label)},
                                   2);
    const auto parsed = parseClipFileName(name);
    EXPECT_EQ(parsed.game, QStringLiteral("League of Legends"));
    EXPECT_EQ(parsed.title, QStringLiteral("2026-03-01 20.15.07 (2) [ORTA 45] Penta Kill (Ahri)"));
    EXPECT_GT(dateLength(parsed.title), 0);
    ASSERT_TRUE(parsed.moment);
    EXPECT_EQ(parsed.moment->tier, ClipTier::medium);
    EXPECT_EQ(parsed.moment->score, 45);
    EXPECT_EQ(parsed.moment->label, label);
}

TEST(ClipName, NameWithoutSeparatorIsATitleWithoutGame)
{
    EXPECT_EQ(parseClipFileName(u"holiday.video.mp4").game, std::nullopt);
    EXPECT_EQ(parseClipFileName(u"holiday.video.mp4").title, QStringLiteral("holiday.video"));
    EXPECT_FALSE(clipFileNameHasGame(u"holiday.video.mp4"));
    EXPECT_EQ(parseClipFileName(u" - .mp4").game, QString());
    EXPECT_TRUE(clipFileNameHasGame(u" - .mp4"));
    EXPECT_FALSE(clipFileNameHasGame(u"x. - mp4"));
}

TEST(ClipName, StemHasNoExtension)
{
    EXPECT_EQ(stemOf(u"a.b.mp4"), u"a.b");
    EXPECT_EQ(stemOf(u"a"), u"a");
    EXPECT_EQ(stemOf(u"a."), u"a");
    EXPECT_EQ(stemOf(u".mp4"), u".mp4");
    EXPECT_EQ(stemOf(u""), u"");
}

TEST(ClipName, SidecarNeedsRoomInBytes)
{
    // "." and ".json" are six bytes of the 255.
    EXPECT_TRUE(hasRoomForSidecar(QString(249, u'x')));
    EXPECT_FALSE(hasRoomForSidecar(QString(250, u'x')));
    EXPECT_TRUE(hasRoomForSidecar(QString(124, QChar(0x0416)) + u'x'));
    EXPECT_FALSE(hasRoomForSidecar(QString(125, QChar(0x0416))));
    EXPECT_TRUE(hasRoomForSidecar(decodeFileName(QByteArray(249, '\xff'))));
    EXPECT_FALSE(hasRoomForSidecar(decodeFileName(QByteArray(250, '\xff'))));
}

TEST(ClipName, RenamedClipHasGameTitleAndItsOwnExtension)
{
    const auto renamed = [](const QString& title) {
        return renamedClipFileName(QStringLiteral("Game"), title, QStringLiteral("MOV"));
    };
    EXPECT_EQ(renamed(QStringLiteral(" \n My %1 title\t ")), QStringLiteral("Game - My %1 title.MOV"));
    EXPECT_EQ(renamed(QStringLiteral("a/b:c")), QStringLiteral("Game - a-b-c.MOV"));
    EXPECT_EQ(renamed(QStringLiteral(" \n\t ")), std::nullopt);
    EXPECT_EQ(renamed(QStringLiteral("a") + QChar(u'\0') + QStringLiteral("b")), std::nullopt);
}

} // namespace
} // namespace quelto
