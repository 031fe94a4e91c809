// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/naming/Clip.h"

#include <QList>
#include <QSet>
#include <QStringList>

namespace quelto {

/// The state of a review: the clips of a match, the one that is shown, and those to delete. At the start all are kept.
///
/// Clips can vanish and return while the review is open, for example with the disk that holds them. The clip that is
/// shown stays shown. If it vanishes, the next clip that is left is shown, or else the last one. The mark of a clip
/// that vanished does not count until the clip returns.
class ReviewProgress {
public:
    enum class Answer { keep, remove };

    /// In the order of the review.
    void setClips(const QList<Clip>& clips);
    const QList<Clip>& clips() const { return m_clips; }
    qsizetype count() const { return m_clips.size(); }

    /// Of the clip that is shown; 0 without clips.
    qsizetype index() const { return m_clips.isEmpty() ? 0 : m_index; }
    /// Empty without clips, or past the last clip.
    QString currentPath() const { return pathAt(m_index); }
    QString followingPath() const { return pathAt(m_index + 1); }

    /// Shows that clip. Returns false, and changes nothing, if there is none.
    bool go(qsizetype index);
    /// Answers for the clip that is shown, and moves to the next one. The last clip stays shown. Returns whether
    /// another clip is shown.
    bool mark(Answer answer);

    bool isMarked(qsizetype index) const { return m_marks.contains(pathAt(index)); }
    /// The clips to delete, in order.
    QStringList marked() const;

private:
    QString pathAt(qsizetype index) const;

    QList<Clip> m_clips;
    /// The clips when there last were any, and the one that was shown.
    QStringList m_order;
    qsizetype m_index = 0;
    QSet<QString> m_marks;
};

} // namespace quelto
