// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/KWinActiveWindow.h"

#include "platform/wayland/KWinScript.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDir>

namespace quelto {

namespace {

const auto KWinService = QStringLiteral("org.kde.KWin");
const auto ScriptingPath = QStringLiteral("/Scripting");
const auto ScriptingInterface = QStringLiteral("org.kde.kwin.Scripting");
const auto ScriptInterface = QStringLiteral("org.kde.kwin.Script");
/// Always the same name, so that the script that a crashed Quelto left behind is replaced.
const auto ScriptName = QStringLiteral("quelto-active-window");

/// Limits the wait for a KWin or a bus that hangs.
constexpr int AnswerMilliseconds = 500;

constexpr int MaxAttempts = 20;
constexpr std::chrono::milliseconds BetweenAttempts(500);

QDBusMessage busCall(const QString& method)
{
    auto call =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), method);
    call << KWinService;
    return call;
}

QString scriptTemplate()
{
    const auto folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return (folder.isEmpty() ? QDir::tempPath() : folder) + QStringLiteral("/quelto-XXXXXX.js");
}

} // namespace

KWinActiveWindow::KWinActiveWindow(const QDBusConnection& bus, OnChange onChange)
    : m_bus(bus)
    , m_onChange(std::move(onChange))
    , m_owners(KWinService, bus, QDBusServiceWatcher::WatchForOwnerChange)
    , m_script(scriptTemplate())
{
    if (!m_script.open()) {
        return;
    }
    m_script.write(kwin::activeWindowScript(m_bus.baseService()));
    m_script.close();
    m_untilNextAttempt.setSingleShot(true);
    m_untilNextAttempt.setInterval(BetweenAttempts);
    connect(&m_untilNextAttempt, &QTimer::timeout, this, &KWinActiveWindow::load);
    m_bus.registerObject(kwin::ReportPath, this, QDBusConnection::ExportAllSlots);
    connect(&m_owners, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { setOwner(owner); });
    asyncCall(busCall(QStringLiteral("GetNameOwner")), [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ReplyMessage) {
            setOwner(reply.arguments().value(0).toString());
        }
    });
}

KWinActiveWindow::~KWinActiveWindow()
{
    if (!m_owner.isEmpty()) {
        m_bus.call(scriptingCall(QStringLiteral("unloadScript"), {ScriptName}), QDBus::Block, AnswerMilliseconds);
    }
    m_bus.unregisterObject(kwin::ReportPath);
}

bool KWinActiveWindow::isAvailable(const QDBusConnection& bus)
{
    return bus.call(busCall(QStringLiteral("NameHasOwner")), QDBus::Block, AnswerMilliseconds)
        .arguments()
        .value(0)
        .toBool();
}

void KWinActiveWindow::ActiveWindowChanged(const QString& report)
{
    // Any program on the bus can call this.
    if (!m_owner.isEmpty() && message().service() == m_owner) {
        m_onChange(kwin::readReport(report));
    }
}

void KWinActiveWindow::setOwner(const QString& owner)
{
    if (owner == m_owner) {
        return;
    }
    m_owner = owner;
    m_untilNextAttempt.stop();
    m_failedAttempts = 0;
    m_onChange(std::nullopt);
    if (!m_owner.isEmpty()) {
        load();
    }
}

void KWinActiveWindow::load()
{
    asyncCall(scriptingCall(QStringLiteral("unloadScript"), {ScriptName}), [this](const QDBusMessage&) {
        asyncCall(scriptingCall(QStringLiteral("loadScript"), {m_script.fileName(), ScriptName}),
                  [this](const QDBusMessage& reply) {
                      const auto script = reply.arguments().value(0);
                      if (reply.type() == QDBusMessage::ReplyMessage && script.toInt() >= 0) {
                          run(script.toInt());
                      } else {
                          loadAgainLater();
                      }
                  });
    });
}

void KWinActiveWindow::run(int script)
{
    const auto runCall = [this](const QString& path) {
        return QDBusMessage::createMethodCall(m_owner, path, ScriptInterface, QStringLiteral("run"));
    };
    asyncCall(runCall(QStringLiteral("/Scripting/Script%1").arg(script)), [=, this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            // KWin 5.
            asyncCall(runCall(QStringLiteral("/%1").arg(script)), [this](const QDBusMessage& answer) {
                if (answer.type() == QDBusMessage::ErrorMessage) {
                    loadAgainLater();
                }
            });
        }
    });
}

void KWinActiveWindow::loadAgainLater()
{
    if (++m_failedAttempts < MaxAttempts) {
        m_untilNextAttempt.start();
    }
}

QDBusMessage KWinActiveWindow::scriptingCall(const QString& method, const QVariantList& arguments) const
{
    auto call = QDBusMessage::createMethodCall(m_owner, ScriptingPath, ScriptingInterface, method);
    call.setArguments(arguments);
    return call;
}

void KWinActiveWindow::asyncCall(const QDBusMessage& call, OnReply onReply)
{
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, owner = m_owner, onReply = std::move(onReply)] {
                watcher->deleteLater();
                if (owner == m_owner) {
                    onReply(watcher->reply());
                }
            });
}

} // namespace quelto
