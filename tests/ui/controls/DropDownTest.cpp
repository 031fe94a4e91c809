// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/QmlFixture.h"

#include <QAccessible>

namespace quelto {
namespace {

using test::colorOf;

class ThemedDropDown : public test::QmlFixture {
protected:
    void SetUp() override
    {
        QmlFixture::SetUp();
        showAt(60);
    }
    void showAt(int y)
    {
        show(QStringLiteral("property var chosen: 7\n property bool isLocked: false\n property int picks: 0\n"
                            "property var screens: [{text: 'Ana ekran', value: 0}, {text: 'DELL U2720Q', value: 7},\n"
                            "{text: 'Samsung', value: 9}, {text: 'Sony', value: 12}]\n"
                            "GhostButton { objectName: 'before'; text: 'a' }\n"
                            "ThemedDropDown { objectName: 'menu'; x: 20; y: %1; width: 220; name: 'Ekran'\n"
                            "choices: Window.window?.screens ?? []; selection: Window.window?.chosen\n"
                            "onPicked: value => { Window.window.picks++; if (!Window.window.isLocked) "
                            "Window.window.chosen = value } }\n"
                            "GhostButton { objectName: 'after'; y: 120; text: 'b' }")
                 .arg(y));
    }
    int chosen() const { return window->property("chosen").toInt(); }
    int picks() const { return window->property("picks").toInt(); }
    QString shown() const { return read(QStringLiteral("menu"), "shownText").toString(); }
    QObject* popup() const { return read(QStringLiteral("menu"), "popup").value<QObject*>(); }
    bool isOpen() const { return popup()->property("visible").toBool(); }
    void focusMenu() { item(QStringLiteral("menu"))->forceActiveFocus(Qt::TabFocusReason); }
    /// The entry of the open menu with that text.
    QQuickItem* entry(const char* label) const
    {
        return test::firstVisible(window, [&](const QQuickItem* each) {
            return each->inherits("QQuickItemDelegate") &&
                each->property("text").toString() == QString::fromUtf8(label);
        });
    }
    QString highlighted() const
    {
        const auto* found = test::firstVisible(window, [](const QQuickItem* each) {
            return each->inherits("QQuickItemDelegate") && each->property("highlighted").toBool();
        });
        return found == nullptr ? QString() : found->property("text").toString();
    }
};

TEST_F(ThemedDropDown, ShowsTheTextOfTheSelection)
{
    EXPECT_EQ(shown(), QStringLiteral("DELL U2720Q"));
    EXPECT_NE(text(QStringLiteral("DELL U2720Q")), nullptr);
    window->setProperty("chosen", 12);
    EXPECT_EQ(shown(), QStringLiteral("Sony"));
}

TEST_F(ThemedDropDown, ShowsADashForAValueThatIsNotAmongTheChoices)
{
    window->setProperty("chosen", 99);
    EXPECT_EQ(shown(), QStringLiteral("—"));
    focusMenu();
    press(Qt::Key_Down);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(highlighted(), QString());
    press(Qt::Key_Escape);
    EXPECT_EQ(chosen(), 99);
    EXPECT_EQ(picks(), 0);
}

TEST_F(ThemedDropDown, PicksByClick)
{
    click(item(QStringLiteral("menu")));
    ASSERT_TRUE(isOpen());
    click(entry("Samsung"));
    EXPECT_EQ(chosen(), 9);
    EXPECT_EQ(picks(), 1);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(shown(), QStringLiteral("Samsung"));
    window->setProperty("chosen", 0);
    EXPECT_EQ(shown(), QStringLiteral("Ana ekran"));
}

TEST_F(ThemedDropDown, ClickBesideTheMenuClosesIt)
{
    click(item(QStringLiteral("menu")));
    ASSERT_TRUE(isOpen());
    QTest::mouseClick(window, Qt::LeftButton, {}, {440, 300});
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(picks(), 0);
}

TEST_F(ThemedDropDown, KeysOpenTheMenuBeforeTheyChangeAnything)
{
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Up, Qt::Key_Down, Qt::Key_Home,
                           Qt::Key_End, Qt::Key_S}) {
        focusMenu();
        press(key);
        EXPECT_TRUE(isOpen()) << key;
        EXPECT_EQ(chosen(), 7) << key;
        press(Qt::Key_Escape);
        EXPECT_FALSE(isOpen()) << key;
    }
    EXPECT_EQ(picks(), 0);
}

TEST_F(ThemedDropDown, ArrowsMoveInTheMenuAndEnterPicks)
{
    focusMenu();
    press(Qt::Key_Down);
    EXPECT_EQ(highlighted(), QStringLiteral("DELL U2720Q"));
    press(Qt::Key_Down);
    EXPECT_EQ(highlighted(), QStringLiteral("Samsung"));
    press(Qt::Key_End);
    EXPECT_EQ(highlighted(), QStringLiteral("Sony"));
    press(Qt::Key_Down);
    EXPECT_EQ(highlighted(), QStringLiteral("Sony"));
    press(Qt::Key_Home);
    EXPECT_EQ(highlighted(), QStringLiteral("Ana ekran"));
    EXPECT_EQ(chosen(), 7);
    press(Qt::Key_Return);
    EXPECT_EQ(chosen(), 0);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(focused(), item(QStringLiteral("menu")));
    press(Qt::Key_Space);
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    EXPECT_EQ(chosen(), 7);
    EXPECT_FALSE(isOpen());
}

TEST_F(ThemedDropDown, LettersSearch)
{
    focusMenu();
    press(Qt::Key_S);
    EXPECT_EQ(highlighted(), QStringLiteral("Samsung"));
    press(Qt::Key_S);
    press(Qt::Key_Return);
    EXPECT_EQ(chosen(), 12);
}

TEST_F(ThemedDropDown, EscapeChangesNothing)
{
    focusMenu();
    press(Qt::Key_Space);
    press(Qt::Key_Down);
    press(Qt::Key_Escape);
    EXPECT_EQ(chosen(), 7);
    EXPECT_EQ(shown(), QStringLiteral("DELL U2720Q"));
    EXPECT_EQ(focused(), item(QStringLiteral("menu")));
}

TEST_F(ThemedDropDown, HeldKeyOpensTheMenuOnce)
{
    for (const auto key : {Qt::Key_Space, Qt::Key_Return}) {
        focusMenu();
        test::holdKey(window, key);
        EXPECT_TRUE(isOpen()) << key;
        press(Qt::Key_Escape);
    }
    EXPECT_EQ(picks(), 0);
}

TEST_F(ThemedDropDown, PickingTheSelectionAgainIsNoChange)
{
    focusMenu();
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    click(item(QStringLiteral("menu")));
    click(entry("DELL U2720Q"));
    EXPECT_EQ(picks(), 0);
}

TEST_F(ThemedDropDown, DoesNotChangeUnlessItsOwnerDoes)
{
    window->setProperty("isLocked", true);
    click(item(QStringLiteral("menu")));
    click(entry("Samsung"));
    EXPECT_EQ(picks(), 1);
    EXPECT_EQ(shown(), QStringLiteral("DELL U2720Q"));
    EXPECT_EQ(read(QStringLiteral("menu"), "currentIndex").toInt(), 1);
}

TEST_F(ThemedDropDown, KeepsTheSelectionWhenTheChoicesChange)
{
    window->setProperty(
        "screens",
        QVariantList{QVariantMap{{QStringLiteral("text"), QStringLiteral("Ana ekran")}, {QStringLiteral("value"), 0}},
                     QVariantMap{{QStringLiteral("text"), QStringLiteral("Samsung")}, {QStringLiteral("value"), 9}}});
    EXPECT_EQ(shown(), QStringLiteral("—"));
    EXPECT_EQ(read(QStringLiteral("menu"), "currentIndex").toInt(), -1);
    EXPECT_EQ(chosen(), 7);
    window->setProperty("chosen", 9);
    EXPECT_EQ(shown(), QStringLiteral("Samsung"));
    EXPECT_EQ(read(QStringLiteral("menu"), "currentIndex").toInt(), 1);
    EXPECT_EQ(picks(), 0);
}

TEST_F(ThemedDropDown, OpensUpwardAtTheLowerEdgeOfTheWindow)
{
    focusMenu();
    press(Qt::Key_Space);
    auto* below = popup()->property("contentItem").value<QQuickItem*>();
    EXPECT_GT(test::placeOf(below).top(), test::placeOf(item(QStringLiteral("menu"))).bottom());
    window->close();
    showAt(270);
    focusMenu();
    press(Qt::Key_Space);
    auto* above = popup()->property("contentItem").value<QQuickItem*>();
    EXPECT_LT(test::placeOf(above).bottom(), test::placeOf(item(QStringLiteral("menu"))).top());
    EXPECT_GE(test::placeOf(above).top(), 0);
}

TEST_F(ThemedDropDown, ElidesALongText)
{
    const auto name = QStringLiteral("Yeti Stereo Microphone Analog Stereo (USB Audio Device)");
    window->setProperty("screens",
                        QVariantList{QVariantMap{{QStringLiteral("text"), name}, {QStringLiteral("value"), 7}}});
    const auto* label = text(name);
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(label->property("truncated").toBool());
    EXPECT_LT(test::placeOf(label).right(), test::placeOf(item(QStringLiteral("menu"))).right());
}

TEST_F(ThemedDropDown, IsAComboBoxToScreenReaders)
{
    auto* interface = QAccessible::queryAccessibleInterface(item(QStringLiteral("menu")));
    EXPECT_EQ(interface->role(), QAccessible::ComboBox);
    EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Ekran"));
    EXPECT_EQ(interface->text(QAccessible::Description), QStringLiteral("DELL U2720Q"));
    focusMenu();
    press(Qt::Key_Space);
    auto* choice = QAccessible::queryAccessibleInterface(entry("DELL U2720Q"));
    EXPECT_EQ(choice->role(), QAccessible::ListItem);
    EXPECT_TRUE(choice->state().selected);
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(entry("Sony"))->state().selected);
}

class ControlRow : public test::QmlFixture { };

TEST_F(ControlRow, PutsAWideControlBelowItsText)
{
    show(
        QStringLiteral("PillRow { objectName: 'row'; width: parent.Window.width - 40; title: 'Klip'; subtitle: 'Süre'\n"
                       "options: [15, 30, 45, 60]; labelOf: s => s + ' saniye'; selection: 30 }"),
        {700, 200});
    const auto* title = text(QStringLiteral("Klip"));
    const auto* pill = text(QStringLiteral("15 saniye"));
    EXPECT_GT(test::placeOf(pill).left(), test::placeOf(title).right());
    window->resize(440, 200);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return test::placeOf(pill).top() > test::placeOf(text(QStringLiteral("Süre"))).bottom(); }));
    EXPECT_LT(test::placeOf(pill).left(), 30);
    EXPECT_GE(item(QStringLiteral("row"))->implicitHeight(), test::placeOf(pill).bottom());
    window->resize(220, 200);
    // Several rows of pills.
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return test::placeOf(text(QStringLiteral("60 saniye"))).top() > test::placeOf(pill).bottom(); }));
}

TEST_F(ControlRow, NamesItsControl)
{
    show(QStringLiteral("Column { width: 400\n"
                        "ToggleRow { title: 'İmleç'; isOn: true }\n"
                        "DropDownRow { title: 'Ekran'; choices: []; selection: 0 }\n"
                        "PillRow { title: 'FPS'; options: [30] } }"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(test::itemNamed(window, QStringLiteral("İmleç")))->role(),
              QAccessible::CheckBox);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(test::itemNamed(window, QStringLiteral("Ekran")))->role(),
              QAccessible::ComboBox);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(test::itemNamed(window, QStringLiteral("FPS")))->role(),
              QAccessible::Grouping);
}

} // namespace
} // namespace quelto
