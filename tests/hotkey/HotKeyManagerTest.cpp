// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/HotKeyManager.h"

#include "tests/capture/FakePlatform.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quelto {
namespace {

using Combination = test::FakeGlobalKey::Combination;

class HotKeyManagerTest : public testing::Test {
protected:
    QTemporaryDir folder;
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
    test::FakeGlobalKey key;
    HotKeyManager manager{settings, key};
};

TEST_F(HotKeyManagerTest, RegistersTheCombinationOfTheSettings)
{
    manager.registerFromSettings();
    EXPECT_EQ(key.grabbed, (Combination{8, 2560}));
}

TEST_F(HotKeyManagerTest, KeepsOnlyTheLastRegistration)
{
    manager.registerKey(8, 2560);
    manager.registerKey(122, 0);
    EXPECT_EQ(key.grabbed, (Combination{122, 0}));
}

TEST_F(HotKeyManagerTest, RegistersAgainOnEachChange)
{
    manager.registerFromSettings();
    manager.followSettings();
    EXPECT_EQ(key.grabs, 1);
    settings.setHotkeyCode(122);
    EXPECT_EQ(key.grabs, 2);
    EXPECT_EQ(key.grabbed, (Combination{122, 2560}));
    settings.setHotkeyModifiers(256);
    EXPECT_EQ(key.grabbed, (Combination{122, 256}));
    settings.setHotkeyKeyName(QStringLiteral("F1"));
    EXPECT_EQ(key.grabs, 3);
}

TEST_F(HotKeyManagerTest, ReleasesTheKeyWhileANewCombinationIsRecorded)
{
    manager.registerFromSettings();
    manager.unregister();
    EXPECT_EQ(key.grabbed, std::nullopt);
}

TEST_F(HotKeyManagerTest, RegistersNoHalfChangedCombinationWhileOneIsRecorded)
{
    manager.registerFromSettings();
    manager.followSettings();
    manager.unregister();
    settings.setHotkeyCode(122);
    settings.setHotkeyModifiers(256);
    EXPECT_EQ(key.grabs, 1);
    manager.registerFromSettings();
    EXPECT_EQ(key.grabs, 2);
    EXPECT_EQ(key.grabbed, (Combination{122, 256}));
    settings.setHotkeyCode(120);
    EXPECT_EQ(key.grabbed, (Combination{120, 256})) << "follows the settings again";
}

TEST_F(HotKeyManagerTest, TellsTheStateOfTheKey)
{
    std::vector<GlobalKey::State> states;
    QObject::connect(&manager, &HotKeyManager::stateChanged, &manager, [&] { states.push_back(manager.state()); });
    key.stateOfGrabs = GlobalKey::State::Taken;
    manager.registerFromSettings();
    key.setState(GlobalKey::State::Held);
    manager.unregister();
    EXPECT_EQ(states, (std::vector{GlobalKey::State::Taken, GlobalKey::State::Held, GlobalKey::State::Released}));
}

TEST_F(HotKeyManagerTest, ShowsTheCombinationOfTheSettings)
{
    QStringList texts;
    QObject::connect(&manager, &HotKeyManager::keysChanged, &manager, [&] { texts.append(manager.text()); });
    EXPECT_EQ(manager.text(), u"Alt+Shift+C");
    settings.setHotkeyKeyName(QStringLiteral("F9"));
    EXPECT_EQ(manager.keys().size(), 3);
    settings.setHotkeyModifiers(0);
    EXPECT_EQ(manager.keys(), QStringList{QStringLiteral("F9")});
    EXPECT_EQ(manager.preferredText(), u"F9");
    EXPECT_FALSE(manager.hasOtherKeys());
    settings.setLanguage(QStringLiteral("de"));
    EXPECT_EQ(texts, (QStringList{QStringLiteral("Alt+Shift+F9"), QStringLiteral("F9"), QStringLiteral("F9")}))
        << "a new language may have other names";
}

TEST_F(HotKeyManagerTest, ShowsTheKeysThatTheDesktopBound)
{
    key.bind(QStringLiteral("Alt+Shift+c"));
    EXPECT_FALSE(manager.hasOtherKeys()) << "the same keys in another order or case";
    key.bind(QStringLiteral("Meta+C"));
    EXPECT_EQ(manager.keys(), (QStringList{QStringLiteral("Super"), QStringLiteral("C")}));
    EXPECT_TRUE(manager.hasOtherKeys());
    EXPECT_EQ(manager.preferredText(), u"Alt+Shift+C");
    settings.setHotkeyModifiers(256);
    EXPECT_FALSE(manager.hasOtherKeys()) << "the user prefers the same ones now";
}

TEST_F(HotKeyManagerTest, ShowsNoKeysThatTheDesktopReserves)
{
    key.setState(GlobalKey::State::ReservedByDesktop);
    EXPECT_EQ(manager.keys(), QStringList());
    EXPECT_EQ(manager.text(), QString());
    EXPECT_FALSE(manager.hasOtherKeys());
    EXPECT_EQ(manager.preferredText(), u"Alt+Shift+C");
    manager.unregister();
    EXPECT_EQ(manager.keys(), QStringList()) << "while a new combination is recorded";
    manager.registerFromSettings();
    EXPECT_EQ(manager.text(), u"Alt+Shift+C");
}

TEST_F(HotKeyManagerTest, NamesKeysByTheirTableOrTheLayout)
{
    key.typed = {{41, QStringLiteral("ö")}, {36, QStringLiteral("x")}, {18, QStringLiteral("1")}};
    EXPECT_EQ(manager.keyName(41), QStringLiteral("Ö"));
    EXPECT_EQ(manager.keyName(36), QStringLiteral("↩")) << "does not depend on the layout";
    EXPECT_EQ(manager.keyName(18), QStringLiteral("1"));
    EXPECT_EQ(manager.keyName(93), QStringLiteral("?"));
}

TEST_F(HotKeyManagerTest, RunsTheActionOncePerPressFromTheEventLoop)
{
    int presses = 0;
    manager.action = [&] { ++presses; };
    key.onPressed();
    EXPECT_EQ(presses, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(presses, 1);
}

TEST_F(HotKeyManagerTest, DoesNothingWithoutAnAction)
{
    key.onPressed();
    QCoreApplication::processEvents();
}

} // namespace
} // namespace quelto
