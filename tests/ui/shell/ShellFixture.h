// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/MainQueue.h"
#include "hotkey/HotKeyManager.h"
#include "library/matches/MatchClips.h"
#include "library/matches/MatchTracker.h"
#include "library/thumbnails/ThumbnailCache.h"
#include "moments/dota/DotaWatcher.h"
#include "moments/league/LeagueWatcher.h"
#include "moments/wow/WoWWatcher.h"
#include "ui/screens/clip/ClipExports.h"
#include "ui/screens/clip/ClipFrames.h"
#include "ui/screens/library/ClipCommands.h"
#include "ui/shared/Navigation.h"
#include "ui/shell/LibraryOverview.h"
#include "ui/shell/QuitQuestion.h"
#include "ui/shell/SaveFailure.h"
#include "ui/shell/WindowCommands.h"
#include "ui/theme/Theme.h"
#include "updates/UpdateChecker.h"

#include "tests/capture/recorder/RecorderFixture.h"
#include "tests/library/clips/RecordingTrash.h"
#include "tests/playback/model/FakePlayer.h"
#include "tests/ui/RecordingDesktop.h"
#include "tests/ui/WindowInspection.h"

#include <QQmlApplicationEngine>
#include <QSignalSpy>

namespace quelto::test {

/// The real main window with a real recorder on fake desktop services.
class ShellFixture : public RecorderFixture {
protected:
    void SetUp() override;
    void TearDown() override;

    /// The visible item with that accessible name; a failed expectation if there is none.
    QQuickItem* item(const QString& accessibleName) const;
    bool shows(const QString& text) const { return textItem(text) != nullptr; }
    QString descriptionOf(const QString& accessibleName) const;
    /// The visible label with that text; null if there is none.
    QQuickItem* textItem(const QString& text) const { return labelWith(window, text); }
    /// Opens a menu of the menu bar and waits until that entry of it is visible.
    void openMenu(const QString& title, const QString& entry);
    /// Creates empty files in the save folder, each a minute newer than the one before, and plays a match of League of
    /// Legends as Ahri with them to its end. Returns the id of the match.
    QUuid playMatch(const QList<QByteArray>& clips);
    /// Creates empty files in the save folder and reloads the library.
    void makeClips(const QList<QByteArray>& names);
    /// Processes pending events and draws a frame: lists create their items only for a frame.
    void drawFrame() const;
    /// Reads the save folder again and draws a frame.
    void reloadLibrary();
    /// The visible texts that do not fit their item.
    QStringList truncatedTexts() const;
    void click(const QString& accessibleName);
    struct Look {
        const char* language;
        const char* palette;
        QSize size;
    };
    /// Also sizes that the window does not allow. Builds the content of the window again.
    void setLook(const Look& look);
    QImage picture(const QString& name) { return savePicture(window, name); }

    std::unique_ptr<Theme> theme;
    std::unique_ptr<WindowCommands> commands;
    std::unique_ptr<SaveFailure> saveFailure;
    /// What the notice of a failed save learns about the save folder.
    bool isFolderWritable = true;
    QuitQuestion quitQuestion;
    RecordingTrash trash;
    RecordingFileManager& files = useFake<RecordingFileManager>(fakes.platform.files);
    RecordingPasteboard& pasteboard = useFake<RecordingPasteboard>(fakes.platform.pasteboard);
    FakeLoginItem& loginItem = useFake<FakeLoginItem>(fakes.platform.loginItem);
    RecordingFolderDialog& folderDialog = useFake<RecordingFolderDialog>(fakes.platform.folderDialog);
    std::unique_ptr<ClipLibrary> library;
    std::unique_ptr<MatchTracker> matches;
    std::unique_ptr<MatchClips> matchClips;
    std::unique_ptr<Navigation> navigation;
    std::unique_ptr<LibraryOverview> overview;
    MainQueue thumbnailQueue;
    std::unique_ptr<ThumbnailCache> thumbnails;
    /// The last one that a page created, while it exists.
    QPointer<FakePlayer> player;
    /// All that exist, in the order of their creation.
    QList<QPointer<FakePlayer>> players;
    std::unique_ptr<ClipCommands> clipCommands;
    MainQueue exportReplies;
    std::unique_ptr<ExportQueue> exportQueue;
    std::unique_ptr<ClipExports> clipExports;
    std::unique_ptr<ClipFrames> clipFrames;
    /// They are not started. Their home folder is `folder`.
    std::unique_ptr<LeagueWatcher> league;
    std::unique_ptr<DotaWatcher> dota;
    std::unique_ptr<WoWWatcher> wow;
    std::unique_ptr<HotKeyManager> hotKeys;
    std::unique_ptr<UpdateChecker> updates;
    /// The addresses that were opened in the browser.
    QStringList openedUrls;
    std::unique_ptr<QQmlApplicationEngine> engine;
    QQuickWindow* window = nullptr;
    /// The window commands that were called, in order.
    QStringList requestedActions;
    /// Makes the copy of a clip. Runs on the thread of the export queue.
    std::function<QString(const QString& operation, const QString& clip)> onExport;
    /// What the program does when the user quits.
    std::function<void()> onQuit = [] {};
};

} // namespace quelto::test
