// SPDX-License-Identifier: GPL-3.0-or-later
// The library on real queues, while the test changes the folder like another program.
#include "base/tasks/MainQueue.h"
#include "base/tasks/SerialQueue.h"
#include "library/clips/ClipLibrary.h"
#include "tests/library/clips/RecordingTrash.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class FollowedFolderTest : public testing::Test {
protected:
    void SetUp() override { start(); }

    void start()
    {
        settings.setSaveFolder(folder.filePath(QStringLiteral("clips")));
        library = std::make_unique<ClipLibrary>(
            ClipLibrary::Dependencies{.settings = settings, .trash = trash, .main = main, .work = work});
        QObject::connect(library.get(), &ClipLibrary::clipsChanged, [this] { ++changes; });
        ASSERT_TRUE(isSoon([this] { return library->isLoaded(); }));
        changes = 0;
    }

    QString path(const QString& name) const { return QDir(settings.saveFolder()).filePath(name); }

    static void write(const QString& path, const QByteArray& content = "clip")
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    static void processEventsFor(std::chrono::milliseconds duration)
    {
        QElapsedTimer timer;
        timer.start();
        while (!timer.hasExpired(duration.count())) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            ::usleep(1000);
        }
    }

    /// Waits up to a second, the longest time that a change may stay unnoticed. Counts passes instead of wall-clock
    /// time, so that a stalled machine does not shorten it.
    static bool isSoon(const std::function<bool()>& predicate)
    {
        for (int pass = 0; pass < 200 && !predicate(); ++pass) {
            processEventsFor(5ms);
        }
        // The machine may have stalled during the last pass.
        QCoreApplication::processEvents();
        return predicate();
    }

    bool listsSoon(const QStringList& names) const
    {
        return isSoon([&] {
            QStringList shown;
            for (const auto& clip : library->clips()) {
                shown.append(QFileInfo(clip.path).fileName());
            }
            shown.sort();
            return shown == names;
        });
    }

    int argumentCount = 0;
    QCoreApplication application{argumentCount, nullptr};
    QTemporaryDir folder;
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
    test::RecordingTrash trash;
    MainQueue main;
    std::unique_ptr<ClipLibrary> library;
    SerialQueue work{QStringLiteral("quelto.library")};
    int changes = 0;
};

const auto A = QStringLiteral("a.mp4");
const auto B = QStringLiteral("b.mp4");

TEST_F(FollowedFolderTest, ListsCreatedMovedAndRemovedClips)
{
    write(path(A));
    EXPECT_TRUE(listsSoon({A}));
    ASSERT_TRUE(QFile::rename(path(A), path(B)));
    EXPECT_TRUE(listsSoon({B}));
    ASSERT_TRUE(QFile::remove(path(B)));
    EXPECT_TRUE(listsSoon({}));
}

TEST_F(FollowedFolderTest, BurstCausesOneReload)
{
    for (int i = 0; i < 50; ++i) {
        for (int j = 0; j < 100; ++j) {
            write(path(QStringLiteral("%1-%2.mp4").arg(i).arg(j)), {});
        }
        processEventsFor(10ms);
    }
    EXPECT_TRUE(isSoon([this] { return library->clips().size() == 5000; }));
    processEventsFor(600ms);
    EXPECT_EQ(changes, 1);
}

TEST_F(FollowedFolderTest, LongCopyShowsItsFullSizeWhenComplete)
{
    QFile copy(path(A));
    ASSERT_TRUE(copy.open(QIODevice::WriteOnly));
    for (int i = 0; i < 100; ++i) {
        copy.write(QByteArray(1000, 'x'));
        copy.flush();
        processEventsFor(10ms);
    }
    EXPECT_EQ(library->clips().size(), 1) << "it is listed while it is being written";
    EXPECT_LE(changes, 1);
    copy.close();
    EXPECT_TRUE(isSoon([this] { return library->clips().first().size == 100'000; }));
}

TEST_F(FollowedFolderTest, RepeatedWritesDoNotPostponeTheReloadForever)
{
    write(path(A));
    EXPECT_TRUE(listsSoon({A}));
    changes = 0;
    bool hasGrown = false;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 60; ++i) {
        write(path(A), QByteArray(100 + i, 'x'));
        processEventsFor(20ms);
        hasGrown |= library->clips().first().size > 100;
    }
    EXPECT_TRUE(hasGrown);
    EXPECT_LE(changes, timer.elapsed() / 400 + 1) << "at most one per debounce time";
}

TEST_F(FollowedFolderTest, FollowsAFolderThatWasRemovedAndRecreated)
{
    write(path(A));
    EXPECT_TRUE(listsSoon({A}));
    ASSERT_TRUE(QDir(settings.saveFolder()).removeRecursively());
    EXPECT_TRUE(listsSoon({}));
    EXPECT_TRUE(isSoon([this] { return QDir(settings.saveFolder()).exists(); }));
    processEventsFor(100ms);
    write(path(B));
    EXPECT_TRUE(listsSoon({B}));
}

TEST_F(FollowedFolderTest, FollowsThePathNotTheRenamedFolder)
{
    const auto elsewhere = folder.filePath(QStringLiteral("elsewhere"));
    write(path(A));
    EXPECT_TRUE(listsSoon({A}));
    ASSERT_TRUE(QDir().rename(settings.saveFolder(), elsewhere));
    EXPECT_TRUE(listsSoon({}));
    ASSERT_TRUE(QDir(settings.saveFolder()).removeRecursively());
    ASSERT_TRUE(QDir().rename(elsewhere, settings.saveFolder()));
    EXPECT_TRUE(listsSoon({A}));
    write(path(B));
    EXPECT_TRUE(listsSoon({A, B}));
}

TEST_F(FollowedFolderTest, WatchesOneFolderAtATime)
{
    const auto openFiles = [] { return QDir(QStringLiteral("/proc/self/fd")).count(); };
    const auto before = openFiles();
    const auto first = path(A);
    for (int i = 0; i < 20; ++i) {
        settings.setSaveFolder(folder.filePath(QString::number(i)));
        ASSERT_TRUE(isSoon([this] { return QDir(settings.saveFolder()).exists(); }));
        processEventsFor(10ms);
    }
    EXPECT_TRUE(isSoon([&] { return openFiles() == before; }));
    write(path(A));
    EXPECT_TRUE(listsSoon({A}));
    changes = 0;
    write(first);
    processEventsFor(600ms);
    EXPECT_EQ(changes, 0);
}

TEST_F(FollowedFolderTest, FileAtTheFoldersPathCountsAsEmptyFolderUntilRemoved)
{
    ASSERT_TRUE(QDir(settings.saveFolder()).removeRecursively());
    write(settings.saveFolder());
    processEventsFor(600ms);
    EXPECT_TRUE(library->clips().isEmpty());
    ASSERT_TRUE(QFile::remove(settings.saveFolder()));
    ASSERT_TRUE(isSoon([this] { return QDir(settings.saveFolder()).exists(); }));
    write(path(A));
    EXPECT_TRUE(listsSoon({A}));
}

/// Runs as a user to whom permissions apply, also if the tests run as root.
class ForbiddenFolderTest : public FollowedFolderTest {
protected:
    void SetUp() override
    {
        constexpr uid_t UnprivilegedUser = 65534;
        if (::geteuid() == 0) {
            QFile(folder.path()).setPermissions(QFile::Permissions(0x7777));
            ASSERT_EQ(::seteuid(UnprivilegedUser), 0);
            hasSwitchedUser = true;
        }
        start();
    }

    void TearDown() override
    {
        permit(true);
        if (hasSwitchedUser) {
            ASSERT_EQ(::seteuid(0), 0);
        }
    }

    void permit(bool isPermitted) const
    {
        QFile(settings.saveFolder())
            .setPermissions(isPermitted ? QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                        : QFile::Permissions());
    }

    bool hasSwitchedUser = false;
};

TEST_F(ForbiddenFolderTest, IsEmptyUntilItIsReadableAgain)
{
    write(path(A));
    EXPECT_TRUE(listsSoon({A}));
    permit(false);
    EXPECT_TRUE(listsSoon({}));
    permit(true);
    EXPECT_TRUE(listsSoon({A}));
}

TEST_F(ForbiddenFolderTest, IsFollowedOnceItIsReadable)
{
    write(path(A));
    permit(false);
    const auto forbidden = settings.saveFolder();
    settings.setSaveFolder(folder.filePath(QStringLiteral("other")));
    processEventsFor(100ms);
    settings.setSaveFolder(forbidden);
    processEventsFor(600ms);
    EXPECT_TRUE(library->clips().isEmpty());
    permit(true);
    EXPECT_TRUE(listsSoon({A}));
    write(path(B));
    EXPECT_TRUE(listsSoon({A, B}));
}

TEST_F(ForbiddenFolderTest, ListsNamesIfItCannotBeEntered)
{
    write(path(A));
    EXPECT_TRUE(listsSoon({A}));
    const auto size = library->clips().first().size;
    QFile(settings.saveFolder()).setPermissions(QFile::ReadOwner);
    EXPECT_TRUE(isSoon([&] { return library->clips().size() == 1 && library->clips().first().size != size; }));
    EXPECT_EQ(library->clips().first().size, 0);
}

/// Mounts and unmounts volumes in a mount namespace of its own.
class MountedFolderTest : public FollowedFolderTest {
protected:
    void SetUp() override
    {
        if (::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            GTEST_SKIP() << "mounting is not permitted";
        }
        if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
            GTEST_SKIP() << "mounting is not permitted";
        }
        // The thread of `work` still belongs to the old namespace.
        namespaceWork = std::make_unique<SerialQueue>(QStringLiteral("quelto.library"));
        mountPoint = folder.filePath(QStringLiteral("volume"));
        QDir().mkpath(mountPoint);
        settings.setSaveFolder(mountPoint + QStringLiteral("/clips"));
        library = std::make_unique<ClipLibrary>(
            ClipLibrary::Dependencies{.settings = settings, .trash = trash, .main = main, .work = *namespaceWork});
        ASSERT_TRUE(isSoon([this] { return library->isLoaded(); }));
    }

    void TearDown() override
    {
        library.reset();
        namespaceWork.reset();
        unmount();
    }

    void mountVolume() const
    {
        ASSERT_EQ(::mount("none", QFile::encodeName(mountPoint).constData(), "tmpfs", 0, nullptr), 0);
    }

    void unmount() const { ::umount2(QFile::encodeName(mountPoint).constData(), MNT_DETACH); }

    QString mountPoint;
    std::unique_ptr<SerialQueue> namespaceWork;
};

TEST_F(MountedFolderTest, VolumeMountedOverTheFolderIsListedAndFollowed)
{
    write(path(A));
    EXPECT_TRUE(listsSoon({A}));
    mountVolume();
    EXPECT_TRUE(listsSoon({}));
    write(path(B));
    EXPECT_TRUE(listsSoon({B}));
    unmount();
    EXPECT_TRUE(listsSoon({A}));
    ASSERT_TRUE(QFile::remove(path(A)));
    EXPECT_TRUE(listsSoon({}));
}

TEST_F(MountedFolderTest, RemountedVolumeListsItsClipsAgain)
{
    const auto image = folder.filePath(QStringLiteral("disk"));
    ASSERT_TRUE(QDir().mkpath(image + QStringLiteral("/clips")));
    write(image + QStringLiteral("/clips/a.mp4"));
    const auto plugIn = [&] {
        ASSERT_EQ(::mount(QFile::encodeName(image).constData(), QFile::encodeName(mountPoint).constData(), nullptr,
                          MS_BIND, nullptr),
                  0);
    };
    plugIn();
    EXPECT_TRUE(listsSoon({A}));
    unmount();
    EXPECT_TRUE(listsSoon({}));
    plugIn();
    EXPECT_TRUE(listsSoon({A}));
    write(path(B));
    EXPECT_TRUE(listsSoon({A, B}));
}

} // namespace
} // namespace quelto
