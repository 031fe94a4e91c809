// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/WoWWatcher.h"

#include "moments/scoring/GameNames.h"

#include <QFile>

namespace quelto {

namespace {

constexpr std::chrono::seconds TickInterval{1};
constexpr double ActiveSeconds = 90;

// Bounds the number of requested clips if a file has unrealistic content.
constexpr int MaxMomentsPerTick = 20;

double wallSeconds()
{
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

} // namespace

WoWWatcher::WoWWatcher(const QString& homeFolder, QObject* parent)
    : GameWatcher(QStringLiteral("quelto.wow"), parent)
    , m_folders(QFile::encodeName(homeFolder).toStdString())
    , m_tail([this](QByteArrayView line) {
        if (const auto event = logEvent(line)) {
            publishMoments(m_fights.take(*event, m_readTime));
        }
    })
{
}

WoWWatcher::~WoWWatcher()
{
    stopAndWait();
}

QString WoWWatcher::gameName()
{
    return gameNames::worldOfWarcraft;
}

void WoWWatcher::open()
{
    if (m_timer) {
        return;
    }
    m_timer = std::make_unique<QTimer>();
    // Lets the system combine this timer's wake-ups with others.
    m_timer->setTimerType(Qt::CoarseTimer);
    m_timer->callOnTimeout([this] { tick(); });
    m_timer->start(TickInterval);
    tick();
}

void WoWWatcher::close()
{
    m_timer.reset();
    m_tail.close();
    m_fights.discard();
    m_publishedLogFound.reset();
    m_publishedActive = false;
    m_lastWrite = 0;
}

void WoWWatcher::clear()
{
    setActive(false);
}

void WoWWatcher::tick()
{
    m_momentsInTick = 0;
    const auto folders = m_folders.existing(monotonicSeconds());
    publishLogFound(!folders.empty());
    const auto log = newestLog(folders);
    // After the log is deleted, its last write still counts.
    m_lastWrite = log ? log->modified : m_lastWrite;
    const auto age = wallSeconds() - m_lastWrite;
    publishActive(age < ActiveSeconds);
    if (log) {
        // Measured again, because searching the folders may take long on a slow disk.
        m_readTime = monotonicSeconds();
        m_tail.follow(*log, age);
    }
    publishMoments(m_fights.tick(monotonicSeconds()));
}

void WoWWatcher::publishLogFound(bool logFound)
{
    if (m_publishedLogFound != logFound) {
        m_publishedLogFound = logFound;
        publish([this, logFound] { setLogFound(logFound); });
    }
}

void WoWWatcher::publishActive(bool active)
{
    if (std::exchange(m_publishedActive, active) == active) {
        return;
    }
    publish([this, active] {
        setActive(active);
        if (active) {
            Q_EMIT gameDetected();
        }
    });
}

void WoWWatcher::publishMoments(const QList<Moment>& moments)
{
    for (const auto& moment : moments) {
        if (++m_momentsInTick > MaxMomentsPerTick) {
            return;
        }
        publish([this, moment] { reportMoment(moment); });
    }
}

void WoWWatcher::setLogFound(bool logFound)
{
    if (std::exchange(m_logFound, logFound) != logFound) {
        Q_EMIT logFoundChanged();
    }
}

void WoWWatcher::setActive(bool active)
{
    if (std::exchange(m_active, active) != active) {
        Q_EMIT activeChanged();
    }
}

} // namespace quelto
