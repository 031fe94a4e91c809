// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/MainQueue.h"
#include "base/tasks/SerialQueue.h"
#include "hotkey/HotKeyManager.h"
#include "library/thumbnails/ThumbnailCache.h"
#include "ui/screens/library/ClipCommands.h"
#include "ui/shared/Navigation.h"
#include "ui/theme/Theme.h"

#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>

#include <ctime>

namespace quelto::benchmarks {

class NoTrash final : public Trash {
public:
    void moveToTrash(const QStringList& /*paths*/, std::function<void()> done) override { done(); }
};

class NoFileManager final : public FileManager {
public:
    void reveal(const QString& /*path*/) override { }
    void openFolder(const QString& /*path*/) override { }
};

class NoPasteboard final : public Pasteboard {
public:
    void setFile(const QString& /*path*/) override { }
    void setImage(const QImage& /*image*/) override { }
    void setText(const QString& /*text*/) override { }
};

class NoGlobalKey final : public GlobalKey {
public:
    void grab(std::uint32_t /*keyCode*/, std::uint32_t /*modifiers*/) override { }
    void release() override { }
    State state() const override { return State::Held; }
    QString characters(std::uint32_t /*keyCode*/) override { return {}; }
    std::uint32_t heldModifiers() override { return 0; }
};

/// Selects Qt's software renderer, as on a machine without a GPU, and a window that needs no display. Call it before
/// the application is created.
void useOffscreenWindow();

/// Processes events for that time.
void wait(int milliseconds);

/// CPU time of the process or of one thread.
double cpuSeconds(clockid_t clock);

/// The real library screen in a window of 1000×780, with an empty folder at first.
class LibraryWindow {
public:
    LibraryWindow();
    LibraryWindow(const LibraryWindow&) = delete;
    LibraryWindow& operator=(const LibraryWindow&) = delete;

    /// Shows the clips of a folder and waits until the cards are there.
    void show(const QString& folder);
    QQuickWindow& window() const { return *m_window; }
    /// The scrollable view of the cards.
    QQuickItem& cards() const { return *m_cards; }
    ClipLibrary& library() { return m_library; }

private:
    QTemporaryDir m_folder;
    AppSettings m_settings;
    MainQueue m_main;
    NoTrash m_trash;
    NoFileManager m_files;
    NoPasteboard m_pasteboard;
    SerialQueue m_work;
    SerialQueue m_filter;
    ClipLibrary m_library;
    ThumbnailCache m_thumbnails;
    Navigation m_navigation;
    Theme m_theme;
    NoGlobalKey m_globalKey;
    HotKeyManager m_hotKeys;
    ClipCommands m_commands;
    QQmlApplicationEngine m_engine;
    QQuickWindow* m_window = nullptr;
    QQuickItem* m_cards = nullptr;
};

} // namespace quelto::benchmarks
