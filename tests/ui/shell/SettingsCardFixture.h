// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

namespace quelto::test {

/// Cards of the settings page in a window of their own, with the real objects behind them.
class SettingsCardFixture : public ShellFixture {
protected:
    int cardWidth = 640;

    /// Opens a window with the cards one below the other. From then on `window` is that window.
    void showCards(const QString& qml, int height = 900)
    {
        const auto source = QStringLiteral("import QtQuick\nimport Quelto.Controls\nimport Quelto.SettingsPage\n"
                                           "import Quelto.Theme\n"
                                           "Window { width: %1; height: %2; visible: true; color: Theme.bg\n"
                                           "FocusScope { anchors.fill: parent; focus: true\n"
                                           "Column { x: 20; y: 20; width: parent.width - 40; spacing: 18\n%3 } } }\n")
                                .arg(cardWidth + 40)
                                .arg(height)
                                .arg(qml);
        engine->loadData(source.toUtf8());
        window = qobject_cast<QQuickWindow*>(engine->rootObjects().last());
        ASSERT_NE(window, nullptr);
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }
    /// Uses the language and colours, then opens the window.
    void showCards(const QString& qml, const char* language, const char* palette, int height = 900)
    {
        settings.setLanguage(QLatin1String(language));
        settings.setColorTheme(QLatin1String(palette));
        time.settle();
        showCards(qml, height);
    }
    /// Moves the keyboard focus there as Tab does.
    void focus(const QString& accessibleName) const { item(accessibleName)->forceActiveFocus(Qt::TabFocusReason); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const { QTest::keyClick(window, key, modifiers); }
    /// The accessible name of the item with the keyboard focus.
    QString focusedName() const
    {
        auto* const focused = window->activeFocusItem();
        auto* const interface = focused == nullptr ? nullptr : QAccessible::queryAccessibleInterface(focused);
        return interface == nullptr ? QString() : interface->text(QAccessible::Name);
    }
    bool isChecked(const QString& accessibleName) const
    {
        auto* const found = item(accessibleName);
        return found != nullptr && QAccessible::queryAccessibleInterface(found)->state().checked;
    }
    bool hasItem(const QString& accessibleName) const { return itemNamed(window, accessibleName) != nullptr; }
};

} // namespace quelto::test
