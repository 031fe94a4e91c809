// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/matches/MatchClips.h"
#include "ui/screens/review/ReviewProgress.h"
#include "ui/shared/Navigation.h"

#include <QAbstractListModel>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// A clip in the list of a review.
struct ReviewedClip {
    QString path;
    QString title;
    bool isMarked = false;

    bool operator==(const ReviewedClip&) const = default;
};

/// The review of a match for its page, and the list of its clips. Only finish() touches files.
///
/// Thread: main.
class MatchReview : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    /// Can be set once.
    Q_PROPERTY(QString matchId READ matchId WRITE setMatchId NOTIFY matchIdChanged)
    /// False until it is known which clips exist.
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)
    /// Of the clip that is shown.
    Q_PROPERTY(int index READ currentIndex NOTIFY changed)
    Q_PROPERTY(QString currentPath READ currentPath NOTIFY changed)
    /// The clip after it; empty for the last one.
    Q_PROPERTY(QString followingPath READ followingPath NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    /// The tag of an automatic clip's tier; empty for other clips.
    Q_PROPERTY(QString tier READ tier NOTIFY changed)
    Q_PROPERTY(QString tierLabel READ tierLabel NOTIFY changed)
    /// Undefined without a tier.
    Q_PROPERTY(QVariant score READ score NOTIFY changed)
    /// Whether the clip that is shown is to be deleted.
    Q_PROPERTY(bool isMarked READ isMarked NOTIFY changed)
    Q_PROPERTY(int keptCount READ keptCount NOTIFY changed)
    Q_PROPERTY(int markedCount READ markedCount NOTIFY changed)

public:
    enum Role { PathRole = Qt::UserRole, TitleRole, IsMarkedRole };

    /// All outlive the object.
    struct Dependencies {
        MatchTracker& tracker;
        MatchClips& clips;
        Navigation& navigation;
    };

    /// For QML; uses the instance of ReviewForQml.
    explicit MatchReview(QObject* parent = nullptr);
    explicit MatchReview(const Dependencies& dependencies, QObject* parent = nullptr);

    QString matchId() const;
    void setMatchId(const QString& id);
    bool isLoaded() const { return m_dependencies.clips.isLoaded(); }
    int count() const { return static_cast<int>(m_progress.count()); }
    int currentIndex() const { return static_cast<int>(m_progress.index()); }
    QString currentPath() const { return m_progress.currentPath(); }
    QString followingPath() const { return m_progress.followingPath(); }
    QString title() const;
    QString tier() const;
    QString tierLabel() const;
    QVariant score() const;
    bool isMarked() const { return m_progress.isMarked(m_progress.index()); }
    int keptCount() const { return count() - markedCount(); }
    int markedCount() const { return static_cast<int>(m_progress.marked().size()); }

    /// Shows a clip. Nothing happens without a clip of that index.
    Q_INVOKABLE void go(int index);
    /// Keeps or deletes the clip that is shown, and shows the next one.
    Q_INVOKABLE void keep() { mark(ReviewProgress::Answer::keep); }
    Q_INVOKABLE void remove() { mark(ReviewProgress::Answer::remove); }
    /// Answers if the key is one for that. Returns whether it is. See reviewAnswer.
    Q_INVOKABLE bool answerByKey(const QString& text, quint32 scanCode);
    /// Moves the marked clips to the trash and shows the match.
    Q_INVOKABLE void finish();
    /// Shows the match, and forgets the answers.
    Q_INVOKABLE void leave();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void matchIdChanged();
    void changed();
    /// The user kept a clip or marked it.
    void answered();
    /// The player has to show this clip. Emitted before `changed`, while the player still has it open ahead of time.
    void clipShown(const QString& path);

private:
    friend class StableRows;

    void mark(ReviewProgress::Answer answer);
    void updateClips();
    void updateRows();
    const Clip* current() const;

    Dependencies m_dependencies;
    QUuid m_match;
    ReviewProgress m_progress;
    QList<ReviewedClip> m_rows;
};

} // namespace quelto
