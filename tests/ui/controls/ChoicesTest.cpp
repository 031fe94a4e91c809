// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/QmlFixture.h"

#include <QAccessible>
#include <QEasingCurve>

namespace quelto {
namespace {

using test::animationsOf;
using test::colorOf;
using test::fontOf;
using test::outlineOf;

void expectEaseOut(const QObject* control, int milliseconds, int count)
{
    const auto animations = animationsOf(control);
    EXPECT_EQ(animations.size(), count);
    for (const auto* animation : animations) {
        EXPECT_EQ(animation->property("duration").toInt(), milliseconds);
        EXPECT_EQ(animation->property("easing").value<QEasingCurve>().type(), QEasingCurve::OutQuad);
    }
}

class SSToggle : public test::QmlFixture {
protected:
    void SetUp() override
    {
        QmlFixture::SetUp();
        show(QStringLiteral(
            "property bool isOn: false\n property bool isLocked: false\n"
            "SSToggle { x: 20; y: 20; objectName: 'toggle'; text: 'Mikrofon'; isOn: parent.Window.window.isOn\n"
            "onFlipped: on => { if (!Window.window.isLocked) Window.window.isOn = on } }"));
    }
    bool isOn() const { return window->property("isOn").toBool(); }
    QQuickItem* track() const { return background(QStringLiteral("toggle"))->childItems().first(); }
    QQuickItem* knob() const { return track()->childItems().first(); }
};

TEST_F(SSToggle, PlacesTheKnobByItsState)
{
    EXPECT_EQ(item(QStringLiteral("toggle"))->size(), QSizeF(38, 21));
    EXPECT_EQ(track()->size(), QSizeF(38, 21));
    EXPECT_EQ(track()->property("radius").toDouble(), 10.5);
    EXPECT_EQ(colorOf(track()), theme->border());
    EXPECT_EQ(knob()->size(), QSizeF(15, 15));
    EXPECT_EQ(knob()->position(), QPointF(3, 3));
    EXPECT_EQ(colorOf(knob()), QColor(Qt::white));
    click(item(QStringLiteral("toggle")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return knob()->position() == QPointF(38 - 15 - 3, 3); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return colorOf(track()) == theme->accent(); }));
}

TEST_F(SSToggle, AnimatesFor150Milliseconds)
{
    click(item(QStringLiteral("toggle")));
    expectEaseOut(item(QStringLiteral("toggle")), 150, 2);
}

TEST_F(SSToggle, FlipsByClickSpaceAndEnter)
{
    click(item(QStringLiteral("toggle")));
    EXPECT_TRUE(isOn());
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        const bool before = isOn();
        press(key);
        EXPECT_NE(isOn(), before) << key;
    }
}

TEST_F(SSToggle, HeldKeyFlipsItOnce)
{
    item(QStringLiteral("toggle"))->forceActiveFocus(Qt::TabFocusReason);
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        const bool before = isOn();
        test::holdKey(window, key);
        EXPECT_NE(isOn(), before) << key;
    }
}

TEST_F(SSToggle, DoesNotChangeUnlessItsOwnerDoes)
{
    window->setProperty("isLocked", true);
    click(item(QStringLiteral("toggle")));
    EXPECT_FALSE(isOn());
    EXPECT_FALSE(read(QStringLiteral("toggle"), "isOn").toBool());
}

TEST_F(SSToggle, DoesNothingWhileItIsBusyAndKeepsTheFocus)
{
    click(item(QStringLiteral("toggle")));
    item(QStringLiteral("toggle"))->forceActiveFocus(Qt::TabFocusReason);
    object(QStringLiteral("toggle"))->setProperty("busy", true);
    EXPECT_LT(item(QStringLiteral("toggle"))->opacity(), 1);
    press(Qt::Key_Space);
    click(item(QStringLiteral("toggle")));
    EXPECT_TRUE(isOn());
    object(QStringLiteral("toggle"))->setProperty("busy", false);
    EXPECT_EQ(item(QStringLiteral("toggle"))->opacity(), 1);
    EXPECT_EQ(focused(), item(QStringLiteral("toggle")));
    press(Qt::Key_Space);
    EXPECT_FALSE(isOn());
}

TEST_F(SSToggle, DrawsSmallerInTheSamePlace)
{
    object(QStringLiteral("toggle"))->setProperty("drawnScale", 0.85);
    EXPECT_EQ(item(QStringLiteral("toggle"))->size(), QSizeF(38, 21));
    EXPECT_EQ(track()->size(), QSizeF(32, 18));
    EXPECT_EQ(knob()->size(), QSizeF(13, 13));
}

TEST_F(SSToggle, IsACheckBoxToScreenReaders)
{
    auto* interface = QAccessible::queryAccessibleInterface(item(QStringLiteral("toggle")));
    EXPECT_EQ(interface->role(), QAccessible::CheckBox);
    EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Mikrofon"));
    EXPECT_FALSE(interface->state().checked);
    click(item(QStringLiteral("toggle")));
    EXPECT_TRUE(interface->state().checked);
    window->setProperty("isLocked", true);
    click(item(QStringLiteral("toggle")));
    EXPECT_TRUE(interface->state().checked);
}

class ValueSlider : public test::QmlFixture {
protected:
    void SetUp() override
    {
        QmlFixture::SetUp();
        show(QStringLiteral("property real gain: 0.5\n property var moves: []\n"
                            "ValueSlider { x: 20; y: 20; objectName: 'slider'; name: 'Ses'; from: 0.2; to: 2\n"
                            "stepSize: 0.05; value: parent.Window.window.gain\n"
                            "onMoved: { moves.push(value); Window.window.gain = value } }"));
        item(QStringLiteral("slider"))->forceActiveFocus(Qt::TabFocusReason);
    }
    double value() const { return read(QStringLiteral("slider"), "value").toDouble(); }
    QVariantList moves() const { return window->property("moves").toList(); }
};

TEST_F(ValueSlider, ReachesItsEndsByHomeAndEnd)
{
    press(Qt::Key_End);
    EXPECT_EQ(value(), 2.0);
    press(Qt::Key_End);
    EXPECT_EQ(moves(), QVariantList{2.0});
    press(Qt::Key_Home);
    EXPECT_EQ(value(), 0.2);
    EXPECT_EQ(moves(), (QVariantList{2.0, 0.2}));
}

TEST_F(ValueSlider, FollowsItsOwnerAndStepsAfterHomeAndEnd)
{
    press(Qt::Key_Home);
    press(Qt::Key_Right);
    EXPECT_DOUBLE_EQ(value(), 0.25);
    press(Qt::Key_End);
    window->setProperty("gain", 1.0);
    EXPECT_EQ(value(), 1.0);
    press(Qt::Key_Left);
    EXPECT_DOUBLE_EQ(value(), 0.95);
}

class PillPicker : public test::QmlFixture {
protected:
    void SetUp() override
    {
        QmlFixture::SetUp();
        show(QStringLiteral(
            "property var chosen: 30\n property bool isLocked: false\n"
            "Column { spacing: 40; x: 20; y: 20\n"
            "GhostButton { objectName: 'before'; text: 'a' }\n"
            "PillPicker { objectName: 'picker'; name: 'FPS'; options: [30, 60, 120]; selection: Window.window?.chosen\n"
            "labelOf: fps => fps + ' FPS'\n"
            "onPicked: option => { if (!Window.window.isLocked) Window.window.chosen = option } }\n"
            "GhostButton { objectName: 'after'; text: 'b' } }"));
    }
    int chosen() const { return window->property("chosen").toInt(); }
    QQuickItem* pill(int fps) const { return text(QString::number(fps) + QStringLiteral(" FPS"))->parentItem(); }
    static QQuickItem* boxOf(const QQuickItem* pill) { return pill->property("background").value<QQuickItem*>(); }
};

TEST_F(PillPicker, PlacesPillsInARow)
{
    EXPECT_EQ(pill(30)->x(), 0);
    EXPECT_EQ(pill(60)->x(), pill(30)->width() + 5);
    EXPECT_EQ(pill(120)->x(), pill(60)->x() + pill(60)->width() + 5);
    const auto* words = text(QStringLiteral("30 FPS"));
    EXPECT_EQ(words->position(), QPointF(14, 7));
    EXPECT_EQ(pill(30)->width(), words->implicitWidth() + 28);
    EXPECT_EQ(pill(30)->height(), words->implicitHeight() + 14);
    EXPECT_EQ(fontOf(words).pixelSize(), 12);
    EXPECT_EQ(fontOf(words).weight(), QFont::DemiBold);
    EXPECT_EQ(boxOf(pill(30))->property("radius").toInt(), 5);
}

TEST_F(PillPicker, HighlightsTheSelectedPill)
{
    EXPECT_EQ(colorOf(boxOf(pill(30))), theme->accent());
    EXPECT_EQ(outlineOf(boxOf(pill(30))).color, theme->accent());
    EXPECT_EQ(colorOf(text(QStringLiteral("30 FPS"))), QColor(Qt::white));
    EXPECT_EQ(colorOf(boxOf(pill(60))), theme->bg());
    EXPECT_EQ(outlineOf(boxOf(pill(60))).color, theme->border());
    EXPECT_EQ(outlineOf(boxOf(pill(60))).width, 1);
    EXPECT_EQ(colorOf(text(QStringLiteral("60 FPS"))), theme->muted());
    click(pill(60));
    EXPECT_TRUE(QTest::qWaitFor([&] { return colorOf(boxOf(pill(60))) == theme->accent(); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return colorOf(text(QStringLiteral("30 FPS"))) == theme->muted(); }));
}

TEST_F(PillPicker, PillUnderThePointerIsBrighter)
{
    hover(pill(60));
    EXPECT_TRUE(QTest::qWaitFor([&] { return colorOf(boxOf(pill(60))) == theme->cardHover(); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return colorOf(text(QStringLiteral("60 FPS"))) == theme->text(); }));
    picture(QStringLiteral("control-pills-hovered"));
    hover(pill(30));
    EXPECT_TRUE(QTest::qWaitFor([&] { return colorOf(boxOf(pill(60))) == theme->bg(); }));
    EXPECT_EQ(colorOf(boxOf(pill(30))), theme->accent());
}

TEST_F(PillPicker, AnimatesFor120Milliseconds)
{
    click(pill(60));
    expectEaseOut(pill(60), 120, 2);
}

TEST_F(PillPicker, SelectsByClickAnywhereOnAPill)
{
    const auto corner = pill(120)->mapToScene({2, 2}).toPoint();
    QTest::mouseClick(window, Qt::LeftButton, {}, corner);
    EXPECT_EQ(chosen(), 120);
}

TEST_F(PillPicker, IsOneTabStopWithArrowKeys)
{
    item(QStringLiteral("before"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), pill(30));
    press(Qt::Key_Right);
    EXPECT_EQ(chosen(), 60);
    EXPECT_EQ(focused(), pill(60));
    press(Qt::Key_Down);
    EXPECT_EQ(chosen(), 120);
    press(Qt::Key_Right);
    EXPECT_EQ(chosen(), 120);
    press(Qt::Key_Up);
    EXPECT_EQ(chosen(), 60);
    press(Qt::Key_Home);
    EXPECT_EQ(chosen(), 30);
    press(Qt::Key_End);
    EXPECT_EQ(chosen(), 120);
    EXPECT_TRUE(pill(120)->property("visualFocus").toBool());
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), item(QStringLiteral("after")));
    press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), pill(120));
    press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), item(QStringLiteral("before")));
}

TEST_F(PillPicker, FocusesTheFirstPillWithoutASelection)
{
    window->setProperty("chosen", 45);
    EXPECT_NE(colorOf(boxOf(pill(60))), theme->accent());
    item(QStringLiteral("before"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), pill(30));
    EXPECT_EQ(chosen(), 45);
    press(Qt::Key_Space);
    EXPECT_EQ(chosen(), 30);
}

TEST_F(PillPicker, DoesNotChangeUnlessItsOwnerDoes)
{
    window->setProperty("isLocked", true);
    click(pill(60));
    EXPECT_EQ(chosen(), 30);
    EXPECT_EQ(colorOf(boxOf(pill(30))), theme->accent());
}

TEST_F(PillPicker, IsAGroupOfRadioButtonsToScreenReaders)
{
    auto* group = QAccessible::queryAccessibleInterface(item(QStringLiteral("picker")));
    EXPECT_EQ(group->role(), QAccessible::Grouping);
    EXPECT_EQ(group->text(QAccessible::Name), QStringLiteral("FPS"));
    auto* first = QAccessible::queryAccessibleInterface(pill(30));
    EXPECT_EQ(first->role(), QAccessible::RadioButton);
    EXPECT_EQ(first->text(QAccessible::Name), QStringLiteral("30 FPS"));
    EXPECT_TRUE(first->state().checked);
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(pill(60))->state().checked);
    click(pill(60));
    EXPECT_FALSE(first->state().checked);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(pill(60))->state().checked);
    window->setProperty("isLocked", true);
    click(pill(30));
    EXPECT_FALSE(first->state().checked);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(pill(60))->state().checked);
}

} // namespace
} // namespace quelto
