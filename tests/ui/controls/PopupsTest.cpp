// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/QmlFixture.h"

#include <QAccessible>

namespace quelto {
namespace {

using test::colorOf;

class ConfirmationDialog : public test::QmlFixture {
protected:
    void SetUp() override
    {
        QmlFixture::SetUp();
        show(QStringLiteral("property var answers: []\n"
                            "GhostButton { objectName: 'behind'; text: 'Kırp'; focus: true; property int clicks: 0\n"
                            "onClicked: clicks++ }\n"
                            "ConfirmationDialog { objectName: 'dialog'; title: 'Taşınsın mı?'; message: 'PENTAKILL'\n"
                            "confirmText: 'Taşı'; cancelText: 'Vazgeç'; destructive: true\n"
                            "onConfirmed: answers.push('yes'); onCancelled: answers.push('no')\n"
                            "onDismissed: answers.push('none') }"),
             {700, 480});
        open();
    }
    void open()
    {
        QMetaObject::invokeMethod(object(QStringLiteral("dialog")), "open");
        ASSERT_TRUE(QTest::qWaitFor([&] { return read(QStringLiteral("dialog"), "opened").toBool(); }));
    }
    QStringList answers() const { return window->property("answers").toStringList(); }
    QQuickItem* button(const char* label) const { return text(QString::fromUtf8(label))->parentItem()->parentItem(); }
};

TEST_F(ConfirmationDialog, IsCentredInTheWindow)
{
    const auto* body = text(QStringLiteral("Taşınsın mı?"))->parentItem();
    EXPECT_NEAR(middleOf(body).x(), 350, 1);
    EXPECT_NEAR(middleOf(body).y(), 240, 1);
    EXPECT_NE(text(QStringLiteral("PENTAKILL")), nullptr);
}

TEST_F(ConfirmationDialog, FocusesCancelInitially)
{
    EXPECT_EQ(focused(), button("Vazgeç"));
    press(Qt::Key_Return);
    EXPECT_EQ(answers(), QStringList{QStringLiteral("no")});
    EXPECT_FALSE(read(QStringLiteral("dialog"), "visible").toBool());
}

TEST_F(ConfirmationDialog, ConfirmsByKeyboard)
{
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), button("Taşı"));
    press(Qt::Key_Return);
    EXPECT_EQ(answers(), QStringList{QStringLiteral("yes")});
}

TEST_F(ConfirmationDialog, KeepsTheFocusInside)
{
    for (int i = 0; i < 5; ++i) {
        press(Qt::Key_Tab);
        EXPECT_NE(focused(), item(QStringLiteral("behind")));
    }
    press(Qt::Key_Right);
    EXPECT_EQ(focused(), button("Taşı"));
    press(Qt::Key_Left);
    EXPECT_EQ(focused(), button("Vazgeç"));
}

TEST_F(ConfirmationDialog, FocusesCancelEachTime)
{
    press(Qt::Key_Tab);
    press(Qt::Key_Escape);
    open();
    EXPECT_EQ(focused(), button("Vazgeç"));
}

TEST_F(ConfirmationDialog, IsDismissedByEscapeOnce)
{
    press(Qt::Key_Escape);
    EXPECT_EQ(answers(), QStringList{QStringLiteral("none")});
}

TEST_F(ConfirmationDialog, IsDismissedByClosing)
{
    QMetaObject::invokeMethod(object(QStringLiteral("dialog")), "close");
    EXPECT_EQ(answers(), QStringList{QStringLiteral("none")});
}

TEST_F(ConfirmationDialog, AnswersByClickWithoutKeepingTheLastAnswer)
{
    click(button("Taşı"));
    open();
    press(Qt::Key_Escape);
    open();
    click(button("Vazgeç"));
    EXPECT_EQ(answers(), (QStringList{QStringLiteral("yes"), QStringLiteral("none"), QStringLiteral("no")}));
}

TEST_F(ConfirmationDialog, BlocksClicksBehindIt)
{
    QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(item(QStringLiteral("behind"))));
    EXPECT_EQ(read(QStringLiteral("behind"), "clicks").toInt(), 0);
    EXPECT_TRUE(answers().isEmpty());
    EXPECT_TRUE(read(QStringLiteral("dialog"), "opened").toBool());
}

TEST_F(ConfirmationDialog, DestructiveConfirmButtonIsRed)
{
    EXPECT_EQ(colorOf(button("Taşı")->property("background").value<QQuickItem*>()), theme->live());
    object(QStringLiteral("dialog"))->setProperty("destructive", false);
    EXPECT_EQ(colorOf(button("Taşı")->property("background").value<QQuickItem*>()), theme->accent());
}

TEST_F(ConfirmationDialog, IsADialogToScreenReaders)
{
    auto* interface = QAccessible::queryAccessibleInterface(text(QStringLiteral("Taşınsın mı?"))->parentItem());
    EXPECT_EQ(interface->role(), QAccessible::Dialog);
    EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Taşınsın mı?"));
    EXPECT_EQ(interface->text(QAccessible::Description), QStringLiteral("PENTAKILL"));
}

TEST_F(ConfirmationDialog, FitsANarrowWindow)
{
    press(Qt::Key_Escape);
    window->resize(320, 480);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->contentItem()->width() == 320; }));
    open();
    EXPECT_LE(read(QStringLiteral("dialog"), "width").toInt(), 280);
    EXPECT_GE(button("Vazgeç")->mapToScene({0, 0}).x(), 20);
}

class ConfirmationWithAlternative : public test::QmlFixture {
protected:
    void ask(const QString& alternative)
    {
        show(QStringLiteral("property var answers: []\n"
                            "ConfirmationDialog { objectName: 'dialog'; visible: true; title: 'Silinsin mi?'\n"
                            "alternativeText: '%1'; confirmText: 'Sil'; cancelText: 'Vazgeç'; destructive: true\n"
                            "onConfirmed: answers.push('yes'); onAlternativeChosen: answers.push('other')\n"
                            "onCancelled: answers.push('no'); onDismissed: answers.push('none') }")
                 .arg(alternative),
             {700, 480});
        ASSERT_TRUE(QTest::qWaitFor([&] { return read(QStringLiteral("dialog"), "opened").toBool(); }));
        window->grabWindow();
    }
    QStringList answers() const { return window->property("answers").toStringList(); }
    QQuickItem* button(const QString& label) const { return text(label)->parentItem()->parentItem(); }
    QRectF placeOf(const QString& label) const { return test::placeOf(button(label)); }

    const QString brief = QStringLiteral("Gizle");
    const QString lengthy = QStringLiteral("Sadece bu maçın özetini sil (klipler klasörde kalır)");
    const QString confirm = QStringLiteral("Sil");
    const QString cancel = QStringLiteral("Vazgeç");
};

TEST_F(ConfirmationWithAlternative, ShortButtonsShareOneRow)
{
    ask(brief);
    EXPECT_EQ(placeOf(brief).top(), placeOf(cancel).top());
    EXPECT_EQ(placeOf(confirm).top(), placeOf(cancel).top());
    EXPECT_GT(placeOf(brief).left(), placeOf(cancel).right());
    EXPECT_GT(placeOf(confirm).left(), placeOf(brief).right());
}

TEST_F(ConfirmationWithAlternative, LongButtonsAreBelowEachOtherInFullWidth)
{
    ask(lengthy);
    EXPECT_GT(placeOf(confirm).top(), placeOf(lengthy).bottom());
    EXPECT_GT(placeOf(cancel).top(), placeOf(confirm).bottom());
    EXPECT_EQ(placeOf(confirm).width(), placeOf(lengthy).width());
    EXPECT_EQ(placeOf(cancel).width(), placeOf(lengthy).width());
    EXPECT_EQ(placeOf(lengthy).left(), placeOf(cancel).left());
    EXPECT_FALSE(text(lengthy)->property("truncated").toBool());
}

TEST_F(ConfirmationWithAlternative, CancelHasTheFocusAndArrowsReachEveryButton)
{
    ask(lengthy);
    EXPECT_EQ(focused(), button(cancel));
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), button(confirm));
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), button(lengthy));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), button(cancel));
}

TEST_F(ConfirmationWithAlternative, EachButtonGivesItsAnswer)
{
    ask(brief);
    for (const auto& label : {brief, confirm, cancel}) {
        click(button(label));
        QMetaObject::invokeMethod(object(QStringLiteral("dialog")), "open");
    }
    press(Qt::Key_Escape);
    EXPECT_EQ(
        answers(),
        QStringList({QStringLiteral("other"), QStringLiteral("yes"), QStringLiteral("no"), QStringLiteral("none")}));
}

class ThemedToolTip : public test::QmlFixture {
protected:
    bool isShown(const QString& words) const { return text(words) != nullptr; }
};

TEST_F(ThemedToolTip, OpensOnlyUnderThePointer)
{
    show(QStringLiteral("Rectangle { objectName: 'area'; x: 200; y: 100; width: 60; height: 30\n"
                        "ThemedToolTip { text: 'Mikrofon' } }"));
    EXPECT_FALSE(isShown(QStringLiteral("Mikrofon")));
    hover(item(QStringLiteral("area")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return isShown(QStringLiteral("Mikrofon")); }));
    const auto* tip = text(QStringLiteral("Mikrofon"));
    EXPECT_LT(tip->mapToScene({0, tip->height()}).y(), 100);
    EXPECT_NEAR(middleOf(tip).x(), 230, 1);
    QTest::mouseMove(window, {5, 5});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isShown(QStringLiteral("Mikrofon")); }));
}

TEST_F(ThemedToolTip, LongTextWrapsInsideTheWindow)
{
    const auto words = QStringLiteral("Ein sehr langer Name ").repeated(12);
    show(QStringLiteral("Rectangle { objectName: 'area'; x: 10; y: 200; width: 60; height: 30\n"
                        "ThemedToolTip { text: '%1' } }")
             .arg(words));
    hover(item(QStringLiteral("area")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return isShown(words); }));
    window->grabWindow();
    const auto place = test::placeOf(text(words));
    EXPECT_TRUE(QRectF({}, window->size()).contains(place));
    EXPECT_LE(place.width(), 420);
    EXPECT_GT(text(words)->property("lineCount").toInt(), 1);
    EXPECT_LT(place.bottom(), 200);
    picture(QStringLiteral("control-tooltip-long"));
}

class ThemedMenu : public test::QmlFixture {
protected:
    void SetUp() override
    {
        QmlFixture::SetUp();
        show(QStringLiteral("property var asked: []\n"
                            "ThemedMenu { objectName: 'menu'; title: 'Klip'; x: 20; y: 20\n"
                            "ThemedMenuItem { text: 'Oynat'; onTriggered: asked.push('play') }\n"
                            "ThemedMenuItem { text: 'Dosyayı Kopyala ve yapıştır'; onTriggered: asked.push('copy') }\n"
                            "ThemedMenuItem { text: 'Taşı'; destructive: true; onTriggered: asked.push('trash') } }"));
        QMetaObject::invokeMethod(object(QStringLiteral("menu")), "open");
        ASSERT_TRUE(QTest::qWaitFor([&] { return read(QStringLiteral("menu"), "opened").toBool(); }));
    }
    QStringList asked() const { return window->property("asked").toStringList(); }
    QQuickItem* entry(const char* label) const { return text(QString::fromUtf8(label))->parentItem()->parentItem(); }
    bool isOpen() const { return read(QStringLiteral("menu"), "visible").toBool(); }
};

TEST_F(ThemedMenu, IsAsWideAsItsWidestEntry)
{
    const auto* words = text(QStringLiteral("Dosyayı Kopyala ve yapıştır"));
    EXPECT_FALSE(words->property("truncated").toBool());
    EXPECT_EQ(read(QStringLiteral("menu"), "width").toDouble(), words->implicitWidth() + 24 + 10);
    EXPECT_EQ(entry("Oynat")->width(), entry("Taşı")->width());
}

TEST_F(ThemedMenu, ActsByClickAndCloses)
{
    click(entry("Taşı"));
    EXPECT_EQ(asked(), QStringList{QStringLiteral("trash")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isOpen(); }));
}

TEST_F(ThemedMenu, ActsByArrowKeysAndEnter)
{
    press(Qt::Key_Down);
    EXPECT_TRUE(entry("Oynat")->property("highlighted").toBool());
    press(Qt::Key_Down);
    EXPECT_TRUE(entry("Dosyayı Kopyala ve yapıştır")->property("highlighted").toBool());
    picture(QStringLiteral("control-menu-highlighted"));
    press(Qt::Key_Return);
    EXPECT_EQ(asked(), QStringList{QStringLiteral("copy")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isOpen(); }));
}

TEST_F(ThemedMenu, ClosesByEscapeWithoutActing)
{
    press(Qt::Key_Down);
    press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isOpen(); }));
    EXPECT_TRUE(asked().isEmpty());
}

TEST_F(ThemedMenu, DestructiveEntryIsRed)
{
    EXPECT_EQ(colorOf(text(QStringLiteral("Taşı"))), theme->live());
    EXPECT_EQ(colorOf(text(QStringLiteral("Oynat"))), theme->text());
    for (int i = 0; i < 3; ++i) {
        press(Qt::Key_Down);
    }
    EXPECT_TRUE(entry("Taşı")->property("highlighted").toBool());
    EXPECT_EQ(colorOf(text(QStringLiteral("Taşı"))), QColor(Qt::white));
    picture(QStringLiteral("control-menu-highlighted-destructive"));
}

TEST_F(ThemedMenu, IsAMenuToScreenReaders)
{
    auto* interface = QAccessible::queryAccessibleInterface(entry("Oynat"));
    EXPECT_EQ(interface->role(), QAccessible::MenuItem);
    EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Oynat"));
    auto* drawn = object(QStringLiteral("menu"))->property("contentItem").value<QQuickItem*>()->parentItem();
    auto* menu = QAccessible::queryAccessibleInterface(drawn);
    EXPECT_EQ(menu->role(), QAccessible::PopupMenu);
    EXPECT_EQ(menu->text(QAccessible::Name), QStringLiteral("Klip"));
}

class ThemedMenuWithKeys : public test::QmlFixture {
protected:
    void SetUp() override
    {
        QmlFixture::SetUp();
        show(QStringLiteral("ThemedMenu { objectName: 'menu'; x: 20; y: 20\n"
                            "ShortcutAction { text: 'Klasör'; keys: 'Ctrl+Shift+O' }\n"
                            "Action { text: 'Hakkında' } }"));
        QMetaObject::invokeMethod(object(QStringLiteral("menu")), "open");
    }
};

TEST_F(ThemedMenuWithKeys, ShowsTheShortcutAfterTheText)
{
    EXPECT_NE(text(QStringLiteral("Ctrl+Shift+O")), nullptr);
}

} // namespace
} // namespace quelto
