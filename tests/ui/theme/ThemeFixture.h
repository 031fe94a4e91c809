// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "ui/theme/Theme.h"

#include "tests/ui/ItemAppearance.h"

#include <QQmlApplicationEngine>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quelto::test {

/// Shows controls in a window of their own. Items are found by their objectName.
class ThemeFixture : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Opens a window of that size with the QML objects in it.
    void show(const QString& qml, QSize size = {480, 320});
    /// Opens the window that a QML file describes.
    void showFile(const QString& path);
    /// The object of that name, a failed expectation if there is none.
    QObject* object(const QString& name) const;
    QQuickItem* item(const QString& name) const;
    /// The visible item that shows exactly that text; none is a null pointer.
    QQuickItem* text(const QString& shown) const { return labelWith(window, shown); }
    QQuickItem* focused() const { return window->activeFocusItem(); }
    QVariant read(const QString& name, const char* property) const { return object(name)->property(property); }
    QColor color(const QString& name, const char* property) const { return read(name, property).value<QColor>(); }
    /// What lies behind the control of that name.
    QQuickItem* background(const QString& name) const;

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(window, key, modifiers); }
    void click(const QQuickItem* target);
    void hover(const QQuickItem* target);
    static QPoint middleOf(const QQuickItem* target) { return test::middleOf(target); }
    QImage picture(const QString& name) { return savePicture(window, name); }

    QTemporaryDir folder;
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
    std::unique_ptr<Theme> theme;
    std::unique_ptr<QQmlApplicationEngine> engine;
    QQuickWindow* window = nullptr;

private:
    void takeWindow();
};

} // namespace quelto::test
