// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/matches/MatchClips.h"
#include "library/matches/MatchTracker.h"
#include "ui/screens/library/CardGridModel.h"
#include "ui/screens/match/ClipSelection.h"

namespace quelto {

/// What the page of a match shows: the match, and its clips in the order in which they were played, with a selection.
/// The match may be deleted while the page is open.
///
/// Thread: main.
// Qt 6.4 finds the properties of a base class for QML by its full name only.
class MatchRecap : public quelto::CardGridModel {
    Q_OBJECT
    QML_ELEMENT
    /// As in Navigation. Can be set once.
    Q_PROPERTY(QString matchId READ matchId WRITE setMatchId NOTIFY matchChanged)
    /// Whether the match exists. Neither this nor isMissing is true until the matches are loaded.
    Q_PROPERTY(bool isFound READ isFound NOTIFY matchChanged)
    Q_PROPERTY(bool isMissing READ isMissing NOTIFY matchChanged)
    /// Empty without a match, like the subtitle.
    Q_PROPERTY(QString name READ name NOTIFY matchChanged)
    /// When the match was played, and the number of its clips.
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY matchChanged)
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectionChanged)
    /// True also without clips.
    Q_PROPERTY(bool isAllSelected READ isAllSelected NOTIFY selectionChanged)

public:
    /// All outlive the object.
    struct Dependencies {
        MatchTracker& tracker;
        MatchClips& clips;
    };

    /// For QML; uses the instance of MatchPageForQml.
    explicit MatchRecap(QObject* parent = nullptr);
    explicit MatchRecap(const Dependencies& dependencies, QObject* parent = nullptr);

    QString matchId() const;
    void setMatchId(const QString& id);
    /// Whether it is known which clips exist.
    bool isLoaded() const { return m_dependencies.clips.isLoaded(); }
    bool isFound() const { return m_session.has_value(); }
    bool isMissing() const { return m_dependencies.tracker.isLoaded() && !isFound(); }
    QString name() const { return m_session ? m_session->name() : QString(); }
    QString subtitle() const;
    int selectedCount() const { return static_cast<int>(m_selection.count()); }
    bool isAllSelected() const { return m_selection.isAll(); }

    /// Selects a clip or takes it back.
    Q_INVOKABLE void toggle(const QString& path);
    /// Selects all clips, or none if all are selected.
    Q_INVOKABLE void toggleAll();
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void clearSelection();

    // Deleted clips go to the trash.
    Q_INVOKABLE void deleteSelected();
    Q_INVOKABLE void deleteClip(const QString& path);
    /// Deletes the match, and its clips only with `withClips`.
    Q_INVOKABLE void deleteMatch(bool withClips);

Q_SIGNALS:
    void matchChanged();
    void selectionChanged();

private:
    LibraryLayout layoutFor(qreal width, qreal cardTextHeight) const final;
    bool isSelected(const Clip& clip) const final { return m_selection.contains(clip.path); }
    void update();
    void showSelection();

    Dependencies m_dependencies;
    QUuid m_match;
    std::optional<MatchSession> m_session;
    QList<Clip> m_clips;
    ClipSelection m_selection;
};

} // namespace quelto
