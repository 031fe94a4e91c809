// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopFolderDialog.h"

#include "FakePortal.h"

#include "base/files/FileName.h"
#include "tests/base/disk/HangingDisk.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quelto {
namespace {

class FreedesktopFolderDialogTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QUELTO_TEST_DIR")) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
    }

    void choose(FreedesktopFolderDialog& shown, QWindow* parent = nullptr)
    {
        shown.choose({.title = QStringLiteral("Kayıt klasörü"),
                      .acceptLabel = QStringLiteral("Seç"),
                      .startFolder = folder.path(),
                      .parent = parent},
                     [this](const QString& path) { chosen.append(path); });
    }
    void chooseWithPortal(QWindow* parent = nullptr)
    {
        const auto before = portal->dialogs;
        choose(dialog, parent);
        EXPECT_EQ(portal->dialogs, before) << "choose() must not block";
        EXPECT_TRUE(QTest::qWaitFor([&] { return portal->dialogs == before + 1; }));
    }
    static QFileDialog* qtDialog()
    {
        const auto windows = QApplication::topLevelWidgets();
        const auto found = std::ranges::find_if(windows, [](const QWidget* each) {
            return qobject_cast<const QFileDialog*>(each) != nullptr && each->isVisible();
        });
        return found == windows.end() ? nullptr : qobject_cast<QFileDialog*>(*found);
    }
    static bool waitForQtDialog()
    {
        return QTest::qWaitFor([] { return qtDialog() != nullptr; });
    }

    QTemporaryDir folder;
    QStringList chosen;
    std::shared_ptr<PortalConnection> connection = std::make_shared<PortalConnection>(QDBusConnection::sessionBus());
    std::unique_ptr<FakePortal> portal = std::make_unique<FakePortal>();
    FreedesktopFolderDialog dialog{connection};
};

class FolderDialogOnHangingDiskTest : public FreedesktopFolderDialogTest {
protected:
    void SetUp() override
    {
        FreedesktopFolderDialogTest::SetUp();
        if (!IsSkipped() && !disk.isMounted()) {
            GTEST_SKIP() << "needs root and FUSE to mount a disk";
        }
    }
    // A hanging look-up would delay the dialog's destructor.
    void TearDown() override { disk.disconnect(); }

    void chooseOnDisk(QWindow* parent = nullptr)
    {
        dialog.choose({.startFolder = disk.path() + QStringLiteral("/clips"), .parent = parent},
                      [this](const QString& path) { chosen.append(path); });
    }
    QByteArray startFolder() const { return portal->options.value(QStringLiteral("current_folder")).toByteArray(); }

    test::HangingDisk disk;
};

TEST_F(FreedesktopFolderDialogTest, AsksThePortalForAFolder)
{
    chooseWithPortal();
    EXPECT_EQ(portal->title, QStringLiteral("Kayıt klasörü"));
    EXPECT_EQ(portal->parentWindow, QString());
    EXPECT_EQ(portal->options.value(QStringLiteral("directory")), true);
    EXPECT_EQ(portal->options.value(QStringLiteral("modal")), true);
    EXPECT_EQ(portal->options.value(QStringLiteral("multiple")), false);
    EXPECT_EQ(portal->options.value(QStringLiteral("accept_label")), QStringLiteral("Seç"));
    EXPECT_EQ(portal->options.value(QStringLiteral("current_folder")).toByteArray(),
              QFile::encodeName(folder.path()) + '\0');
    portal->respond(0, {QStringLiteral("file:///home/me/50%25%20%C5%9Eampiyon%20%231")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !chosen.isEmpty(); }));
    EXPECT_EQ(chosen, QStringList{QStringLiteral("/home/me/50% Şampiyon #1")});
    QTest::qWait(50);
    EXPECT_EQ(portal->closings(), 0) << "the dialog has ended by itself";
}

TEST_F(FreedesktopFolderDialogTest, KeepsNamesThatAreNotText)
{
    chooseWithPortal();
    portal->respond(0, {QStringLiteral("file:///home/%FFme%0A")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !chosen.isEmpty(); }));
    EXPECT_EQ(encodeFileName(chosen.first()), "/home/\xffme\n");
}

TEST_F(FreedesktopFolderDialogTest, StartsInTheNearestFolderThatExists)
{
    dialog.choose({.startFolder = folder.filePath(QStringLiteral("not/there"))}, [](const QString&) {});
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal->dialogs == 1; }));
    EXPECT_EQ(portal->options.value(QStringLiteral("current_folder")).toByteArray(),
              QFile::encodeName(folder.path()) + '\0');
    portal->respond(1);
    QTest::qWait(50);
    const auto name = decodeFileName(QFile::encodeName(folder.path()) + "/\xff");
    ASSERT_EQ(::mkdir(encodeFileName(name).constData(), 0700), 0);
    dialog.choose({.startFolder = name}, [](const QString&) {});
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal->dialogs == 2; }));
    EXPECT_EQ(portal->options.value(QStringLiteral("current_folder")).toByteArray(), encodeFileName(name) + '\0');
    EXPECT_EQ(::rmdir(encodeFileName(name).constData()), 0);
}

TEST_F(FolderDialogOnHangingDiskTest, StartsInTheHomeFolder)
{
    chooseOnDisk();
    choose(dialog);
    QTest::qWait(100);
    EXPECT_EQ(portal->dialogs, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal->dialogs == 1; }));
    EXPECT_EQ(startFolder(), QFile::encodeName(QDir::homePath()) + '\0');
    // The late result opens no second dialog.
    disk.disconnect();
    QTest::qWait(200);
    EXPECT_EQ(portal->dialogs, 1);
    portal->respond(0, {QStringLiteral("file:///a")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return chosen == QStringList{QStringLiteral("/a")}; }));
}

TEST_F(FolderDialogOnHangingDiskTest, OpensNothingForAWindowThatIsGone)
{
    auto window = std::make_unique<QWindow>();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    chooseOnDisk(window.get());
    window->hide();
    window->show();
    chooseOnDisk(window.get());
    window.reset();
    disk.disconnect();
    QTest::qWait(200);
    EXPECT_EQ(portal->dialogs, 0);
    choose(dialog);
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal->dialogs == 1; }));
    EXPECT_EQ(startFolder(), QFile::encodeName(folder.path()) + '\0');
    QTest::qWait(2200);
    EXPECT_EQ(portal->dialogs, 1) << "the time limits of ended dialogs open nothing";
}

TEST_F(FolderDialogOnHangingDiskTest, OpensNothingAfterItsDestruction)
{
    auto other = std::make_unique<FreedesktopFolderDialog>(connection);
    other->choose({.startFolder = disk.path() + QStringLiteral("/clips")}, [](const QString&) {});
    disk.disconnect();
    other.reset();
    QTest::qWait(200);
    EXPECT_EQ(portal->dialogs, 0);
}

TEST_F(FreedesktopFolderDialogTest, ACancelledDialogHasNoAnswer)
{
    chooseWithPortal();
    portal->respond(1);
    QTest::qWait(50);
    chooseWithPortal();
    portal->respond(0);
    QTest::qWait(50);
    for (const auto* uri : {"https://example.org/", "file://", "relative", "file:///a%00b"}) {
        chooseWithPortal();
        portal->respond(0, {QLatin1String(uri)});
        QTest::qWait(50);
    }
    EXPECT_EQ(chosen, QStringList());
    EXPECT_EQ(qtDialog(), nullptr);
}

TEST_F(FreedesktopFolderDialogTest, OneDialogAtATime)
{
    chooseWithPortal();
    choose(dialog);
    QTest::qWait(50);
    EXPECT_EQ(portal->dialogs, 1);
    portal->respond(0, {QStringLiteral("file:///a")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !chosen.isEmpty(); }));
    portal->respond(0, {QStringLiteral("file:///b")});
    QTest::qWait(50);
    EXPECT_EQ(chosen, QStringList{QStringLiteral("/a")});
}

TEST_F(FreedesktopFolderDialogTest, UnderstandsPortalsThatAnswerEarlyOrUnderTheirOwnHandle)
{
    portal->isHasty = true;
    chooseWithPortal();
    EXPECT_TRUE(QTest::qWaitFor([&] { return chosen == QStringList{QStringLiteral("/hasty")}; }));
    portal->isHasty = false;
    portal->handle = FakePortal::Handle::own;
    chooseWithPortal();
    QTest::qWait(100);
    portal->respond(0, {QStringLiteral("file:///own")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return chosen.last() == QStringLiteral("/own"); }));
}

TEST_F(FreedesktopFolderDialogTest, EndsWithItsWindow)
{
    auto window = std::make_unique<QWindow>();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    chooseWithPortal(window.get());
    EXPECT_EQ(portal->parentWindow, QStringLiteral("x11:") + QString::number(window->winId(), 16));
    window->showMinimized();
    QTest::qWait(100);
    EXPECT_EQ(portal->closings(), 0) << "a minimised window still has its dialog";
    window->hide();
    EXPECT_TRUE(QTest::qWaitFor([&] { return portal->closings() == 1; }));
    portal->respond(0, {QStringLiteral("file:///late")});
    window->show();
    chooseWithPortal(window.get());
    window.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return portal->closings() == 2; }));
    EXPECT_EQ(chosen, QStringList());
}

TEST_F(FreedesktopFolderDialogTest, EndsWhenThePortalVanishes)
{
    chooseWithPortal();
    portal.reset();
    QTest::qWait(200);
    EXPECT_EQ(qtDialog(), nullptr);
    portal = std::make_unique<FakePortal>();
    chooseWithPortal();
    portal->respond(0, {QStringLiteral("file:///again")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return chosen == QStringList{QStringLiteral("/again")}; }));
}

TEST_F(FreedesktopFolderDialogTest, ClosesTheDialogWhenItIsDestroyed)
{
    auto other = std::make_unique<FreedesktopFolderDialog>(connection);
    choose(*other);
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal->dialogs == 1; }));
    other.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return portal->closings() == 1; }));
    portal->respond(0, {QStringLiteral("file:///late")});
    QTest::qWait(50);
    EXPECT_EQ(chosen, QStringList());
}

TEST_F(FreedesktopFolderDialogTest, UsesQtsDialogWithoutABus)
{
    FreedesktopFolderDialog alone{std::make_shared<PortalConnection>(QDBusConnection(QStringLiteral("no bus")))};
    QWindow window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    choose(alone, &window);
    ASSERT_TRUE(waitForQtDialog());
    auto* const shown = qtDialog();
    EXPECT_EQ(shown->windowTitle(), QStringLiteral("Kayıt klasörü"));
    EXPECT_EQ(shown->directory().absolutePath(), folder.path());
    EXPECT_EQ(shown->fileMode(), QFileDialog::Directory);
    EXPECT_TRUE(shown->isModal());
    EXPECT_EQ(shown->windowHandle()->transientParent(), &window);
    QDir(folder.path()).mkdir(QStringLiteral("clips"));
    shown->findChild<QLineEdit*>()->setText(QStringLiteral("clips"));
    const auto buttons = shown->findChildren<QPushButton*>();
    const auto accept =
        std::ranges::find_if(buttons, [](const QPushButton* each) { return each->text() == QStringLiteral("Seç"); });
    ASSERT_NE(accept, buttons.end());
    ASSERT_TRUE(QTest::qWaitFor([&] { return (*accept)->isEnabled(); }));
    QTest::mouseClick(*accept, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !chosen.isEmpty(); }));
    EXPECT_EQ(chosen, QStringList{folder.filePath(QStringLiteral("clips"))});
    QTest::qWait(50);
    EXPECT_EQ(qtDialog(), nullptr);
    // The user cancels the next one, and closes the window of the third.
    choose(alone, &window);
    ASSERT_TRUE(waitForQtDialog());
    QTest::keyClick(qtDialog(), Qt::Key_Escape);
    QTest::qWait(50);
    EXPECT_EQ(qtDialog(), nullptr);
    choose(alone, &window);
    ASSERT_TRUE(waitForQtDialog());
    window.hide();
    QTest::qWait(50);
    EXPECT_EQ(qtDialog(), nullptr);
    EXPECT_EQ(chosen.size(), 1);
}

TEST_F(FreedesktopFolderDialogTest, UsesQtsDialogIfThePortalCannotShowOne)
{
    portal.reset();
    portal = std::make_unique<FakePortal>(FakePortal::Service::withoutFileChooser);
    choose(dialog);
    ASSERT_TRUE(waitForQtDialog());
    qtDialog()->reject();
    QTest::qWait(50);
    portal.reset();
    portal = std::make_unique<FakePortal>();
    chooseWithPortal();
    portal->respond(2);
    EXPECT_TRUE(waitForQtDialog()) << "the back end of the portal failed";
    qtDialog()->reject();
    EXPECT_EQ(chosen, QStringList());
}

TEST_F(FreedesktopFolderDialogTest, WaitsLimitedTimeForThePortalAndAnyTimeForTheUser)
{
    FreedesktopFolderDialog impatient(connection, std::chrono::milliseconds(500));
    portal->isSilent = true;
    choose(impatient);
    ASSERT_TRUE(waitForQtDialog());
    qtDialog()->reject();
    QTest::qWait(50);
    portal->isSilent = false;
    choose(impatient);
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal->dialogs == 2; }));
    QTest::qWait(1000);
    portal->respond(0, {QStringLiteral("file:///slow")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return chosen == QStringList{QStringLiteral("/slow")}; }));
}

} // namespace
} // namespace quelto
