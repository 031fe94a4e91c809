// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/quit/QuitGuard.h"

#include "base/language/T.h"

namespace quelto {

namespace {

constexpr std::chrono::seconds StallTimeout{60};

} // namespace

QuitGuard::QuitGuard(Actions actions)
    : m_actions(std::move(actions))
    , m_stallWatch(StallTimeout)
{
}

void QuitGuard::userQuits(bool isExporting)
{
    if (isQuitting()) {
        return;
    }
    if (isExporting) {
        m_state = State::asking;
        m_actions.ask();
    } else {
        quit();
    }
}

void QuitGuard::systemQuits()
{
    if (!isQuitting()) {
        stopAndQuit();
    }
}

void QuitGuard::quitWhenDone()
{
    if (m_state == State::asking) {
        m_state = State::waiting;
        m_stallWatch = StallWatch(StallTimeout);
        m_actions.announce();
    }
}

void QuitGuard::quitNow()
{
    if (m_state == State::asking) {
        stopAndQuit();
    }
}

void QuitGuard::stay()
{
    if (m_state == State::asking) {
        m_state = State::running;
    }
}

void QuitGuard::exportsEnded()
{
    switch (m_state) {
    case State::asking:
        // The exports were all that kept the program from quitting.
        m_actions.withdraw();
        quit();
        break;
    case State::waiting:
        quit();
        break;
    case State::running:
    case State::quitting:
        break;
    }
}

void QuitGuard::exportFailed(const QString& message)
{
    switch (m_state) {
    case State::asking:
        m_state = State::running;
        m_actions.withdraw();
        m_actions.explain(message);
        break;
    case State::waiting:
        m_state = State::running;
        m_actions.explain(message);
        break;
    case State::running:
    case State::quitting:
        break;
    }
}

void QuitGuard::check(HostTime now, std::uint64_t signsOfLife)
{
    if (m_state == State::waiting && m_stallWatch.isStalled(now, signsOfLife)) {
        exportFailed(T("Dışa aktarma bir dakikadır ilerlemiyor. Disk yanıt vermiyor olabilir."));
    }
}

void QuitGuard::stopAndQuit()
{
    m_state = State::quitting;
    m_actions.stopExports();
    quit();
}

void QuitGuard::quit()
{
    m_state = State::quitting;
    m_actions.quit();
}

} // namespace quelto
