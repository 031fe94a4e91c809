// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/QmlFixture.h"

#include <QAccessible>

namespace quelto {
namespace {

using test::colorOf;
using test::outlineOf;

class SearchField : public test::QmlFixture {
protected:
    void SetUp() override
    {
        QmlFixture::SetUp();
        show(QStringLiteral("property int escapes: 0\n"
                            "FocusScope { anchors.fill: parent; focus: true; Keys.onEscapePressed: escapes++\n"
                            "SearchField { objectName: 'field'; x: 20; y: 20; placeholder: 'Ara'; focus: true } }"));
    }
    QString written() const { return read(QStringLiteral("field"), "text").toString(); }
};

TEST_F(SearchField, HasTheLookOfASmallPanel)
{
    const auto* field = item(QStringLiteral("field"));
    EXPECT_EQ(field->width(), 170);
    const auto* box = background(QStringLiteral("field"));
    EXPECT_EQ(colorOf(box), theme->panel());
    EXPECT_EQ(box->property("radius").toInt(), 6);
    EXPECT_EQ(outlineOf(box).width, 1);
    item(QStringLiteral("field"))->setFocus(false);
    EXPECT_EQ(outlineOf(box).color, theme->border());
    const auto* symbol = box->childItems().first();
    EXPECT_EQ(symbol->property("symbol").toString(), QStringLiteral("magnifyingglass"));
    EXPECT_EQ(symbol->x(), 12);
    EXPECT_EQ(colorOf(symbol), theme->muted());
    EXPECT_EQ(field->height(), read(QStringLiteral("field"), "contentHeight").toDouble() + 16);
}

TEST_F(SearchField, ShowsItsPlaceholderWhileEmpty)
{
    EXPECT_NE(text(QStringLiteral("Ara")), nullptr);
    press(Qt::Key_P);
    EXPECT_EQ(written(), QStringLiteral("p"));
    EXPECT_EQ(text(QStringLiteral("Ara")), nullptr);
}

TEST_F(SearchField, EscapeClearsItAndThenReachesTheScreen)
{
    press(Qt::Key_P);
    press(Qt::Key_Escape);
    EXPECT_EQ(written(), QString());
    EXPECT_EQ(window->property("escapes").toInt(), 0);
    press(Qt::Key_Escape);
    EXPECT_EQ(window->property("escapes").toInt(), 1);
}

TEST_F(SearchField, IsATextFieldToScreenReaders)
{
    auto* interface = QAccessible::queryAccessibleInterface(item(QStringLiteral("field")));
    EXPECT_EQ(interface->role(), QAccessible::EditableText);
    EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Ara"));
}

class ThemedScrollBar : public test::QmlFixture {
protected:
    void show(int entries)
    {
        QmlFixture::show(QStringLiteral("ListView { objectName: 'list'; anchors.fill: parent; model: %1\n"
                                        "delegate: Item { width: 10; height: 24 }\n"
                                        "ThemedScrollBar.vertical: ThemedScrollBar { objectName: 'bar' } }")
                             .arg(entries));
    }
};

TEST_F(ThemedScrollBar, ScrollsTheListWhenDragged)
{
    show(100);
    auto* bar = item(QStringLiteral("bar"));
    const auto* handle = read(QStringLiteral("bar"), "contentItem").value<QQuickItem*>();
    const auto start = middleOf(handle);
    QTest::mousePress(window, Qt::LeftButton, {}, start);
    QTest::mouseMove(window, start + QPoint(0, 40));
    QTest::mouseMove(window, start + QPoint(0, 80));
    QTest::mouseRelease(window, Qt::LeftButton, {}, start + QPoint(0, 80));
    EXPECT_GT(read(QStringLiteral("list"), "contentY").toDouble(), 100);
    EXPECT_TRUE(bar->isVisible());
}

TEST_F(ThemedScrollBar, HidesIfAllContentIsVisible)
{
    show(3);
    EXPECT_FALSE(item(QStringLiteral("bar"))->isVisible());
}

TEST_F(ThemedScrollBar, HasAMinimumHandleLength)
{
    show(20000);
    EXPECT_GE(read(QStringLiteral("bar"), "contentItem").value<QQuickItem*>()->height(), 27);
}

} // namespace
} // namespace quelto
