// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/review/MatchReview.h"

#include "ui/screens/review/ReviewForQml.h"
#include "ui/screens/review/ReviewKeys.h"
#include "ui/shared/StableRows.h"

namespace quelto {

MatchReview::MatchReview(QObject* parent)
    : MatchReview(ReviewForQml::instance.value(), parent)
{
}

MatchReview::MatchReview(const Dependencies& dependencies, QObject* parent)
    : QAbstractListModel(parent)
    , m_dependencies(dependencies)
{
    connect(&m_dependencies.clips, &MatchClips::changed, this, &MatchReview::updateClips);
}

QString MatchReview::matchId() const
{
    return m_match.isNull() ? QString() : matchIdText(m_match);
}

void MatchReview::setMatchId(const QString& id)
{
    if (!m_match.isNull()) {
        return;
    }
    m_match = QUuid(id);
    Q_EMIT matchIdChanged();
    updateClips();
    m_dependencies.clips.refresh();
}

const Clip* MatchReview::current() const
{
    return m_progress.count() > 0 ? &m_progress.clips().at(m_progress.index()) : nullptr;
}

QString MatchReview::title() const
{
    const auto* const clip = current();
    return clip == nullptr ? QString() : clip->visibleTitle();
}

QString MatchReview::tier() const
{
    const auto* const clip = current();
    return clip != nullptr && clip->autoTier ? tagOf(*clip->autoTier) : QString();
}

QString MatchReview::tierLabel() const
{
    const auto* const clip = current();
    return clip != nullptr && clip->autoTier ? labelOf(*clip->autoTier) : QString();
}

QVariant MatchReview::score() const
{
    const auto* const clip = current();
    return clip != nullptr && clip->autoTier ? QVariant(clip->autoScore) : QVariant();
}

void MatchReview::go(int index)
{
    if (m_progress.go(index)) {
        Q_EMIT clipShown(currentPath());
        Q_EMIT changed();
    }
}

void MatchReview::mark(ReviewProgress::Answer answer)
{
    const bool isMoved = m_progress.mark(answer);
    updateRows();
    Q_EMIT answered();
    if (isMoved) {
        Q_EMIT clipShown(currentPath());
    }
    Q_EMIT changed();
}

bool MatchReview::answerByKey(const QString& text, quint32 scanCode)
{
    const auto answer = reviewAnswer(text, scanCode);
    if (answer) {
        mark(*answer);
    }
    return answer.has_value();
}

void MatchReview::finish()
{
    // The player is stopped, and must not open the clips that remain.
    m_dependencies.clips.disconnect(this);
    if (const auto marked = m_progress.marked(); !marked.isEmpty()) {
        m_dependencies.tracker.deleteClips(marked, m_match);
    }
    leave();
}

void MatchReview::leave()
{
    m_dependencies.navigation.showMatch(matchId());
}

void MatchReview::updateClips()
{
    const auto shown = currentPath();
    // The clips of the running match are not complete.
    const auto clips = m_dependencies.tracker.session(m_match) ? m_dependencies.clips.clipsOf(m_match) : QList<Clip>();
    if (clips != m_progress.clips()) {
        m_progress.setClips(clips);
        updateRows();
        if (count() > 0 && currentPath() != shown) {
            Q_EMIT clipShown(currentPath());
        }
    }
    Q_EMIT changed();
}

void MatchReview::updateRows()
{
    QList<ReviewedClip> wanted;
    for (qsizetype i = 0; i < m_progress.count(); ++i) {
        const auto& clip = m_progress.clips().at(i);
        wanted.append({.path = clip.path, .title = clip.visibleTitle(), .isMarked = m_progress.isMarked(i)});
    }
    StableRows::update<&ReviewedClip::path>(*this, m_rows, wanted);
}

int MatchReview::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant MatchReview::data(const QModelIndex& index, int role) const
{
    const auto& clip = m_rows.at(index.row());
    switch (role) {
    case PathRole:
        return clip.path;
    case TitleRole:
        return clip.title;
    case IsMarkedRole:
        return clip.isMarked;
    default:
        return {};
    }
}

QHash<int, QByteArray> MatchReview::roleNames() const
{
    return {{PathRole, "path"}, {TitleRole, "title"}, {IsMarkedRole, "isMarked"}};
}

} // namespace quelto
