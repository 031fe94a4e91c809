// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogLines.h"

#include "tests/moments/wow/Fixtures.h"

#include "tests/moments/wow/PickedLineByLine.h"

#include <QByteArrayList>

#include <gtest/gtest.h>

#include <random>

namespace quelto {
namespace {

using test::pickedLineByLine;

QByteArrayList pickedFromBlocks(const QByteArrayList& blocks)
{
    QByteArrayList picked;
    LogLines lines;
    for (const auto& block : blocks) {
        lines.take(block, [&](QByteArrayView line) { picked.append(line.toByteArray()); });
    }
    return picked;
}

QByteArray lineOfSize(qsizetype size)
{
    const QByteArray begin = "8/3 22:09:58.548  UNIT_DIED,";
    return begin + QByteArray(size - begin.size(), 'x');
}

TEST(LogLines, SelectsOnlyLinesWithEventName)
{
    const QByteArray log = "a  SPELL_DAMAGE\r\n"
                           "b  PARTY_KILL,1\r\n"
                           "\n"
                           "c  UNIT_DIE\nD,1\r\n"
                           "d  UNIT_DIED\n"
                           "UNIT_DIED\n"
                           "xENCOUNTER_ENDx\r\n"
                           "e  CHALLENGE_MODE_END,1\r\n"
                           "f  PARTY_KILL,UNIT_DIED,PARTY_KILL\n"
                           "g  PARTY_KILL";
    EXPECT_EQ(pickedFromBlocks({log}),
              (QByteArrayList{"b  PARTY_KILL,1\r", "d  UNIT_DIED", "UNIT_DIED", "xENCOUNTER_ENDx\r",
                              "e  CHALLENGE_MODE_END,1\r", "f  PARTY_KILL,UNIT_DIED,PARTY_KILL"}));
    EXPECT_EQ(pickedFromBlocks({log}), pickedLineByLine(log));
}

TEST(LogLines, WaitsForEndOfLine)
{
    EXPECT_EQ(pickedFromBlocks({"a  UNIT_DIED,1"}), QByteArrayList());
    EXPECT_EQ(pickedFromBlocks({"a  UNIT_DIED,1", "", "2\n"}), QByteArrayList{"a  UNIT_DIED,12"});
}

TEST(LogLines, ClearDiscardsIncompleteLine)
{
    QByteArrayList picked;
    const auto onLine = [&](QByteArrayView line) { picked.append(line.toByteArray()); };
    LogLines lines;
    lines.take("old  PARTY_KI", onLine);
    lines.clear();
    lines.take("new  UNIT_DIED\n", onLine);
    lines.take(QByteArray(10'000, 'x'), onLine);
    lines.clear();
    lines.take("newer  UNIT_DIED\n", onLine);
    EXPECT_EQ(picked, (QByteArrayList{"new  UNIT_DIED", "newer  UNIT_DIED"}));
}

TEST(LogLines, SkipsLinesOf4096BytesOrMore)
{
    for (const auto size : {4094, 4095}) {
        const auto line = lineOfSize(size);
        EXPECT_EQ(pickedFromBlocks({line + '\n'}), QByteArrayList{line});
        EXPECT_EQ(pickedFromBlocks({line, "\n"}), QByteArrayList{line});
    }
    for (const auto size : {4096, 4097, 10'000}) {
        const auto line = lineOfSize(size);
        EXPECT_EQ(pickedFromBlocks({line + "\nUNIT_DIED\n"}), QByteArrayList{"UNIT_DIED"}) << size;
        EXPECT_EQ(pickedFromBlocks({line, "\nUNIT_DIED\n"}), QByteArrayList{"UNIT_DIED"}) << size;
        EXPECT_EQ(pickedFromBlocks({line.left(4000), line.mid(4000) + "\nUNIT_DIED\n"}), QByteArrayList{"UNIT_DIED"})
            << size;
    }
}

TEST(LogLines, SplitAtAnyByteGivesSameLines)
{
    for (const auto* name : {"battleground.log", "keystones.log"}) {
        const auto log = readFixture(QString::fromLatin1(name));
        const auto expected = pickedLineByLine(log);
        ASSERT_GE(expected.size(), 6);
        for (qsizetype cut = 0; cut <= log.size(); ++cut) {
            ASSERT_EQ(pickedFromBlocks({log.left(cut), log.mid(cut)}), expected) << name << " cut at " << cut;
        }
    }
}

TEST(LogLines, ByteByByteGivesSameLines)
{
    const auto log = readFixture(QStringLiteral("raid-night.log"));
    QByteArrayList bytes;
    for (const auto byte : log) {
        bytes.append(QByteArray(1, byte));
    }
    EXPECT_EQ(pickedFromBlocks(bytes), pickedLineByLine(log));
}

TEST(LogLines, RandomBlocksGiveSameLines)
{
    std::mt19937 random(20261121);
    const QByteArrayList pieces{"PARTY_KILL",
                                "UNIT_DIED",
                                "ENCOUNTER_END",
                                "CHALLENGE_MODE_END",
                                "\n",
                                "\r\n",
                                "PARTY_KIL",
                                "NIT_DIED",
                                "UNIT_",
                                "ENCOUNTER_",
                                "_END",
                                "\n",
                                "\xff",
                                ",",
                                "CHALLENGE_MO",
                                "DE_END",
                                lineOfSize(4090),
                                "PARTY_",
                                "\n",
                                "KILL",
                                "UNIT_DIED\n",
                                "DIED",
                                QByteArray(1, '\0')};
    for (int round = 0; round < 2000; ++round) {
        QByteArrayList blocks;
        const auto count = random() % 40;
        for (unsigned i = 0; i < count; ++i) {
            blocks.append(pieces[static_cast<qsizetype>(random() % static_cast<unsigned>(pieces.size()))]);
        }
        const auto log = blocks.join();
        ASSERT_EQ(pickedFromBlocks(blocks), pickedLineByLine(log)) << log.toStdString();
        ASSERT_EQ(pickedFromBlocks({log}), pickedLineByLine(log)) << log.toStdString();
    }
}

TEST(LogLines, SkipsLineOf100MegabytesInBoundedMemory)
{
    // All of its memory is within the object.
    static_assert(sizeof(LogLines) < 2 * LogLines::MaxLineSize);
    static_assert(std::is_trivially_copyable_v<LogLines>);
    int picked = 0;
    LogLines lines;
    const auto count = [&](QByteArrayView /*line*/) { ++picked; };
    const QByteArray block = QByteArray("PARTY_KILL").repeated(10'000);
    for (int i = 0; i < 1000; ++i) {
        lines.take(block, count);
    }
    EXPECT_EQ(picked, 0);
    lines.take("\na  UNIT_DIED\n", count);
    EXPECT_EQ(picked, 1);
}

} // namespace
} // namespace quelto
