// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/QmlFixture.h"

#include <QAccessible>
#include <QSignalSpy>

namespace quelto {
namespace {

using test::colorOf;
using test::fontOf;
using test::outlineOf;

class Buttons : public test::QmlFixture {
protected:
    void holdDown(const QString& name) { QTest::mousePress(window, Qt::LeftButton, {}, middleOf(item(name))); }
    void letGo(const QString& name) { QTest::mouseRelease(window, Qt::LeftButton, {}, middleOf(item(name))); }
    /// The horizontal and vertical distance between the text and the edges of the control.
    QSizeF paddingOf(const QString& name, const QString& label)
    {
        const auto* words = text(label);
        const auto corner = words->mapToItem(item(name), {0, 0});
        return {corner.x(), corner.y()};
    }
};

TEST_F(Buttons, AccentIsFilledAndDarkensWhilePressed)
{
    show(QStringLiteral("AccentButton { objectName: 'button'; text: 'Kaydet' }"));
    EXPECT_EQ(fontOf(object(QStringLiteral("button"))).pixelSize(), 13);
    EXPECT_EQ(fontOf(text(QStringLiteral("Kaydet"))).weight(), QFont::DemiBold);
    EXPECT_EQ(paddingOf(QStringLiteral("button"), QStringLiteral("Kaydet")), QSizeF(16, 10));
    EXPECT_EQ(colorOf(text(QStringLiteral("Kaydet"))), QColor(Qt::white));
    const auto* box = background(QStringLiteral("button"));
    EXPECT_EQ(box->property("radius").toInt(), 6);
    EXPECT_EQ(outlineOf(box).width, 0);
    EXPECT_EQ(colorOf(box), theme->accent());
    holdDown(QStringLiteral("button"));
    EXPECT_EQ(colorOf(box), theme->accentDark());
    letGo(QStringLiteral("button"));
    QTest::mouseMove(window, QPoint(window->width() - 1, window->height() - 1));
    EXPECT_EQ(colorOf(box), theme->accent());
}

TEST_F(Buttons, TextButtonHasNoFrameAndIsBrighterUnderThePointer)
{
    show(
        QStringLiteral("TextButton { objectName: 'button'; text: 'Bu sürümü atla'; x: 100; y: 50; property int clicks\n"
                       "onClicked: ++clicks }\nTextButton { objectName: 'off'; text: 'Yok'; y: 150; enabled: false }"));
    const auto* words = text(QStringLiteral("Bu sürümü atla"));
    EXPECT_EQ(fontOf(words).pixelSize(), 12);
    EXPECT_EQ(colorOf(words), theme->muted());
    EXPECT_FALSE(words->property("truncated").toBool());
    EXPECT_EQ(paddingOf(QStringLiteral("button"), QStringLiteral("Bu sürümü atla")), QSizeF(0, 7));
    EXPECT_EQ(test::itemNamed(window, QStringLiteral("Bu sürümü atla")), item(QStringLiteral("button")));
    hover(item(QStringLiteral("button")));
    EXPECT_EQ(colorOf(words), theme->text());
    hover(item(QStringLiteral("off")));
    EXPECT_EQ(colorOf(text(QStringLiteral("Yok"))), theme->muted());
    item(QStringLiteral("button"))->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window, Qt::Key_Return);
    test::holdKey(window, Qt::Key_Space);
    EXPECT_EQ(object(QStringLiteral("button"))->property("clicks").toInt(), 2);
}

TEST_F(Buttons, KeyCapsDrawEachKeyAndReadAsOneShortcut)
{
    show(QStringLiteral("KeyCaps { objectName: 'caps'; keys: ['Alt', 'Umschalt', 'C'] }"));
    EXPECT_EQ(test::itemNamed(window, QStringLiteral("Alt+Umschalt+C")), item(QStringLiteral("caps")));
    double end = -4;
    for (const auto* key : {"Alt", "Umschalt", "C"}) {
        const auto* label = text(QLatin1String(key));
        ASSERT_NE(label, nullptr) << key;
        EXPECT_EQ(fontOf(label).pixelSize(), 11);
        EXPECT_EQ(colorOf(label), theme->text());
        const auto cap = test::placeOf(test::enclosingRectangle(label));
        EXPECT_EQ(cap.left(), end + 4) << key;
        EXPECT_TRUE(cap.contains(test::placeOf(label))) << key;
        EXPECT_GE(cap.width(), cap.height() - 2) << "the cap of one letter is square";
        end = cap.right();
    }
}

TEST_F(Buttons, FilledAccentIsDarkerUnderThePointer)
{
    show(QStringLiteral("AccentButton { objectName: 'button'; text: 'Kaydet'; x: 100; y: 50 }\n"
                        "AccentButton { objectName: 'red'; text: 'Sil'; x: 100; y: 150; destructive: true }\n"
                        "AccentButton { objectName: 'off'; text: 'Yok'; x: 100; y: 250; enabled: false }"));
    const auto* box = background(QStringLiteral("button"));
    hover(item(QStringLiteral("button")));
    EXPECT_LT(colorOf(box).lightness(), theme->accent().lightness());
    EXPECT_GT(colorOf(box).lightness(), theme->accentDark().lightness());
    hover(item(QStringLiteral("red")));
    EXPECT_EQ(colorOf(box), theme->accent());
    EXPECT_LT(colorOf(background(QStringLiteral("red"))).lightness(), theme->live().lightness());
    hover(item(QStringLiteral("off")));
    EXPECT_EQ(colorOf(background(QStringLiteral("off"))), theme->accent());
}

TEST_F(Buttons, UnfilledAccentIsACardWithAnOutline)
{
    show(QStringLiteral(
        "AccentButton { objectName: 'button'; x: 100; y: 50; text: 'Klasör'; filled: false; compact: true }"));
    EXPECT_EQ(fontOf(text(QStringLiteral("Klasör"))).pixelSize(), 12);
    EXPECT_EQ(paddingOf(QStringLiteral("button"), QStringLiteral("Klasör")), QSizeF(12, 7));
    EXPECT_EQ(colorOf(text(QStringLiteral("Klasör"))), theme->text());
    const auto* box = background(QStringLiteral("button"));
    EXPECT_EQ(outlineOf(box).width, 1);
    EXPECT_EQ(outlineOf(box).color, theme->border());
    EXPECT_EQ(colorOf(box), theme->card());
    hover(item(QStringLiteral("button")));
    EXPECT_EQ(colorOf(box), theme->cardHover());
    holdDown(QStringLiteral("button"));
    EXPECT_EQ(colorOf(box), theme->cardHover());
    letGo(QStringLiteral("button"));
}

TEST_F(Buttons, AccentStretchesUnlessCompact)
{
    show(QStringLiteral("ColumnLayout { width: 300\n"
                        "AccentButton { objectName: 'wide'; text: 'Kaydet' }\n"
                        "AccentButton { objectName: 'compact'; text: 'Kaydet'; compact: true } }"));
    EXPECT_EQ(item(QStringLiteral("wide"))->width(), 300);
    EXPECT_EQ(item(QStringLiteral("compact"))->width(), std::ceil(item(QStringLiteral("compact"))->implicitWidth()));
}

TEST_F(Buttons, BusyAccentShowsASpinnerAndIsNotDimmed)
{
    show(QStringLiteral(
        "AccentButton { objectName: 'button'; text: 'Kaydet'; symbol: 'scissors'; busy: true; enabled: false }"));
    const auto children = item(QStringLiteral("button"))->findChildren<QQuickItem*>();
    QStringList shown;
    for (const auto* each : children) {
        if (each->isVisible() && each->property("symbol").isValid() && each->property("source").isValid()) {
            shown.append(each->property("symbol").toString());
        }
    }
    EXPECT_EQ(shown, QStringList{QStringLiteral("progress")});
    EXPECT_EQ(item(QStringLiteral("button"))->opacity(), 1);
}

TEST_F(Buttons, GhostIsAPlainCard)
{
    show(QStringLiteral("GhostButton { objectName: 'button'; x: 100; y: 50; text: 'Kırp' }\n"
                        "GhostButton { y: 150; text: 'Sil'; destructive: true }"));
    EXPECT_EQ(fontOf(text(QStringLiteral("Kırp"))).pixelSize(), 13);
    EXPECT_EQ(fontOf(text(QStringLiteral("Kırp"))).weight(), QFont::Medium);
    EXPECT_EQ(paddingOf(QStringLiteral("button"), QStringLiteral("Kırp")), QSizeF(12, 9));
    EXPECT_EQ(colorOf(text(QStringLiteral("Kırp"))), theme->text());
    EXPECT_EQ(colorOf(text(QStringLiteral("Sil"))), theme->live());
    const auto* box = background(QStringLiteral("button"));
    EXPECT_EQ(box->property("radius").toInt(), 6);
    EXPECT_EQ(colorOf(box), theme->card());
    hover(item(QStringLiteral("button")));
    EXPECT_EQ(colorOf(box), theme->cardHover());
    holdDown(QStringLiteral("button"));
    EXPECT_EQ(colorOf(box), theme->cardHover());
    letGo(QStringLiteral("button"));
}

struct ButtonKind {
    const char* name;
    const char* qml;
};

void PrintTo(const ButtonKind& kind, std::ostream* out)
{
    *out << kind.name;
}

class EveryButton : public Buttons, public testing::WithParamInterface<ButtonKind> { };

TEST_P(EveryButton, ActsOncePerKeyPressAndClick)
{
    show(QString::fromLatin1(GetParam().qml));
    auto* button = item(QStringLiteral("button"));
    button->forceActiveFocus(Qt::TabFocusReason);
    const auto clicks = [&] { return read(QStringLiteral("button"), "clicks").toInt(); };
    press(Qt::Key_Return);
    EXPECT_EQ(clicks(), 1);
    press(Qt::Key_Enter);
    EXPECT_EQ(clicks(), 2);
    press(Qt::Key_Space);
    EXPECT_EQ(clicks(), 3);
    click(button);
    EXPECT_EQ(clicks(), 4);
    int expected = 4;
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        test::holdKey(window, key);
        EXPECT_EQ(clicks(), ++expected) << "held: " << key;
    }
    button->setEnabled(false);
    click(button);
    press(Qt::Key_Return);
    EXPECT_EQ(clicks(), expected);
    EXPECT_LT(button->opacity(), 1);
}

TEST_P(EveryButton, ShowsAFocusRingForKeyboardFocusOnly)
{
    show(QString::fromLatin1(GetParam().qml));
    const auto ringIsShown = [&] {
        for (const auto* child : background(QStringLiteral("button"))->childItems()) {
            if (child->property("active").isValid()) {
                return child->isVisible();
            }
        }
        return false;
    };
    click(item(QStringLiteral("button")));
    EXPECT_FALSE(ringIsShown());
    item(QStringLiteral("button"))->setFocus(false);
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), item(QStringLiteral("button")));
    EXPECT_TRUE(ringIsShown());
}

TEST_P(EveryButton, HasAnAccessibleRoleAndName)
{
    show(QString::fromLatin1(GetParam().qml));
    auto* interface = QAccessible::queryAccessibleInterface(item(QStringLiteral("button")));
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::Button);
    EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Kaydet"));
    EXPECT_TRUE(interface->state().focusable);
}

INSTANTIATE_TEST_SUITE_P(Kinds, EveryButton,
                         testing::Values(ButtonKind{"Accent",
                                                    "AccentButton { objectName: 'button'; text: 'Kaydet'; width: 160\n"
                                                    "property int clicks: 0; onClicked: clicks++ }"},
                                         ButtonKind{"Ghost",
                                                    "GhostButton { objectName: 'button'; text: 'Kaydet'; width: 160\n"
                                                    "property int clicks: 0; onClicked: clicks++ }"}),
                         [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace quelto
