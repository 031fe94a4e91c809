// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/matches/MatchStore.h"

#include "base/files/FileName.h"

#include "tests/base/files/UnprivilegedUser.h"
#include "tests/base/language/TimeZone.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

namespace quelto {
namespace {

const char* const CompleteMatch = R"([{"id":"8F14E45F-CEEA-467F-9575-1B2A3C4D5E6F","game":"Dota 2","hero":"Zeus",
    "start":800000000.5,"end":800001800,"clips":["/a.mp4","/b.mp4"],"montage":"/m.mp4"}])";

MatchSession makeMatch(const QString& game = QStringLiteral("Dota 2"))
{
    return {.id = QUuid::createUuid(),
            .game = game,
            .hero = QStringLiteral("Kez’iä"),
            .start = QDateTime::fromMSecsSinceEpoch(1'790'000'000'123),
            .end = QDateTime::fromMSecsSinceEpoch(1'790'000'900'456),
            .clips = {QStringLiteral("/clips/Ağ ünü.mp4")},
            .montage = std::nullopt};
}

TEST(MatchStore, ReadsEveryField)
{
    const auto matches = decodedMatches(CompleteMatch);
    ASSERT_TRUE(matches);
    ASSERT_EQ(matches->size(), 1);
    const auto& match = matches->first();
    EXPECT_EQ(matchIdText(match.id), QStringLiteral("8F14E45F-CEEA-467F-9575-1B2A3C4D5E6F"));
    EXPECT_EQ(match.game, QStringLiteral("Dota 2"));
    EXPECT_EQ(match.hero, QStringLiteral("Zeus"));
    // 800,000,000.5 s after 2001-01-01 00:00 UTC.
    EXPECT_EQ(match.start.toMSecsSinceEpoch(), 978'307'200'000 + 800'000'000'500);
    EXPECT_EQ(match.end->toMSecsSinceEpoch(), 978'307'200'000 + 800'001'800'000);
    EXPECT_EQ(match.clips.join(u' '), QStringLiteral("/a.mp4 /b.mp4"));
    EXPECT_EQ(match.montage, QStringLiteral("/m.mp4"));
}

TEST(MatchStore, OmitsKeysOfAbsentFields)
{
    auto match = makeMatch();
    match.end = std::nullopt;
    const auto object = QJsonDocument::fromJson(encodedMatches({match})).array().first().toObject();
    EXPECT_EQ(object.keys().join(u' '), QStringLiteral("clips game hero id start"));
    EXPECT_NEAR(object.value(QStringLiteral("start")).toDouble(), 1'790'000'000.123 - 978'307'200, 1e-6);
    EXPECT_EQ(object.value(QStringLiteral("id")).toString(), match.id.toString(QUuid::WithoutBraces).toUpper());
}

TEST(MatchStore, RoundTripPreservesAllFields)
{
    auto withMontage = makeMatch();
    withMontage.montage = QStringLiteral("/clips/montage.mp4");
    withMontage.trashed = {QStringLiteral("/clips/c.mp4"), QStringLiteral("/clips/d.mp4")};
    // The bytes of the name are no UTF-8.
    withMontage.clips.append(decodeFileName("/clips/\xff.mp4"));
    const QList matches{withMontage, makeMatch(QStringLiteral("League of Legends"))};
    EXPECT_EQ(decodedMatches(encodedMatches(matches)), matches);
}

struct InvalidStore {
    const char* name;
    const char* json;
};

class InvalidStoreTest : public testing::TestWithParam<InvalidStore> { };

TEST_P(InvalidStoreTest, MakesTheWholeFileUnreadable)
{
    EXPECT_EQ(decodedMatches(GetParam().json), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    MatchStore, InvalidStoreTest,
    testing::Values(
        InvalidStore{"NotJson", "["}, InvalidStore{"NotAnArray", "{}"}, InvalidStore{"NotAnObject", "[7]"},
        InvalidStore{"MissingId", R"([{"game":"g","hero":"","start":1,"clips":[]}])"},
        InvalidStore{"InvalidId", R"([{"id":"7","game":"g","hero":"","start":1,"clips":[]}])"},
        InvalidStore{"MissingClips",
                     R"([{"id":"8F14E45F-CEEA-467F-9575-1B2A3C4D5E6F","game":"g","hero":"","start":1}])"},
        InvalidStore{"ClipOfWrongType",
                     R"([{"id":"8F14E45F-CEEA-467F-9575-1B2A3C4D5E6F","game":"g","hero":"","start":1,"clips":[1]}])"},
        InvalidStore{
            "EndOfWrongType",
            R"([{"id":"8F14E45F-CEEA-467F-9575-1B2A3C4D5E6F","game":"g","hero":"","start":1,"clips":[],"end":"now"}])"},
        InvalidStore{
            "StartOutOfRange",
            R"([{"id":"8F14E45F-CEEA-467F-9575-1B2A3C4D5E6F","game":"g","hero":"","start":1e300,"clips":[]}])"},
        InvalidStore{
            "OneInvalidAmongValid",
            R"([{"id":"8F14E45F-CEEA-467F-9575-1B2A3C4D5E6F","game":"g","hero":"","start":1,"clips":[]},{}])"}),
    [](const auto& row) { return row.param.name; });

TEST(MatchStore, DatesAreInstants)
{
    const test::TimeZone start("UTC0");
    const auto matches = decodedMatches(CompleteMatch);
    ASSERT_TRUE(matches);
    const auto json = encodedMatches(*matches);
    const test::TimeZone east("UTC-3");
    EXPECT_EQ(encodedMatches(*matches), json);
}

TEST(MatchStore, NullCountsAsAbsent)
{
    EXPECT_TRUE(decodedMatches(R"([{"id":"8f14e45f-ceea-467f-9575-1b2a3c4d5e6f","game":"g","hero":"","start":1,
                                    "clips":[],"end":null,"montage":null}])"));
}

class MatchStoreFile : public testing::Test {
protected:
    void write(const QByteArray& content) const
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// For a test as an unprivileged user.
    void allowEveryoneToChange() const
    {
        auto each = QFileInfo(path).path();
        for (; each != QDir::tempPath(); each = QFileInfo(each).path()) {
            ASSERT_EQ(::chmod(QFile::encodeName(each).constData(), 0777), 0);
        }
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("deep/er/matches.json"));
    MatchStore store{path};
};

TEST_F(MatchStoreFile, MissingFileLoadsAsEmpty)
{
    EXPECT_TRUE(store.load().isEmpty());
}

TEST_F(MatchStoreFile, SaveCreatesTheFolderAndReplacesTheFile)
{
    store.save({makeMatch(), makeMatch()});
    const auto newer = makeMatch();
    store.save({newer});
    EXPECT_EQ(store.load(), QList{newer});
}

TEST_F(MatchStoreFile, SaveKeepsTheSixtyNewest)
{
    QList<MatchSession> matches;
    for (int i = 0; i < 61; ++i) {
        matches.append(makeMatch());
    }
    store.save(matches);
    EXPECT_EQ(store.load(), matches.first(60));
}

TEST_F(MatchStoreFile, FileWithInvalidContentIsSetAside)
{
    write("[{]");
    EXPECT_TRUE(store.load().isEmpty());
    store.save({makeMatch()});
    EXPECT_EQ(contentOf(path + QStringLiteral(".unreadable")), "[{]");
}

TEST_F(MatchStoreFile, FilesSetAsideEarlierAreKept)
{
    for (const auto* content : {"first", "second", "third"}) {
        write(content);
        EXPECT_TRUE(MatchStore(path).load().isEmpty());
    }
    EXPECT_EQ(contentOf(path + QStringLiteral(".unreadable")), "first");
    EXPECT_EQ(contentOf(path + QStringLiteral(".unreadable-2")), "second");
    EXPECT_EQ(contentOf(path + QStringLiteral(".unreadable-3")), "third");
}

TEST_F(MatchStoreFile, FileThatCannotBeOpenedIsSetAside)
{
    write(CompleteMatch);
    allowEveryoneToChange();
    QFile::setPermissions(path, QFileDevice::WriteOwner);
    {
        const test::UnprivilegedUser user;
        EXPECT_TRUE(store.load().isEmpty());
        store.save({makeMatch()});
        EXPECT_EQ(store.load().size(), 1);
    }
    EXPECT_EQ(contentOf(path + QStringLiteral(".unreadable")), CompleteMatch);
}

TEST_F(MatchStoreFile, FileThatCanNeitherBeOpenedNorRenamedIsLeftAlone)
{
    write(CompleteMatch);
    allowEveryoneToChange();
    ASSERT_EQ(::chmod(QFile::encodeName(QFileInfo(path).path()).constData(), 0555), 0);
    QFile::setPermissions(path, QFileDevice::WriteOwner);
    {
        const test::UnprivilegedUser user;
        EXPECT_TRUE(store.load().isEmpty());
    }
    // Writing would succeed now.
    store.save({makeMatch()});
    EXPECT_EQ(contentOf(path), CompleteMatch);
}

TEST_F(MatchStoreFile, PipeAndFolderAreSetAsideWithoutWaiting)
{
    QDir().mkpath(QFileInfo(path).path());
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    EXPECT_TRUE(MatchStore(path).load().isEmpty());
    QDir().mkpath(path);
    EXPECT_TRUE(store.load().isEmpty());
    const auto match = makeMatch();
    store.save({match});
    EXPECT_EQ(store.load(), QList{match});
    EXPECT_TRUE(QFileInfo(path + QStringLiteral(".unreadable-2")).isDir());
}

TEST_F(MatchStoreFile, FileBeyondTheBoundIsSetAsideUnread)
{
    // A sparse file that would take all memory.
    write("");
    ASSERT_TRUE(QFile::resize(path, qint64{1} << 40));
    EXPECT_TRUE(store.load().isEmpty());
    EXPECT_EQ(QFileInfo(path + QStringLiteral(".unreadable")).size(), qint64{1} << 40);

    auto json = QByteArray(CompleteMatch);
    write(json.append(QByteArray(MatchStore::MaxSize - json.size(), ' ')));
    EXPECT_EQ(store.load().size(), 1);
    write(json.append(' '));
    EXPECT_TRUE(store.load().isEmpty());
}

TEST_F(MatchStoreFile, FullDiskKeepsTheOldFile)
{
    const auto old = makeMatch();
    store.save({old});
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit tiny{.rlim_cur = 10, .rlim_max = before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &tiny), 0);
    store.save({makeMatch(), makeMatch()});
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(store.load(), QList{old});
}

TEST(MatchStorePath, FollowsTheEnvironment)
{
    qputenv("QUELTO_DATA_DIR", "/somewhere");
    EXPECT_EQ(MatchStore::defaultPath(), QStringLiteral("/somewhere/matches.json"));
    qunsetenv("QUELTO_DATA_DIR");
    qputenv("XDG_DATA_HOME", "/data");
    EXPECT_EQ(MatchStore::defaultPath(), QStringLiteral("/data/Quelto/matches.json"));
    qunsetenv("XDG_DATA_HOME");
}

} // namespace
} // namespace quelto
