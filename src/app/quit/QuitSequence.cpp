// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/quit/QuitSequence.h"

#include "base/language/T.h"

#include <QPointer>

namespace quelto {

namespace {

constexpr std::chrono::seconds CheckInterval{1};

} // namespace

QuitSequence::QuitSequence(Dependencies dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(std::move(dependencies))
    , m_guard({.ask = [this] { ask(); },
               .withdraw = [this] { m_dependencies.question.setAsked(false); },
               .announce = [this] { m_dependencies.actions.showToast(T("Dışa aktarma bitince Quelto kapanacak")); },
               .explain = [this](const QString& failure) { explain(failure); },
               .stopExports = [this] { m_dependencies.exports.stopAll(); },
               .quit = [this] { m_dependencies.actions.quit(); }})
{
    const auto& question = m_dependencies.question;
    connect(&question, &QuitQuestion::whenDoneChosen, this, [this] { m_guard.quitWhenDone(); });
    connect(&question, &QuitQuestion::nowChosen, this, [this] { m_guard.quitNow(); });
    connect(&question, &QuitQuestion::dismissed, this, [this] { m_guard.stay(); });
    const auto& exports = m_dependencies.exports;
    connect(&exports, &ExportQueue::countChanged, this, [this] {
        // The question keeps its text while it closes.
        if (m_dependencies.exports.isBusy()) {
            m_dependencies.question.setExportCount(m_dependencies.exports.count());
        }
    });
    connect(&exports, &ExportQueue::failed, this, [this](const QString& message) { m_guard.exportFailed(message); });
    connect(&exports, &ExportQueue::busyChanged, this, &QuitSequence::busyChanged);
}

void QuitSequence::ask()
{
    m_dependencies.question.setFailure({});
    m_dependencies.question.setAsked(true);
    m_dependencies.actions.showWindow();
}

void QuitSequence::explain(const QString& failure)
{
    m_dependencies.question.setFailure(failure);
    // The window does not come to the front by itself: it could cover a game.
    if (!m_dependencies.actions.isWindowActive()) {
        m_dependencies.actions.notifyDesktop(failure);
    }
}

void QuitSequence::busyChanged()
{
    if (!m_dependencies.exports.isBusy()) {
        m_guard.exportsEnded();
    } else if (!std::exchange(m_isChecking, true)) {
        checkLater();
    }
}

void QuitSequence::checkLater()
{
    m_dependencies.main.postAfter(CheckInterval, [guard = QPointer(this)] {
        auto* const self = guard.data();
        if (self == nullptr) {
            return;
        }
        self->m_isChecking = self->m_dependencies.exports.isBusy();
        if (self->m_isChecking) {
            self->m_guard.check(self->m_dependencies.clock(), self->m_dependencies.exports.signsOfLife());
            self->checkLater();
        }
    });
}

} // namespace quelto
