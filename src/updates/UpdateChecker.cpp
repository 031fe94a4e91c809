// SPDX-License-Identifier: GPL-3.0-or-later
#include "updates/UpdateChecker.h"

#include <QPointer>

#include <algorithm>

namespace quelto {

namespace {

constexpr std::chrono::hours TimerPeriod{1};
/// Units: seconds.
constexpr double TimeBetweenChecks = 86400;
/// Each is an item of the window.
constexpr qsizetype MaxNotes = 200;

const auto LastCheckKey = QStringLiteral("updateLastCheck");
const auto SkippedVersionKey = QStringLiteral("updateSkippedVersion");
const auto PromptedVersionKey = QStringLiteral("updatePromptedVersion");

bool isWebAddress(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == u"https" || url.scheme() == u"http");
}

} // namespace

UpdateChecker::UpdateChecker(Dependencies dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(std::move(dependencies))
    , m_lastCheck(m_dependencies.file.stored().value(LastCheckKey).toDouble())
    , m_skippedVersion(m_dependencies.file.stored().value(SkippedVersionKey).toString())
    , m_promptedVersion(m_dependencies.file.stored().value(PromptedVersionKey).toString())
{
    if (m_dependencies.currentVersion.isEmpty()) {
        m_dependencies.currentVersion = QStringLiteral("0");
    }
}

void UpdateChecker::start()
{
    if (m_dependencies.feed.scheme() == u"https") {
        check();
        waitForNextTick();
    }
}

void UpdateChecker::stop()
{
    m_isStopped = true;
}

void UpdateChecker::waitForNextTick()
{
    m_dependencies.main.postAfter(TimerPeriod, [checker = QPointer(this)] {
        if (auto* const present = checker.data(); present != nullptr && !present->m_isStopped) {
            present->tick();
        }
    });
}

void UpdateChecker::tick()
{
    if (m_dependencies.now() - m_lastCheck >= TimeBetweenChecks) {
        check();
    }
    waitForNextTick();
}

void UpdateChecker::check()
{
    // Before the request, so that a failed check counts too.
    m_lastCheck = m_dependencies.now();
    m_dependencies.file.setValue(LastCheckKey, m_lastCheck);
    const FeedRequest::Options options{.address = m_dependencies.feed,
                                       .userAgent = "Quelto/" + m_dependencies.currentVersion.toUtf8(),
                                       .timeout = m_dependencies.timeout,
                                       .tls = m_dependencies.tls};
    m_request = std::make_unique<FeedRequest>(options, [this](const std::optional<QByteArray>& body) {
        // The request is the caller.
        m_request.release()->deleteLater();
        if (body && !m_isStopped) {
            receive(*body);
        }
    });
}

void UpdateChecker::receive(const QByteArray& body)
{
    const auto release = decodeRelease(body);
    if (!release || !isNewer(release->version, m_dependencies.currentVersion)) {
        return;
    }
    m_available = release;
    Q_EMIT availableChanged();
    if (m_skippedVersion != release->version && m_promptedVersion != release->version) {
        m_promptedVersion = release->version;
        m_dependencies.file.setValue(PromptedVersionKey, m_promptedVersion);
        setShowSheet(true);
    }
}

QStringList UpdateChecker::notes() const
{
    if (!m_available) {
        return {};
    }
    auto lines = m_available->notes.first(std::min(MaxNotes, m_available->notes.size()));
    std::ranges::transform(lines, lines.begin(), visibleLine);
    if (lines.size() < m_available->notes.size()) {
        lines.append(QStringLiteral("…"));
    }
    return lines;
}

void UpdateChecker::setShowSheet(bool isShown)
{
    if (m_showSheet != isShown) {
        m_showSheet = isShown;
        Q_EMIT showSheetChanged();
    }
}

void UpdateChecker::skip()
{
    if (m_available) {
        m_skippedVersion = m_available->version;
        m_dependencies.file.setValue(SkippedVersionKey, m_skippedVersion);
    }
    setShowSheet(false);
}

void UpdateChecker::download()
{
    if (m_available) {
        // The address is opened outside of the program, where one of another kind could start any other program.
        if (const QUrl url(m_available->url, QUrl::StrictMode); isWebAddress(url)) {
            m_dependencies.openUrl(url);
        }
    }
    setShowSheet(false);
}

} // namespace quelto
