// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/match/MatchRecap.h"

#include "base/language/T.h"
#include "ui/screens/match/MatchPageForQml.h"

#include <numeric>

namespace quelto {

MatchRecap::MatchRecap(QObject* parent)
    : MatchRecap(MatchPageForQml::instance.value(), parent)
{
}

MatchRecap::MatchRecap(const Dependencies& dependencies, QObject* parent)
    : CardGridModel(parent)
    , m_dependencies(dependencies)
{
    connect(&m_dependencies.clips, &MatchClips::changed, this, &MatchRecap::update);
    connect(&m_dependencies.tracker, &MatchTracker::clipRenamed, this,
            [this](const QString& from, const QString& to) { m_selection.rename(from, to); });
}

QString MatchRecap::matchId() const
{
    return m_match.isNull() ? QString() : matchIdText(m_match);
}

void MatchRecap::setMatchId(const QString& id)
{
    if (m_match.isNull()) {
        m_match = QUuid(id);
        update();
        // Files outside the save folder may have changed unnoticed.
        m_dependencies.clips.refresh();
    }
}

QString MatchRecap::subtitle() const
{
    if (!m_session) {
        return {};
    }
    const auto date = m_session->dateText();
    return isLoaded() ? date + QStringLiteral(" • ") + T("{0} klip", count()) : date;
}

void MatchRecap::update()
{
    m_session = m_dependencies.tracker.session(m_match);
    const auto clips = m_session ? m_dependencies.clips.clipsOf(m_match) : QList<Clip>();
    if (m_clips != clips) {
        m_clips = clips;
        QStringList paths;
        std::ranges::transform(clips, std::back_inserter(paths), &Clip::path);
        m_selection.setClips(paths);
        QList<qsizetype> order(clips.size());
        std::iota(order.begin(), order.end(), 0);
        showClips(clips, order, Scroll::Keep);
        Q_EMIT selectionChanged();
    }
    Q_EMIT matchChanged();
}

LibraryLayout MatchRecap::layoutFor(qreal width, qreal cardTextHeight) const
{
    return LibraryLayout::ofWideCards(m_clips.size(), width, cardTextHeight);
}

void MatchRecap::showSelection()
{
    updateSelection();
    Q_EMIT selectionChanged();
}

void MatchRecap::toggle(const QString& path)
{
    m_selection.toggle(path);
    showSelection();
}

void MatchRecap::toggleAll()
{
    m_selection.toggleAll();
    showSelection();
}

void MatchRecap::selectAll()
{
    m_selection.selectAll();
    showSelection();
}

void MatchRecap::clearSelection()
{
    m_selection.clear();
    showSelection();
}

void MatchRecap::deleteSelected()
{
    if (const auto paths = m_selection.selected(); !paths.isEmpty()) {
        clearSelection();
        m_dependencies.tracker.deleteClips(paths, m_match);
    }
}

void MatchRecap::deleteClip(const QString& path)
{
    m_dependencies.tracker.deleteClips({path}, m_match);
}

void MatchRecap::deleteMatch(bool withClips)
{
    m_dependencies.tracker.deleteSession(m_match,
                                         withClips ? MatchTracker::WithClips::yes : MatchTracker::WithClips::no);
}

} // namespace quelto
