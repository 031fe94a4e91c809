// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopLoginItem.h"

#include "ChildProcess.h"

#include "base/language/L10n.h"
#include "tests/base/disk/SmallDisk.h"
#include "tests/base/files/UnprivilegedUser.h"
#include "tests/moments/watcher/WaitFor.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quelto {
namespace {

class FreedesktopLoginItemTest : public testing::Test {
protected:
    using Result = LoginItem::Result;

    void SetUp() override { L10n::use(QStringLiteral("en")); }
    void TearDown() override { L10n::use(QStringLiteral("tr")); }

    FreedesktopLoginItem makeItem(const QString& config) const
    {
        return FreedesktopLoginItem(
            {.configFolders = {config, path("system")}, .program = "/bin/sh", .desktops = {"KDE"}});
    }
    Result read() { return read(path("config")); }
    Result read(const QString& config)
    {
        auto item = makeItem(config);
        return answer([&](auto reply) { item.read(std::move(reply)); });
    }
    Result setEnabled(bool isEnabled) { return setEnabled(isEnabled, path("config")); }
    Result setEnabled(bool isEnabled, const QString& config)
    {
        auto item = makeItem(config);
        return answer([&](auto reply) { item.setEnabled(isEnabled, std::move(reply)); });
    }
    template <typename Request> static Result answer(const Request& request)
    {
        std::optional<Result> result;
        request([&](const Result& each) { result = each; });
        EXPECT_FALSE(result) << "a reply arrives from the event loop";
        EXPECT_TRUE(test::waitFor([&] { return result.has_value(); }));
        return result.value_or(Result{});
    }

    QString path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    QString entry() const { return path("config/autostart/app.quelto.Quelto.desktop"); }
    static void write(const QString& path, const QByteArray& contents)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(contents);
    }
    static QByteArray contentsOf(const QString& path)
    {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QStringList filesIn(const QString& folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};
    QTemporaryDir m_folder;
};

TEST_F(FreedesktopLoginItemTest, SwitchesOnAndOff)
{
    EXPECT_FALSE(read().isEnabled);
    EXPECT_FALSE(setEnabled(false).isEnabled);
    EXPECT_EQ(filesIn(m_folder.path()), QStringList()) << "switching off what is off writes nothing";
    const auto on = setEnabled(true);
    EXPECT_TRUE(on.isEnabled);
    EXPECT_EQ(on.failure, QString());
    EXPECT_TRUE(read().isEnabled);
    EXPECT_EQ(contentsOf(entry()),
              "[Desktop Entry]\nName=Quelto\nIcon=app.quelto.Quelto\nType=Application\nExec=/bin/sh\n");
    EXPECT_EQ(filesIn(path("config/autostart")), QStringList{QStringLiteral("app.quelto.Quelto.desktop")});
    EXPECT_FALSE(setEnabled(false).isEnabled);
    EXPECT_FALSE(read().isEnabled);
    EXPECT_TRUE(setEnabled(true).isEnabled);
}

TEST_F(FreedesktopLoginItemTest, AnEntryOfTheSystemCountsUntilTheUserHasOne)
{
    write(path("system/autostart/app.quelto.Quelto.desktop"),
          "[Desktop Entry]\nType=Application\nName=Quelto\nExec=/bin/sh\n");
    EXPECT_TRUE(read().isEnabled);
    EXPECT_FALSE(setEnabled(false).isEnabled);
    EXPECT_TRUE(contentsOf(entry()).contains("Hidden=true"));
    EXPECT_TRUE(setEnabled(true).isEnabled);
}

TEST_F(FreedesktopLoginItemTest, ReplacesTheFileThatALinkPointsTo)
{
    write(path("dotfiles/quelto"), "[Desktop Entry]\nX-Mine=1\n");
    QDir().mkpath(path("config/autostart"));
    ASSERT_TRUE(QFile::link(path("dotfiles/quelto"), entry()));
    EXPECT_TRUE(setEnabled(true).isEnabled);
    EXPECT_TRUE(QFileInfo(entry()).isSymLink());
    EXPECT_TRUE(contentsOf(path("dotfiles/quelto")).contains("X-Mine=1\n"));
    EXPECT_TRUE(contentsOf(path("dotfiles/quelto")).contains("Exec=/bin/sh\n"));
}

TEST_F(FreedesktopLoginItemTest, KeepsDamagedAndOversizedFiles)
{
    const auto on = QByteArray("[Desktop Entry]\nType=Application\nName=Quelto\nExec=/bin/sh\n");
    const auto damaged = on + "no key\nX-Mine=1\n";
    write(entry(), damaged);
    EXPECT_FALSE(setEnabled(false).isEnabled);
    EXPECT_EQ(contentsOf(entry() + QStringLiteral(".damaged")), damaged);
    EXPECT_TRUE(setEnabled(true).isEnabled);
    EXPECT_EQ(filesIn(path("config/autostart")).size(), 2) << "the new file is not damaged";
    const auto oversized = on + QByteArray("X-Mine=value\n").repeated(100'000) + "X-Last=1\n";
    write(entry(), oversized);
    EXPECT_TRUE(setEnabled(true).isEnabled);
    EXPECT_EQ(contentsOf(entry() + QStringLiteral(".damaged-2")), oversized);
    EXPECT_EQ(contentsOf(entry() + QStringLiteral(".damaged")), damaged);
    EXPECT_EQ(filesIn(path("config/autostart")).size(), 3);
}

TEST_F(FreedesktopLoginItemTest, KeepsADamagedFileThatALinkPointsTo)
{
    write(path("dotfiles/quelto"), "garbage");
    QDir().mkpath(path("config/autostart"));
    ASSERT_TRUE(QFile::link(path("dotfiles/quelto"), entry()));
    EXPECT_TRUE(setEnabled(true).isEnabled);
    EXPECT_TRUE(QFileInfo(entry()).isSymLink());
    EXPECT_EQ(contentsOf(path("dotfiles/quelto.damaged")), "garbage");
}

TEST_F(FreedesktopLoginItemTest, LeavesADamagedFileOfTheSystemAlone)
{
    write(path("system/autostart/app.quelto.Quelto.desktop"), "garbage");
    EXPECT_TRUE(setEnabled(true).isEnabled);
    EXPECT_EQ(filesIn(path("config/autostart")), QStringList{QStringLiteral("app.quelto.Quelto.desktop")});
    EXPECT_EQ(filesIn(path("system/autostart")), QStringList{QStringLiteral("app.quelto.Quelto.desktop")});
}

TEST_F(FreedesktopLoginItemTest, KeepsAFileThatItMayNotRead)
{
    write(entry(), "[Desktop Entry]\nX-Mine=1\n");
    ASSERT_EQ(::chmod(QFile::encodeName(entry()).constData(), 0200), 0);
    for (const auto* folder : {"", "config", "config/autostart"}) {
        ASSERT_EQ(::chmod(QFile::encodeName(path(folder)).constData(), 0777), 0);
    }
    {
        const test::UnprivilegedUser user;
        EXPECT_TRUE(setEnabled(true).isEnabled);
    }
    EXPECT_EQ(contentsOf(entry() + QStringLiteral(".damaged")), "[Desktop Entry]\nX-Mine=1\n");
}

TEST_F(FreedesktopLoginItemTest, DoesNotReadAPipe)
{
    QDir().mkpath(path("config/autostart"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(entry()).constData(), 0600), 0);
    EXPECT_FALSE(read().isEnabled);
}

TEST_F(FreedesktopLoginItemTest, TellsOfAFileInPlaceOfTheFolder)
{
    write(path("config/autostart"), "a file");
    const auto inFolder = setEnabled(true);
    EXPECT_FALSE(inFolder.isEnabled);
    EXPECT_EQ(inFolder.failure,
              path("config/autostart") + QStringLiteral(" is a file, not a folder. Move the file away and try again."));
    EXPECT_EQ(contentsOf(path("config/autostart")), "a file");
    write(path("file"), "a file");
    EXPECT_EQ(setEnabled(true, path("file/config")).failure,
              path("file") + QStringLiteral(" is a file, not a folder. Move the file away and try again."));
    QDir().mkpath(path("other/autostart/app.quelto.Quelto.desktop"));
    EXPECT_NE(setEnabled(true, path("other")).failure, QString());
    EXPECT_EQ(filesIn(path("other/autostart")), QStringList{QStringLiteral("app.quelto.Quelto.desktop")});
}

TEST_F(FreedesktopLoginItemTest, TellsOfAFolderWithoutPermission)
{
    QDir().mkpath(path("config/autostart"));
    write(entry(), "[Desktop Entry]\nX-Mine=1\n");
    ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(path("config/autostart")).constData(), 0555), 0);
    const auto result = [this] {
        const test::UnprivilegedUser user;
        return setEnabled(true);
    }();
    EXPECT_FALSE(result.isEnabled);
    EXPECT_EQ(result.failure,
              QStringLiteral("Cannot write to the folder ") + path("config/autostart") +
                  QStringLiteral(". Correct its permissions and try again."));
    EXPECT_EQ(contentsOf(entry()), "[Desktop Entry]\nX-Mine=1\n");
}

TEST_F(FreedesktopLoginItemTest, TellsOfAReadOnlyAndOfAFullDisk)
{
    test::SmallDisk disk(64 * 1024);
    if (!disk.isMounted()) {
        GTEST_SKIP() << "needs root to mount a disk";
    }
    ASSERT_TRUE(setEnabled(true, disk.path()).isEnabled);
    const auto path = disk.path() + QStringLiteral("/autostart/app.quelto.Quelto.desktop");
    const auto before = contentsOf(path);
    QFile filler(disk.path() + QStringLiteral("/filler"));
    ASSERT_TRUE(filler.open(QFile::WriteOnly | QFile::Unbuffered));
    while (filler.write(QByteArray(4096, 'x')) > 0) { }
    filler.close();
    const auto full = setEnabled(false, disk.path());
    EXPECT_TRUE(full.isEnabled);
    EXPECT_EQ(full.failure, QStringLiteral("The disk of your home folder is full. Free some space and try again."));
    EXPECT_EQ(contentsOf(path), before);
    EXPECT_EQ(filesIn(disk.path() + QStringLiteral("/autostart")).size(), 1);
    ASSERT_TRUE(disk.makeReadOnly());
    const auto readOnly = setEnabled(false, disk.path());
    EXPECT_TRUE(readOnly.isEnabled);
    EXPECT_TRUE(readOnly.failure.startsWith(QStringLiteral("Cannot write to the folder ")))
        << readOnly.failure.toStdString();
    EXPECT_EQ(contentsOf(path), before);
}

TEST_F(FreedesktopLoginItemTest, ADesktopStartsTheProgramWhateverItsPathIs)
{
    for (const auto* name :
         {"plain", "a b", "50% %u %%", "quote\" $HOME `id` \\ ' & ; ~ # * ? ( ) > < |", "ö \U0001F3C6"}) {
        const auto program = path("programs/") + QString::fromUtf8(name) + QStringLiteral("/quelto");
        write(program, "#!/bin/sh\necho \"$0|$#\" >\"$0.started\"\n");
        QFile(program).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const auto config = path("config-") + QString::number(qHash(QByteArray(name)));
        {
            FreedesktopLoginItem item(
                {.configFolders = {config}, .program = QFile::encodeName(program), .desktops = {}});
            EXPECT_TRUE(answer([&](auto reply) { item.setEnabled(true, std::move(reply)); }).isEnabled) << name;
        }
        pipewire::ChildProcess launcher(
            QStringLiteral("gio"),
            {QStringLiteral("launch"), config + QStringLiteral("/autostart/app.quelto.Quelto.desktop")});
        EXPECT_EQ(launcher.wait(), 0) << "the program gio is needed";
        EXPECT_TRUE(test::waitFor([&] { return QFileInfo(program + QStringLiteral(".started")).size() > 0; })) << name;
        EXPECT_EQ(contentsOf(program + QStringLiteral(".started")), QFile::encodeName(program) + "|0\n");
    }
}

TEST_F(FreedesktopLoginItemTest, FinishesAChangeAndRepliesNoMoreWhenItIsDestroyed)
{
    bool hasReplied = false;
    {
        auto item = makeItem(path("config"));
        item.setEnabled(true, [&](const Result&) { hasReplied = true; });
    }
    EXPECT_TRUE(QFile::exists(entry()));
    test::waitFor([] { return false; }, std::chrono::milliseconds(50));
    EXPECT_FALSE(hasReplied);
}

TEST_F(FreedesktopLoginItemTest, StartsThisProgram)
{
    const auto options = FreedesktopLoginItem::ofThisProgram();
    EXPECT_EQ(options.program, QFile::encodeName(QCoreApplication::applicationFilePath()));
    EXPECT_FALSE(options.configFolders.isEmpty());
}

TEST_F(FreedesktopLoginItemTest, StartsTheAppImageThatHasThisProgram)
{
    const auto program = QFile::encodeName(QCoreApplication::applicationFilePath());
    const auto inFolder = QFile::encodeName(QCoreApplication::applicationDirPath());
    const auto image = QFile::encodeName(path("Quelto 1.0.AppImage"));
    write(path("Quelto 1.0.AppImage"), "an image");
    const auto programIn = [](const QByteArray& appImage, const QByteArray& appDir) {
        qputenv("APPIMAGE", appImage);
        qputenv("APPDIR", appDir);
        return FreedesktopLoginItem::ofThisProgram().program;
    };
    EXPECT_EQ(programIn(image, inFolder), image);
    EXPECT_EQ(programIn(image, inFolder + "/../"), image);
    const auto elsewhere = QFile::encodeName(m_folder.path());
    for (const QByteArray& folder : {elsewhere, inFolder + "/none", program.chopped(1), QByteArray()}) {
        EXPECT_EQ(programIn(image, folder), program) << folder.constData();
    }
    const auto current = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_folder.path()));
    for (const QByteArray& file : {QByteArray("Quelto 1.0.AppImage"), elsewhere, image + "2", QByteArray()}) {
        EXPECT_EQ(programIn(file, inFolder), program) << file.constData();
    }
    QDir::setCurrent(current);
    qunsetenv("APPIMAGE");
    qunsetenv("APPDIR");
}

} // namespace
} // namespace quelto
