// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"
#include "library/naming/Clip.h"

#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace quelto {

/// Holds the enumeration for QML.
class Pages : public QObject {
    Q_OBJECT

public:
    enum class Kind { Library, Match, Review, Settings, Matches };
    Q_ENUM(Kind)
};

struct Page {
    Pages::Kind kind = Pages::Kind::Library;
    /// Of a match or a review.
    QUuid match = {};
    /// Of the library: the game whose clips it shows, without it all.
    std::optional<QString> game = std::nullopt;

    bool operator==(const Page&) const = default;
};

/// Which page the window shows, the clip that is open in front of it, and the short text that floats over both.
///
/// Thread: main.
class Navigation : public QObject {
    Q_OBJECT
    Q_PROPERTY(quelto::Pages::Kind pageKind READ pageKind NOTIFY pageChanged)
    /// A game may be called nothing, so whether there is one is told apart.
    Q_PROPERTY(bool hasGame READ hasGame NOTIFY pageChanged)
    Q_PROPERTY(QString game READ game NOTIFY pageChanged)
    Q_PROPERTY(bool hasSelected READ hasSelected NOTIFY selectedChanged)
    Q_PROPERTY(QString selectedPath READ selectedPath NOTIFY selectedChanged)
    Q_PROPERTY(QString selectedTitle READ selectedTitle NOTIFY selectedChanged)
    /// Shown when there is one; it goes by itself.
    Q_PROPERTY(QString toast READ toast NOTIFY toastChanged)

public:
    explicit Navigation(TaskQueue& main, QObject* parent = nullptr);

    const Page& page() const { return m_page; }
    Pages::Kind pageKind() const { return m_page.kind; }
    bool hasGame() const { return m_page.game.has_value(); }
    QString game() const { return m_page.game.value_or(QString()); }
    void setPage(const Page& page);

    /// While a clip is open its screen stands in the page's place. The page stays what it was.
    const std::optional<Clip>& selected() const { return m_selected; }
    bool hasSelected() const { return m_selected.has_value(); }
    QString selectedPath() const { return m_selected ? m_selected->path : QString(); }
    QString selectedTitle() const { return m_selected ? m_selected->displayTitle() : QString(); }
    void setSelected(const std::optional<Clip>& clip);

    /// These show a page and close the clip that is open.
    Q_INVOKABLE void showLibrary() { show({}); }
    Q_INVOKABLE void showGame(const QString& game) { show({.game = game}); }
    Q_INVOKABLE void showMatches() { show({.kind = Pages::Kind::Matches}); }
    Q_INVOKABLE void showSettings() { show({.kind = Pages::Kind::Settings}); }
    Q_INVOKABLE void openClip(const QString& path) { setSelected(Clip(path)); }
    Q_INVOKABLE void closeClip() { setSelected(std::nullopt); }

    /// Empty for none.
    QString toast() const { return m_toast; }
    /// Shows the text for 2.5 seconds. The same text again, shown while it still stands, goes when the first one would
    /// have gone; another text has its whole time.
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

/// How other programs read the page: "library", "library Dota 2", "review 8F14E45F-…".
QString pageText(const Page& page);

} // namespace quelto
