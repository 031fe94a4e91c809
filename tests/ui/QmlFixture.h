// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "ui/theme/Theme.h"

#include "tests/ui/ItemAppearance.h"

#include <QQmlApplicationEngine>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quelto::test {

/// Shows QML objects in a window of their own. Items are found by their objectName.
class QmlFixture : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Opens a window of that size that contains the QML objects.
    void show(const QString& qml, QSize size = {480, 320});
    /// Opens the window that a QML file declares.
    void showFile(const QString& path);
    /// The object with that name. A missing object fails the test.
    QObject* object(const QString& name) const;
    QQuickItem* item(const QString& name) const;
    /// The visible item that shows exactly that text; null if there is none.
    QQuickItem* text(const QString& shown) const { return labelWith(window, shown); }
    QQuickItem* focused() const { return window->activeFocusItem(); }
    QVariant read(const QString& name, const char* property) const { return object(name)->property(property); }
    QColor color(const QString& name, const char* property) const { return read(name, property).value<QColor>(); }
    /// The background of the control with that name.
    QQuickItem* background(const QString& name) const;

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(window, key, modifiers); }
    void click(const QQuickItem* target);
    void hover(const QQuickItem* target);
    static QPoint middleOf(const QQuickItem* target) { return test::middleOf(target); }
    QImage picture(const QString& name) { return savePicture(window, name); }

    /// What show() imports beside the basic modules.
    QString imports;
    QTemporaryDir folder;
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
    std::unique_ptr<Theme> theme;
    std::unique_ptr<QQmlApplicationEngine> engine;
    QQuickWindow* window = nullptr;

private:
    void takeWindow();
};

} // namespace quelto::test
