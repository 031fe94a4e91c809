// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/MainQueue.h"
#include "library/thumbnails/ThumbnailCache.h"
#include "ui/screens/library/ClipCommands.h"
#include "ui/shared/Navigation.h"
#include "ui/theme/Theme.h"

#include "tests/library/clips/LibraryFixture.h"
#include "tests/ui/RecordingDesktop.h"
#include "tests/ui/SeenInWindow.h"

#include <QQmlApplicationEngine>

namespace quelto::test {

/// The library's screen in a window of its own, over real files in a folder.
class LibraryScreenFixture : public LibraryFixture {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Before the window is made: takes readings from there instead of from the files, at once or when `work` runs
    /// them.
    void readClipsBy(
        const std::function<ClipPreview(const QString& path)>& read,
        const std::function<void(Task)>& work = [](const Task& task) { task(); });
    /// Makes the window; what is in the folder by then it shows at once.
    void show(const QString& properties = {});
    /// Reads the folder anew.
    void reload();
    /// Waits until all that moves and loads has come to rest.
    void settle(int milliseconds = 250) const;
    void drawFrames() const;

    /// The visible item that screen readers call by that name; null if there is none.
    QQuickItem* find(const QString& accessibleName) const { return itemNamed(window, accessibleName); }
    /// A failed expectation if there is none.
    QQuickItem* item(const QString& accessibleName) const;
    /// The visible items of that QML type, in the order in which they were made.
    QList<QQuickItem*> itemsOf(const char* qmlType) const;
    QQuickItem* textItem(const QString& text) const { return labelWith(window, text); }
    bool shows(const QString& text) const { return textItem(text) != nullptr; }
    /// The visible cards from top to bottom and left to right, by their titles.
    QStringList cardTitles() const;
    QQuickItem* card(const QString& title) const;
    static QPoint middleOf(const QQuickItem* item) { return test::middleOf(item); }
    void click(QQuickItem* item, Qt::MouseButton button = Qt::LeftButton);
    void key(int key, Qt::KeyboardModifiers modifiers = {});
    QImage picture(const QString& name) { return keptPicture(window, name); }

    MainQueue mainQueue;
    ManualTime toastTime;
    ManualQueue toastQueue{toastTime};
    Navigation navigation{toastQueue};
    Theme theme{settings};
    RecordingFileManager files;
    RecordingPasteboard pasteboard;
    std::unique_ptr<ThumbnailCache> thumbnails;
    std::unique_ptr<ClipCommands> commands;
    /// What was dragged, and the picture that went along.
    QStringList dragged;
    QImage draggedPicture;
    std::unique_ptr<QQmlApplicationEngine> engine;
    QQuickWindow* window = nullptr;
    QSize size{1000, 760};
};

} // namespace quelto::test
