// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/ui/shell/ShellFixture.h"

namespace quelto::test {

/// The settings page in the real window.
class SettingsFixture : public ShellFixture {
protected:
    void SetUp() override
    {
        ShellFixture::SetUp();
        openPage();
    }

    void openPage()
    {
        navigation->showSettings();
        drawFrame();
    }
    /// The view that scrolls the cards.
    QQuickItem* view() const
    {
        auto* ancestor = item(QStringLiteral("Klip uzunluğu"));
        while (ancestor != nullptr && !ancestor->inherits("QQuickFlickable")) {
            ancestor = ancestor->parentItem();
        }
        return ancestor;
    }
    double position() const { return view()->property("contentY").toDouble(); }
    void scrollTo(double y) const
    {
        view()->setProperty("contentY", y);
        drawFrame();
    }
    /// The item with that role and name; null if there is none.
    QQuickItem* find(QAccessible::Role role, const QString& name) const
    {
        return firstVisible(window, [&](QQuickItem* each) {
            const auto* interface = QAccessible::queryAccessibleInterface(each);
            return interface != nullptr && interface->role() == role && interface->text(QAccessible::Name) == name;
        });
    }
    QQuickItem* card(const char* title) const { return find(QAccessible::Grouping, QString::fromUtf8(title)); }
    QQuickItem* section(const char* title) const { return find(QAccessible::PageTab, QString::fromUtf8(title)); }
    bool isLit(const char* title) const
    {
        return QAccessible::queryAccessibleInterface(section(title))->state().selected;
    }
    /// Units: logical pixels from the top of the window.
    double topOf(const QQuickItem* each) const { return each->mapToScene({0, 0}).y(); }
    /// Scrolls the control into view without giving it the focus, and clicks it.
    void use(QQuickItem* control) const
    {
        ASSERT_NE(control, nullptr);
        scrollTo(std::max(0.0, position() + topOf(control) - 300));
        clickOn(control);
    }
    void clickOn(const QQuickItem* visible) const
    {
        ASSERT_NE(visible, nullptr);
        QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(visible));
        QCoreApplication::processEvents();
    }
    void useToggle(const char* name) const { use(find(QAccessible::CheckBox, QString::fromUtf8(name))); }
    QQuickItem* pillOf(const char* picker, const char* label) const
    {
        auto* group = find(QAccessible::Grouping, QString::fromUtf8(picker));
        return group == nullptr ? nullptr : firstVisibleOn(group, [&](QQuickItem* each) {
            return each->inherits("QQuickRadioButton") && each->property("text").toString() == QString::fromUtf8(label);
        });
    }
    QQuickItem* menu(const char* name) const { return find(QAccessible::ComboBox, QString::fromUtf8(name)); }
    QString shownBy(const char* name) const { return menu(name)->property("shownText").toString(); }
    /// Chooses an entry of a menu.
    void pickFrom(const char* name, const char* entry) const
    {
        use(menu(name));
        clickOn(find(QAccessible::ListItem, QString::fromUtf8(entry)));
    }
};

} // namespace quelto::test
