// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/ClipMeta.h"

#include "base/files/FileName.h"
#include "tests/base/faults/FileFaultRules.h"
#include "tests/base/faults/FileFaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cerrno>

namespace quelto {
namespace {

class ClipMetaTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QString clip = folder.filePath(QStringLiteral("Dota 2 - 2026-03-01 20.15.07.mp4"));

    void storeSidecar(const QByteArray& json) const
    {
        QFile file(ClipMeta::pathFor(clip));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(json);
    }

    QByteArray sidecar() const
    {
        QFile file(ClipMeta::pathFor(clip));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(ClipMetaTest, PathIsAHiddenFileBesideTheClip)
{
    EXPECT_EQ(ClipMeta::pathFor(QStringLiteral("/clips/Dota 2 - 2026-03-01 20.15.07.mp4")),
              QStringLiteral("/clips/.Dota 2 - 2026-03-01 20.15.07.mp4.json"));
}

TEST_F(ClipMetaTest, MarkerTimesCountBackFromTheEndOfTheFile)
{
    const Moment moment{.game = QStringLiteral("Dota 2"),
                        .tier = ClipTier::medium,
                        .score = 45,
                        .label = QStringLiteral("Triple Kill"),
                        .seconds = 30,
                        .events = {MomentEvent{8.5, QStringLiteral("solo_kill")},
                                   MomentEvent{99, QStringLiteral("assist")},
                                   MomentEvent{-1, QStringLiteral("victory")}}};
    const auto meta = ClipMeta::of(moment, 30);
    EXPECT_EQ(meta.tier, QStringLiteral("ORTA"));
    EXPECT_EQ(meta.score, 45);
    const QList<ClipMeta::Event> expected{ClipMeta::Event{21.5, QStringLiteral("solo_kill")},
                                          ClipMeta::Event{0, QStringLiteral("assist")}};
    EXPECT_EQ(meta.events, expected);
}

TEST_F(ClipMetaTest, RoundTripPreservesAllFields)
{
    const ClipMeta meta{.game = QStringLiteral("Dota 2"),
                        .label = QStringLiteral("Kıl Payı \"Triple\" Kill"),
                        .tier = QStringLiteral("ORTA"),
                        .score = 45,
                        .events = {ClipMeta::Event{21.5, QStringLiteral("solo_kill")}}};
    meta.save(clip);
    EXPECT_EQ(ClipMeta::load(clip), meta);
}

TEST_F(ClipMetaTest, OmitsAbsentFieldsButAlwaysWritesEvents)
{
    ClipMeta().save(clip);
    EXPECT_EQ(sidecar(), QByteArray("{\"events\":[]}"));
}

TEST_F(ClipMetaTest, LoadsAnObjectWithEventsAlone)
{
    storeSidecar("{\"events\":[]}");
    EXPECT_EQ(ClipMeta::load(clip), ClipMeta());
}

class ClipMetaDamage : public ClipMetaTest, public testing::WithParamInterface<const char*> { };

TEST_P(ClipMetaDamage, CountsAsMissing)
{
    storeSidecar(GetParam());
    EXPECT_EQ(ClipMeta::load(clip), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Cases, ClipMetaDamage,
                         testing::Values("", "{}", "[]", "{\"events\":", "{\"events\":{}}", "{\"events\":[1]}",
                                         "{\"events\":[{\"t\":\"1\",\"name\":\"kill\"}]}", "{\"events\":[{\"t\":1}]}",
                                         "{\"game\":7,\"events\":[]}", "{\"score\":\"9\",\"events\":[]}",
                                         "{\"score\":9.5,\"events\":[]}", "\xff\xfe\x00"));

TEST_F(ClipMetaTest, MissingFileLoadsNothing)
{
    EXPECT_EQ(ClipMeta::load(clip), std::nullopt);
    EXPECT_EQ(ClipMeta::load(QStringLiteral("/no/such/folder/x.mp4")), std::nullopt);
}

TEST_F(ClipMetaTest, MoveAndRemoveFollowTheClip)
{
    const auto renamed = folder.filePath(QStringLiteral("Dota 2 - Ace.mp4"));
    const ClipMeta meta{.score = 9};
    meta.save(clip);
    ClipMeta::move(clip, renamed);
    EXPECT_EQ(ClipMeta::load(clip), std::nullopt);
    EXPECT_EQ(ClipMeta::load(renamed), meta);
    ClipMeta::remove(renamed);
    EXPECT_EQ(ClipMeta::load(renamed), std::nullopt);
}

TEST_F(ClipMetaTest, MoveDoesNotReplaceAnotherSidecar)
{
    const auto other = folder.filePath(QStringLiteral("Dota 2 - Ace.mp4"));
    ClipMeta{.score = 1}.save(clip);
    ClipMeta{.score = 2}.save(other);
    ClipMeta::move(clip, other);
    EXPECT_EQ(ClipMeta::load(other), ClipMeta{.score = 2});
}

TEST_F(ClipMetaTest, WorksWithNamesThatAreNotValidUtf8)
{
    const auto path = decodeFileName(QFile::encodeName(folder.path()) + "/B\xfcy\xfck.mp4");
    const auto other = decodeFileName(QFile::encodeName(folder.path()) + "/B\xf6y\xf6k.mp4");
    const ClipMeta meta{.score = 9};
    meta.save(path);
    EXPECT_EQ(ClipMeta::load(path), meta);
    EXPECT_EQ(ClipMeta::load(other), std::nullopt);
    ClipMeta::move(path, other);
    EXPECT_EQ(ClipMeta::load(path), std::nullopt);
    EXPECT_EQ(ClipMeta::load(other), meta);
    ClipMeta::remove(other);
    EXPECT_EQ(ClipMeta::load(other), std::nullopt);
}

TEST_F(ClipMetaTest, FailuresAreSilent)
{
    ClipMeta().save(QStringLiteral("/no/such/folder/x.mp4"));
    ClipMeta::move(QStringLiteral("/no/such/folder/x.mp4"), clip);
    ClipMeta::remove(QStringLiteral("/no/such/folder/x.mp4"));
    EXPECT_TRUE(sidecar().isEmpty());
}

class ClipMetaFaults : public ClipMetaTest {
protected:
    test::FileFaults faults{folder.path()};
    const ClipMeta meta{.label = QStringLiteral("Ace"), .events = {ClipMeta::Event{21.5, QStringLiteral("ace")}}};

    /// Saves over a previous sidecar, if there is one, with one fault. Returns the names of all files then.
    QStringList saveWith(const QByteArray& rule, const std::optional<ClipMeta>& previous)
    {
        faults.use({});
        ClipMeta::remove(clip);
        if (previous) {
            previous->save(clip);
        }
        faults.use({rule});
        meta.save(clip);
        faults.use({});
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
    }

    QList<test::FileCall> usualCalls()
    {
        faults.use({});
        meta.save(clip);
        return faults.calls();
    }
};

TEST_F(ClipMetaFaults, FailedSaveKeepsThePreviousSidecarOrNone)
{
    const auto calls = usualCalls();
    ASSERT_FALSE(calls.isEmpty());
    for (const auto& call : calls) {
        for (const int error : {ENOSPC, EIO, EACCES}) {
            SCOPED_TRACE(call.name.toStdString() + ' ' + std::to_string(call.number));
            const auto rule = test::faultRule(call.name, call.number, error);
            for (const auto& previous : {std::optional<ClipMeta>(), std::optional(ClipMeta{.score = 1})}) {
                const auto files = saveWith(rule, previous);
                const auto stored = ClipMeta::load(clip);
                EXPECT_TRUE(stored == meta || stored == previous) << sidecar().toStdString();
                EXPECT_EQ(files.contains(QFileInfo(ClipMeta::pathFor(clip)).fileName()), stored.has_value())
                    << "a sidecar that cannot be read stays";
            }
        }
    }
    saveWith({}, std::nullopt);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1) << "hidden files are left";
}

TEST_F(ClipMetaFaults, SaveSurvivesInterruptedCallsAndShortWrites)
{
    for (const auto& call : usualCalls()) {
        for (const int fault : {EINTR, test::ShortWrite}) {
            saveWith(test::faultRule(call.name, call.number, fault), std::nullopt);
            EXPECT_EQ(ClipMeta::load(clip), meta) << call.name.toStdString() << ' ' << call.number;
        }
    }
}

} // namespace
} // namespace quelto
