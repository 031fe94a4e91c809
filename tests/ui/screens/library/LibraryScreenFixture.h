// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/MainQueue.h"
#include "hotkey/HotKeyManager.h"
#include "library/thumbnails/ThumbnailCache.h"
#include "ui/screens/library/ClipCommands.h"
#include "ui/shared/Navigation.h"
#include "ui/theme/Theme.h"

#include "tests/capture/FakePlatform.h"
#include "tests/library/clips/LibraryFixture.h"
#include "tests/ui/RecordingDesktop.h"
#include "tests/ui/WindowInspection.h"

#include <QQmlApplicationEngine>

namespace quelto::test {

/// The library screen in a window of its own, with real files in a folder.
class LibraryScreenFixture : public LibraryFixture {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Replaces the reader of clip files; `work` runs the reads. Call it before show().
    void setClipReader(
        const std::function<ClipPreview(const QString& path)>& read,
        const std::function<void(Task)>& work = [](const Task& task) { task(); });
    /// Creates the window with those properties of the LibraryView.
    void show(const QString& properties = {});
    /// Creates the window with those items in place of a LibraryView.
    void showItems(const QString& items);
    /// Reads the folder again.
    void reload();
    /// Waits until animations and loading have ended.
    void settle(int milliseconds = 250) const;
    void drawFrames() const;

    /// The visible item with that accessible name; null if there is none.
    QQuickItem* find(const QString& accessibleName) const { return itemNamed(window, accessibleName); }
    /// The same, with a failed expectation if there is none.
    QQuickItem* item(const QString& accessibleName) const;
    /// The visible items of that QML type, in the order of creation.
    QList<QQuickItem*> itemsOf(const char* qmlType) const;
    QQuickItem* textItem(const QString& text) const { return labelWith(window, text); }
    bool shows(const QString& text) const { return textItem(text) != nullptr; }
    /// The titles of the visible cards, from top to bottom and left to right.
    QStringList cardTitles() const;
    QQuickItem* card(const QString& title) const;
    static QPoint middleOf(const QQuickItem* item) { return test::middleOf(item); }
    void click(QQuickItem* item, Qt::MouseButton button = Qt::LeftButton);
    void key(int key, Qt::KeyboardModifiers modifiers = {});
    QImage picture(const QString& name) { return savePicture(window, name); }

    MainQueue mainQueue;
    ManualTime toastTime;
    ManualQueue toastQueue{toastTime};
    Navigation navigation{toastQueue};
    Theme theme{settings};
    FakeGlobalKey globalKey;
    HotKeyManager hotKeys{settings, globalKey};
    RecordingFileManager files;
    RecordingPasteboard pasteboard;
    std::unique_ptr<ThumbnailCache> thumbnails;
    std::unique_ptr<ClipCommands> commands;
    /// The dragged files, and the picture of the last drag.
    QStringList dragged;
    QImage draggedPicture;
    std::unique_ptr<QQmlApplicationEngine> engine;
    QQuickWindow* window = nullptr;
    QSize size{1000, 760};
};

} // namespace quelto::test
