// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/WoWWatcher.h"

#include "base/time/HostClock.h"
#include "moments/scoring/GameNames.h"

#include <QFile>

namespace quelto {

namespace {

constexpr std::chrono::seconds TickLength{1};
constexpr double ActiveSeconds = 90;

// Nobody achieves this in a second, but a file can hold anything, and each moment asks for a clip.
constexpr int MostMomentsInTick = 20;

double machineSeconds()
{
    return inSeconds(HostClock::now().time_since_epoch());
}

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
            tellAll(m_fights.take(*event, m_readingTime));
        }
    })
{
}

WoWWatcher::~WoWWatcher()
{
    finish();
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
    // Leaves the system free to wake us together with others.
    m_timer->setTimerType(Qt::CoarseTimer);
    m_timer->callOnTimeout([this] { tick(); });
    m_timer->start(TickLength);
    tick();
}

void WoWWatcher::close()
{
    m_timer.reset();
    m_tail.close();
    m_fights.discard();
    m_toldLogFound.reset();
    m_toldActive = false;
    m_lastWrite = 0;
}

void WoWWatcher::clear()
{
    setActive(false);
}

void WoWWatcher::tick()
{
    m_momentsInTick = 0;
    const auto folders = m_folders.existing(machineSeconds());
    tellLogFound(!folders.empty());
    const auto log = newestLog(folders);
    // A log that was deleted counts on as the one written last, until it is long ago.
    m_lastWrite = log ? log->modified : m_lastWrite;
    const auto age = wallSeconds() - m_lastWrite;
    tellActive(age < ActiveSeconds);
    if (log) {
        // Not before: slow disks may have taken their time over the folders.
        m_readingTime = machineSeconds();
        m_tail.follow(*log, age);
    }
    tellAll(m_fights.tick(machineSeconds()));
}

void WoWWatcher::tellLogFound(bool logFound)
{
    if (m_toldLogFound != logFound) {
        m_toldLogFound = logFound;
        publish([this, logFound] { setLogFound(logFound); });
    }
}

void WoWWatcher::tellActive(bool active)
{
    if (std::exchange(m_toldActive, active) == active) {
        return;
    }
    publish([this, active] {
        setActive(active);
        if (active) {
            Q_EMIT gameDetected();
        }
    });
}

void WoWWatcher::tellAll(const QList<Moment>& moments)
{
    for (const auto& moment : moments) {
        if (++m_momentsInTick > MostMomentsInTick) {
            return;
        }
        publish([this, moment] { tell(moment); });
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
