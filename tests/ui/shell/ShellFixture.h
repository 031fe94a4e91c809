// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/MainQueue.h"
#include "library/matches/MatchTracker.h"
#include "library/thumbnails/ThumbnailCache.h"
#include "ui/screens/library/ClipCommands.h"
#include "ui/shared/Navigation.h"
#include "ui/shell/LibraryOverview.h"
#include "ui/shell/ShownMatch.h"
#include "ui/shell/WindowCommands.h"
#include "ui/theme/Theme.h"

#include "tests/capture/recorder/RecorderFixture.h"
#include "tests/library/clips/RecordingTrash.h"
#include "tests/ui/RecordingDesktop.h"
#include "tests/ui/SeenInWindow.h"

#include <QQmlApplicationEngine>
#include <QSignalSpy>

namespace quelto::test {

/// The real window over a real recorder, whose desktop services the test drives.
class ShellFixture : public RecorderFixture {
protected:
    void SetUp() override;
    void TearDown() override;

    /// The visible item that screen readers call by that name; a failed expectation if there is none.
    QQuickItem* item(const QString& accessibleName) const;
    bool shows(const QString& text) const { return textItem(text) != nullptr; }
    QString descriptionOf(const QString& accessibleName) const;
    /// The visible item with that text; nothing if there is none.
    QQuickItem* textItem(const QString& text) const { return labelWith(window, text); }
    /// Opens a menu in the strip at the top, one of whose entries that is.
    void openMenu(const QString& title, const QString& entry);
    /// Files of a few bytes in the save folder, and the library that shows them.
    void makeClips(const QList<QByteArray>& names);
    /// Lets all that was asked for happen, and draws it: what stands in a list comes with a frame only.
    void drawFrame() const;
    /// Lets the library show what is in the save folder.
    void reloadLibrary();
    /// The visible texts that do not fit their place.
    QStringList cutTexts() const;
    void click(const QString& accessibleName);
    QImage picture(const QString& name) { return keptPicture(window, name); }

    std::unique_ptr<Theme> theme;
    std::unique_ptr<WindowCommands> commands;
    RecordingTrash trash;
    RecordingFileManager files;
    RecordingPasteboard pasteboard;
    std::unique_ptr<ClipLibrary> library;
    std::unique_ptr<MatchTracker> matches;
    std::unique_ptr<Navigation> navigation;
    std::unique_ptr<ShownMatch> shownMatch;
    std::unique_ptr<LibraryOverview> overview;
    MainQueue thumbnailQueue;
    std::unique_ptr<ThumbnailCache> thumbnails;
    std::unique_ptr<ClipCommands> clipCommands;
    std::unique_ptr<QQmlApplicationEngine> engine;
    QQuickWindow* window = nullptr;
    /// What the window asked for, in order.
    QStringList asked;
};

} // namespace quelto::test
