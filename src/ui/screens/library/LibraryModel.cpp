// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/LibraryModel.h"

#include "ui/screens/library/DayGroups.h"
#include "ui/screens/library/LibraryForQml.h"
#include "ui/shared/SharedForQml.h"

#include <QTimeZone>

namespace quelto {

namespace {

// Checked every minute because the clock may be set or the machine may sleep over midnight.
constexpr std::chrono::minutes ClockInterval{1};

} // namespace

LibraryModel::LibraryModel(QObject* parent)
    : LibraryModel({.library = *ClipLibraryForQml::instance, .queues = ArrangingQueuesForQml::instance}, parent)
{
}

LibraryModel::LibraryModel(Dependencies dependencies, QObject* parent)
    : CardGridModel(parent)
    , m_dependencies(std::move(dependencies))
    , m_today(m_dependencies.now().date())
    , m_timeZone(QTimeZone::systemTimeZoneId())
    , m_arranger(m_dependencies.queues, [this](const ArrangedClips& arranged) { show(arranged); })
{
    connect(&m_dependencies.library, &ClipLibrary::clipsChanged, this, &LibraryModel::updateClips);
    m_clockTimer.setSingleShot(true);
    m_clockTimer.setTimerType(Qt::CoarseTimer);
    connect(&m_clockTimer, &QTimer::timeout, this, &LibraryModel::updateToday);
    scheduleTodayUpdate();
    updateClips();
}

void LibraryModel::setHasGame(bool hasGame)
{
    m_hasGame = hasGame;
    updateGameFilter();
}

void LibraryModel::setGame(const QString& game)
{
    m_game = game;
    updateGameFilter();
}

void LibraryModel::setIsOther(bool isOther)
{
    m_isOther = isOther;
    updateGameFilter();
}

void LibraryModel::updateGameFilter()
{
    auto filter = m_filter;
    filter.game.reset();
    if (m_hasGame) {
        filter.game = m_isOther ? ClipGame::none() : ClipGame(m_game);
    }
    setFilter(filter);
}

void LibraryModel::setTierFilter(const QString& tierFilter)
{
    auto filter = m_filter;
    filter.tier = tierFilter;
    setFilter(filter);
}

void LibraryModel::setSearch(const QString& search)
{
    auto filter = m_filter;
    filter.search = search;
    setFilter(filter);
}

void LibraryModel::setFilter(const ClipFilter& filter)
{
    if (m_filter == filter) {
        return;
    }
    m_filter = filter;
    Q_EMIT filterChanged();
    m_arranger.arrange(m_filter);
}

void LibraryModel::updateClips()
{
    m_arranger.setClips(m_dependencies.library.clips());
    m_arranger.arrange(m_filter);
}

void LibraryModel::show(const ArrangedClips& arranged)
{
    // The newest request had this filter.
    const bool isNewFilter = std::exchange(m_requestedFilter, m_filter) != m_filter;
    m_arranged = arranged;
    m_isLoaded = m_dependencies.library.isLoaded();
    showClips(arranged.clips, arranged.cards, isNewFilter ? Scroll::ToTop : Scroll::Keep);
    if (m_filter != arranged.filter) {
        m_filter = m_requestedFilter = arranged.filter;
        Q_EMIT filterChanged();
    }
}

LibraryLayout LibraryModel::layoutFor(qreal width, qreal cardTextHeight) const
{
    return {m_arranged.dayCards, width, cardTextHeight};
}

QString LibraryModel::dayTitleAt(qsizetype day) const
{
    return dayTitle(m_arranged.days.at(day), m_today);
}

void LibraryModel::scheduleTodayUpdate()
{
    const auto now = m_dependencies.now();
    const std::chrono::milliseconds toMidnight(now.msecsTo(now.date().addDays(1).startOfDay()));
    // The margin keeps the coarse timer from firing before midnight.
    m_clockTimer.start(std::min<std::chrono::milliseconds>(ClockInterval, toMidnight + std::chrono::milliseconds(200)));
}

void LibraryModel::updateToday()
{
    const auto today = m_dependencies.now().date();
    const auto timeZone = QTimeZone::systemTimeZoneId();
    if (m_today != today || m_timeZone != timeZone) {
        m_today = today;
        m_timeZone = timeZone;
        m_arranger.arrange(m_filter);
    }
    scheduleTodayUpdate();
}

} // namespace quelto
