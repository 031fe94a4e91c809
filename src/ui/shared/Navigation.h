// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"
#include "library/naming/Clip.h"
#include "library/naming/ClipGame.h"

#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace quelto {

/// Makes the page kinds available to QML.
class Pages : public QObject {
    Q_OBJECT

public:
    enum class Kind { Library, Match, Review, Settings, Matches };
    Q_ENUM(Kind)
};

struct Page {
    Pages::Kind kind = Pages::Kind::Library;
    /// The match that a Match or Review page is about.
    QUuid match = {};
    /// Limits the library page to one game; unset for all games.
    std::optional<ClipGame> game = std::nullopt;

    bool operator==(const Page&) const = default;
};

/// The current page of the window, the open clip, and the toast.
///
/// Thread: main.
class Navigation : public QObject {
    Q_OBJECT
    Q_PROPERTY(quelto::Pages::Kind pageKind READ pageKind NOTIFY pageChanged)
    /// An empty game name is valid; `hasGame` tells it from no game.
    Q_PROPERTY(bool hasGame READ hasGame NOTIFY pageChanged)
    Q_PROPERTY(QString game READ game NOTIFY pageChanged)
    /// Whether the page is about the clips whose names hold no game. `game` is then the word for "Other".
    Q_PROPERTY(bool isOther READ isOther NOTIFY pageChanged)
    /// The match that the page is about, as matchIdText; empty for other pages.
    Q_PROPERTY(QString matchId READ matchId NOTIFY pageChanged)
    Q_PROPERTY(bool hasSelected READ hasSelected NOTIFY selectedChanged)
    Q_PROPERTY(QString selectedPath READ selectedPath NOTIFY selectedChanged)
    Q_PROPERTY(QString selectedTitle READ selectedTitle NOTIFY selectedChanged)
    /// The text of the toast; empty while no toast is shown.
    Q_PROPERTY(QString toast READ toast NOTIFY toastChanged)

public:
    explicit Navigation(TaskQueue& main, QObject* parent = nullptr);

    const Page& page() const { return m_page; }
    Pages::Kind pageKind() const { return m_page.kind; }
    bool hasGame() const { return m_page.game.has_value(); }
    QString game() const { return m_page.game ? m_page.game->title() : QString(); }
    bool isOther() const { return m_page.game == ClipGame::none(); }
    QString matchId() const;
    void setPage(const Page& page);

    /// The open clip. Its screen covers the page; the page itself does not change.
    const std::optional<Clip>& selected() const { return m_selected; }
    bool hasSelected() const { return m_selected.has_value(); }
    QString selectedPath() const { return m_selected ? m_selected->path : QString(); }
    QString selectedTitle() const { return m_selected ? m_selected->visibleTitle() : QString(); }
    void setSelected(const std::optional<Clip>& clip);

    // The show functions also close the open clip.
    Q_INVOKABLE void showLibrary() { show({}); }
    Q_INVOKABLE void showGame(const QString& game) { show({.game = game}); }
    Q_INVOKABLE void showOther() { show({.game = ClipGame::none()}); }
    Q_INVOKABLE void showMatches() { show({.kind = Pages::Kind::Matches}); }
    /// Takes a matchId.
    Q_INVOKABLE void showMatch(const QString& id) { show({.kind = Pages::Kind::Match, .match = QUuid(id)}); }
    Q_INVOKABLE void showReview(const QString& id) { show({.kind = Pages::Kind::Review, .match = QUuid(id)}); }
    Q_INVOKABLE void showSettings() { show({.kind = Pages::Kind::Settings}); }
    /// Shows the list of matches if the page is about this match.
    void leaveMatch(const QUuid& match);
    Q_INVOKABLE void openClip(const QString& path) { setSelected(Clip(path)); }
    Q_INVOKABLE void closeClip() { setSelected(std::nullopt); }

    QString toast() const { return m_toast; }
    /// Shows the text for 2.5 seconds. Repeating the visible text does not extend its time; another text replaces it
    /// and is shown for the full time.
    Q_INVOKABLE void showToast(const QString& text);

Q_SIGNALS:
    void pageChanged();
    void selectedChanged();
    void toastChanged();

private:
    void show(const Page& page);
    void setToast(const QString& text);

    TaskQueue& m_main;
    Page m_page;
    std::optional<Clip> m_selected;
    QString m_toast;
};

/// The page as published on the session bus: "library", "library Dota 2", "library (no game)", "review 8F14E45F-…".
QString pageText(const Page& page);

} // namespace quelto
