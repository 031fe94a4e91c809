// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/RestoreToken.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quelto {
namespace {

class RestoreTokenTest : public testing::Test {
protected:
    /// Destruction waits until the file is written.
    void save(const QString& text) const { RestoreToken(path).save(text); }
    QString load() const { return RestoreToken(path).load(); }
    void write(const QByteArray& content) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    QByteArray content() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("a/b/token"));
};

const auto Uuid = QStringLiteral("2f0d9f7c-5b0e-4f5e-9f39-2b8d8a0e9c11");

TEST_F(RestoreTokenTest, IsKeptForTheNextStart)
{
    EXPECT_EQ(load(), QString());
    save(Uuid);
    EXPECT_EQ(load(), Uuid);
    save(QStringLiteral("next"));
    EXPECT_EQ(load(), QStringLiteral("next"));
    save({});
    EXPECT_EQ(load(), QString());
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(RestoreTokenTest, OnlyTheUserCanReadTheFile)
{
    const auto before = ::umask(0);
    save(Uuid);
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ReadOther);
    save(QStringLiteral("next"));
    ::umask(before);
    struct stat info = {};
    ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777U, 0600U);
}

TEST_F(RestoreTokenTest, IgnoresContentThatIsNoToken)
{
    save(Uuid);
    for (const auto& content : QByteArrayList{"", "two words", QByteArray("nul\0in it", 9), "\xff\xfe", "line\nline",
                                              QByteArray(1025, 'x'), QByteArray(1'000'000, 'x')}) {
        write(content);
        EXPECT_EQ(load(), QString()) << content.left(20).toStdString();
    }
    write(Uuid.toLatin1() + "\n");
    EXPECT_EQ(load(), Uuid) << "an editor adds a line end";
    write(QByteArray(1024, 'x'));
    EXPECT_EQ(load().size(), 1024);
}

TEST_F(RestoreTokenTest, IgnoresWhatIsNoFile)
{
    ASSERT_TRUE(QDir().mkpath(path));
    EXPECT_EQ(load(), QString());
    save(Uuid);
    EXPECT_EQ(load(), QString());
    ASSERT_TRUE(QDir().rmdir(path));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    EXPECT_EQ(load(), QString()) << "must not block either";
}

TEST_F(RestoreTokenTest, StoresNoTextThatIsNoToken)
{
    for (const auto& text : {QStringLiteral("ş"), QStringLiteral("two\nlines"), QString(1025, u'x')}) {
        save(Uuid);
        save(text);
        EXPECT_EQ(content(), QByteArray()) << "the old one is used up";
    }
}

TEST_F(RestoreTokenTest, WithoutAFileItIsKeptUntilTheEnd)
{
    // A file in place of the folder stops also a user who may write anywhere.
    QFile file(folder.filePath(QStringLiteral("a")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    RestoreToken token(path);
    token.save(Uuid);
    EXPECT_EQ(token.load(), Uuid);
    EXPECT_EQ(load(), QString());
}

TEST_F(RestoreTokenTest, AFileThatCannotBeReadOrReplacedIsNoError)
{
    // A folder in place of the file stops also a user who may read and write everything.
    ASSERT_TRUE(QDir().mkpath(path + QStringLiteral("/c")));
    RestoreToken token(path);
    EXPECT_EQ(token.load(), QString());
    token.save(Uuid);
    EXPECT_EQ(token.load(), Uuid);
    EXPECT_EQ(load(), QString());
}

TEST_F(RestoreTokenTest, TheFileIsInTheFolderForStates)
{
    const auto before = qgetenv("XDG_STATE_HOME");
    qputenv("XDG_STATE_HOME", "/states");
    EXPECT_EQ(RestoreToken::defaultPath(), QStringLiteral("/states/Quelto/screen.token"));
    qputenv("XDG_STATE_HOME", "relative");
    EXPECT_EQ(RestoreToken::defaultPath(), QDir::homePath() + QStringLiteral("/.local/state/Quelto/screen.token"));
    qunsetenv("XDG_STATE_HOME");
    EXPECT_EQ(RestoreToken::defaultPath(), QDir::homePath() + QStringLiteral("/.local/state/Quelto/screen.token"));
    if (!before.isEmpty()) {
        qputenv("XDG_STATE_HOME", before);
    }
}

} // namespace
} // namespace quelto
