// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortalGlobalKeyFixture.h"

#include <QDBusObjectPath>
#include <QElapsedTimer>

namespace quelto {
namespace {

class PortalGlobalKeyTest : public test::PortalGlobalKeyFixture { };

PortalShortcutList shortcutsIn(const QVariant& argument)
{
    return qdbus_cast<PortalShortcutList>(argument);
}

TEST_F(PortalGlobalKeyTest, BindsWithThePreferredKeys)
{
    EXPECT_EQ(key->state(), State::Released);
    grab();
    EXPECT_EQ(key->state(), State::Released) << "the desktop has not answered yet";
    ASSERT_TRUE(waitForState(State::Held));
    EXPECT_EQ(key->boundText(), QStringLiteral("Alt+Shift+C"));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(portal->methods(),
              (QStringList{QStringLiteral("Register"), QStringLiteral("CreateSession"), QStringLiteral("ListShortcuts"),
                           QStringLiteral("BindShortcuts")}));
    const auto create = portal->callsOf("CreateSession").first().options();
    EXPECT_EQ(create.value(QStringLiteral("session_handle_token")), QStringLiteral("quelto"));
    const auto bind = portal->callsOf("BindShortcuts").first();
    EXPECT_EQ(bind.arguments.at(0).value<QDBusObjectPath>().path(), portal->session());
    for (const auto& list :
         {shortcutsIn(create.value(QStringLiteral("shortcuts"))), shortcutsIn(bind.arguments.at(1))}) {
        ASSERT_EQ(list.size(), 1);
        EXPECT_EQ(list.first().id, QStringLiteral("save-clip"));
        EXPECT_EQ(list.first().properties.value(QStringLiteral("preferred_trigger")), QStringLiteral("ALT+SHIFT+c"));
        EXPECT_EQ(list.first().properties.value(QStringLiteral("description")), QStringLiteral("Klip Kaydet"));
    }
}

TEST_F(PortalGlobalKeyTest, IsHeldIfTheDesktopBindsAndSaysThatItFailed)
{
    behave("BindShortcuts", {{.code = 2, .results = bound(QStringLiteral("Press <Alt>c"))}});
    grab();
    ASSERT_TRUE(waitForState(State::Held));
    EXPECT_EQ(key->boundText(), QStringLiteral("Press <Alt>c"));
}

TEST_F(PortalGlobalKeyTest, DoesNotBindWhatTheDesktopHasAlready)
{
    behave("ListShortcuts", {{.results = bound(QStringLiteral("F9"))}});
    grab();
    ASSERT_TRUE(waitForState(State::Held));
    EXPECT_EQ(key->boundText(), QStringLiteral("F9"));
    receiveAll();
    EXPECT_EQ(portal->count("BindShortcuts"), 0) << "the desktop would open its settings";
    emitPress();
    EXPECT_EQ(presses, 1);
}

TEST_F(PortalGlobalKeyTest, AsksForTheKeysThatTheAnswerLacks)
{
    behave("BindShortcuts", {{.results = {}}});
    behave("ListShortcuts", {{}, {.results = bound(QStringLiteral("F9"))}});
    grab();
    ASSERT_TRUE(waitForState(State::Held));
    EXPECT_EQ(key->boundText(), QStringLiteral("F9"));
}

TEST_F(PortalGlobalKeyTest, IsReservedWithoutKeysUntilThereIsAPress)
{
    bindTo(QString());
    behave("ListShortcuts", {{.results = bound(QString())}});
    grab();
    ASSERT_TRUE(waitForState(State::ReservedByDesktop));
    EXPECT_EQ(key->boundText(), QString());
    emitPress();
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(key->state(), State::Held) << "evidently it has keys";
}

TEST_F(PortalGlobalKeyTest, IsReservedIfTheUserDeclines)
{
    behave("BindShortcuts", {{.code = 1}});
    grab();
    ASSERT_TRUE(waitForState(State::ReservedByDesktop));
    receiveAll();
    EXPECT_EQ(portal->count("BindShortcuts"), 1);
    EXPECT_EQ(portal->count("ListShortcuts"), 1);
    bindTo(QStringLiteral("F9"));
    grab();
    EXPECT_TRUE(waitForState(State::Held)) << "the user chose the shortcut again";
}

TEST_F(PortalGlobalKeyTest, IsReservedWithoutThePortal)
{
    portal->interfaces.removeAll(QStringLiteral("GlobalShortcuts"));
    grab();
    EXPECT_TRUE(waitForState(State::ReservedByDesktop));
    EXPECT_EQ(changes, 1);
    endPortal();
    makeKey();
    grab();
    EXPECT_TRUE(waitForState(State::ReservedByDesktop));
    connection = std::make_shared<PortalConnection>(QDBusConnection(QStringLiteral("no bus")));
    makeKey();
    grab();
    EXPECT_TRUE(waitForState(State::ReservedByDesktop));
}

TEST_F(PortalGlobalKeyTest, IsReservedIfThePortalDoesNotAnswer)
{
    for (const auto* method : {"BindShortcuts", "CreateSession"}) {
        behave(method, {{.reply = Reply::none, .response = Response::none}});
        behave("ListShortcuts", {{.reply = Reply::none, .response = Response::none}});
        makeKey({.answer = std::chrono::milliseconds(200)});
        grab();
        EXPECT_TRUE(waitForState(State::ReservedByDesktop)) << method;
    }
}

TEST_F(PortalGlobalKeyTest, AHeldKeyIsOnePress)
{
    grab();
    ASSERT_TRUE(waitForState(State::Held));
    for (int repeat = 0; repeat < 5; ++repeat) {
        emitPress();
    }
    EXPECT_EQ(presses, 1);
    emitPress("Deactivated");
    emitPress();
    EXPECT_EQ(presses, 2);
}

TEST_F(PortalGlobalKeyTest, AnActivationAfterThePauseIsAPressWithoutARelease)
{
    makeKey({.repeatPause = std::chrono::milliseconds(30)});
    grab();
    ASSERT_TRUE(waitForState(State::Held));
    emitPress();
    EXPECT_EQ(presses, 1);
    QElapsedTimer pause;
    pause.start();
    EXPECT_TRUE(waitFor([&] { return pause.hasExpired(30); }));
    emitPress();
    EXPECT_EQ(presses, 2);
}

TEST_F(PortalGlobalKeyTest, IgnoresSignalsThatAreNotItsOwn)
{
    grab();
    ASSERT_TRUE(waitForState(State::Held));
    emitPress("Activated", QStringLiteral("other"));
    emitPress("Activated", QStringLiteral("save-clip"), QStringLiteral("/org/freedesktop/portal/desktop/session/1/x"));
    emitShortcut("Activated", {});
    emitShortcut("Activated", {42, 43});
    emitShortcut("Activated", {QVariant::fromValue(QDBusObjectPath(portal->session())), 42});
    emitShortcut("Activated", {portal->session(), QStringLiteral("save-clip")});
    EXPECT_EQ(presses, 0);
    emitShortcut("ShortcutsChanged", {});
    emitShortcut("ShortcutsChanged",
                 {QVariant::fromValue(QDBusObjectPath(QStringLiteral("/other"))), bound(QStringLiteral("F9")).first()});
    EXPECT_EQ(key->boundText(), QStringLiteral("Alt+Shift+C"));
    EXPECT_EQ(changes, 1);
}

TEST_F(PortalGlobalKeyTest, FollowsTheUsersChangesInTheDesktop)
{
    grab();
    ASSERT_TRUE(waitForState(State::Held));
    const auto session = QVariant::fromValue(QDBusObjectPath(portal->session()));
    emitShortcut("ShortcutsChanged", {session, bound(QStringLiteral("F9")).first()});
    EXPECT_EQ(key->boundText(), QStringLiteral("F9"));
    EXPECT_EQ(key->state(), State::Held);
    EXPECT_EQ(changes, 2);
    emitShortcut("ShortcutsChanged", {session, bound(QString()).first()});
    EXPECT_EQ(key->state(), State::ReservedByDesktop);
    EXPECT_EQ(key->boundText(), QString());
    emitShortcut("ShortcutsChanged", {session, bound(QStringLiteral("F8")).first()});
    EXPECT_EQ(key->state(), State::Held);
}

TEST_F(PortalGlobalKeyTest, IsReservedWhenTheDesktopClosesTheSession)
{
    grab();
    ASSERT_TRUE(waitForState(State::Held));
    portal->emitSignal(portal->session(), "org.freedesktop.portal.Session", "Closed", {});
    EXPECT_TRUE(waitForState(State::ReservedByDesktop));
    EXPECT_EQ(key->boundText(), QString());
}

TEST_F(PortalGlobalKeyTest, TellsTheKeysThatTheDesktopKeeps)
{
    grab(C);
    ASSERT_TRUE(waitForState(State::Held));
    grab(V);
    ASSERT_TRUE(waitForCount("BindShortcuts", 2));
    receiveAll();
    const auto preferred = shortcutsIn(portal->callsOf("BindShortcuts").last().arguments.at(1)).first();
    EXPECT_EQ(preferred.properties.value(QStringLiteral("preferred_trigger")), QStringLiteral("ALT+SHIFT+v"));
    EXPECT_EQ(key->boundText(), QStringLiteral("Alt+Shift+C"));
    EXPECT_EQ(key->state(), State::Held);
    EXPECT_EQ(portal->methods().mid(4),
              (QStringList{QStringLiteral("Close"), QStringLiteral("CreateSession"), QStringLiteral("ListShortcuts"),
                           QStringLiteral("BindShortcuts")}))
        << "the sessions have the same name, so the first one is closed before";
    emitPress();
    EXPECT_EQ(presses, 1);
}

TEST_F(PortalGlobalKeyTest, ReleaseUnbindsUntilTheNextGrab)
{
    grab();
    ASSERT_TRUE(waitForState(State::Held));
    key->release();
    EXPECT_EQ(key->state(), State::Released);
    EXPECT_EQ(key->boundText(), QString());
    emitPress();
    EXPECT_EQ(presses, 0);
    ASSERT_TRUE(waitForCount("Close", 1));
    EXPECT_EQ(portal->callsOf("Close").first().path, portal->session());
    grab();
    EXPECT_TRUE(waitForState(State::Held));
    EXPECT_EQ(portal->count("BindShortcuts"), 2);
}

TEST_F(PortalGlobalKeyTest, GrabsThatFollowEachOtherOpenOneDialog)
{
    grab(C);
    key->release();
    grab(V);
    ASSERT_TRUE(waitForState(State::Held));
    grab(V);
    grab(V);
    receiveAll();
    EXPECT_EQ(portal->count("CreateSession"), 1);
    EXPECT_EQ(portal->count("BindShortcuts"), 1);
}

TEST_F(PortalGlobalKeyTest, ADialogThatIsNoLongerWantedCloses)
{
    behave("BindShortcuts", {{.response = Response::none}});
    grab();
    ASSERT_TRUE(waitForCount("BindShortcuts", 1));
    key->release();
    ASSERT_TRUE(waitForCount("Close", 2)) << "of the dialog and of the session";
    EXPECT_EQ(key->state(), State::Released);
}

TEST_F(PortalGlobalKeyTest, ASessionIsClosedBeforeTheNextOneIsCreated)
{
    grab(C);
    ASSERT_TRUE(waitForState(State::Held));
    portal->delayedMethods = {QStringLiteral("Close")};
    grab(V);
    ASSERT_TRUE(waitForCount("Close", 1));
    key->release();
    grab(V);
    receiveAll();
    receiveAll();
    EXPECT_EQ(portal->count("CreateSession"), 1) << "the portal would refuse a second one of that name";
    portal->delayedMethods.clear();
    portal->replyToDelayed();
    EXPECT_TRUE(waitForCount("BindShortcuts", 2));
}

TEST_F(PortalGlobalKeyTest, ASessionIsCreatedBeforeItIsReplaced)
{
    behave("CreateSession", {{.response = Response::none}, {}});
    grab(C);
    ASSERT_TRUE(waitForCount("CreateSession", 1));
    grab(V);
    receiveAll();
    EXPECT_EQ(portal->count("CreateSession"), 1);
    EXPECT_EQ(portal->count("Close"), 0);
    portal->respond(0, {{QStringLiteral("session_handle"), portal->session()}});
    ASSERT_TRUE(waitForState(State::Held));
    EXPECT_EQ(portal->count("BindShortcuts"), 1) << "a released shortcut must not open a dialog";
    const auto preferred = shortcutsIn(portal->callsOf("BindShortcuts").last().arguments.at(1)).first();
    EXPECT_EQ(preferred.properties.value(QStringLiteral("preferred_trigger")), QStringLiteral("ALT+SHIFT+v"));
}

TEST_F(PortalGlobalKeyTest, LimitsWhatTheDesktopWrites)
{
    bindTo(QString(1'000'000, u'x'));
    grab();
    ASSERT_TRUE(waitForState(State::Held));
    EXPECT_EQ(key->boundText().size(), 64);
    const auto session = QVariant::fromValue(QDBusObjectPath(portal->session()));
    emitShortcut("ShortcutsChanged", {session, bound(QStringLiteral(" a\n\tb ")).first()});
    EXPECT_EQ(key->boundText(), QStringLiteral("a b"));
    for (const auto& value : QVariantList{42, QStringList{QStringLiteral("a")}, QVariantMap()}) {
        emitShortcut("ShortcutsChanged", {session, bound(value).first()});
        EXPECT_EQ(key->boundText(), QString());
    }
    for (const auto& list : QVariantList{42, QStringLiteral("save-clip"), QStringList{QStringLiteral("save-clip")}}) {
        emitShortcut("ShortcutsChanged", {session, bound(QStringLiteral("F9")).first()});
        EXPECT_EQ(key->state(), State::Held);
        emitShortcut("ShortcutsChanged", {session, list});
        EXPECT_EQ(key->state(), State::ReservedByDesktop);
    }
}

TEST_F(PortalGlobalKeyTest, BindsAgainInTheNextPortal)
{
    grab();
    ASSERT_TRUE(waitForState(State::Held));
    endPortal();
    startPortal();
    bindTo(QStringLiteral("F9"));
    EXPECT_TRUE(waitFor([this] { return key->boundText() == QStringLiteral("F9"); }));
    EXPECT_EQ(portal->methods(),
              (QStringList{QStringLiteral("Register"), QStringLiteral("CreateSession"), QStringLiteral("ListShortcuts"),
                           QStringLiteral("BindShortcuts")}));
    emitPress();
    EXPECT_EQ(presses, 1);
}

TEST_F(PortalGlobalKeyTest, BindsWhenAPortalStartsLater)
{
    endPortal();
    grab();
    ASSERT_TRUE(waitForState(State::ReservedByDesktop));
    startPortal();
    bindTo(QStringLiteral("F9"));
    EXPECT_TRUE(waitForState(State::Held));
}

TEST_F(PortalGlobalKeyTest, BindsAgainIfThePortalEndsBeforeItAnswers)
{
    for (const char* method : {"ListShortcuts", "BindShortcuts"}) {
        behave(method, {{.response = Response::none}});
        grab();
        ASSERT_TRUE(waitForCount(method, 1));
        receiveAll();
        endPortal();
        startPortal();
        bindTo(QStringLiteral("F9"));
        EXPECT_TRUE(waitForState(State::Held)) << method;
        EXPECT_EQ(portal->count("BindShortcuts"), 1) << method;
        key.reset();
        endPortal();
        startPortal();
        makeKey();
    }
}

} // namespace
} // namespace quelto
