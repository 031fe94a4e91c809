// SPDX-License-Identifier: GPL-3.0-or-later
#include "KWinScriptEngine.h"

#include <gtest/gtest.h>

namespace quelto::test {

namespace {

const auto Prelude = QStringLiteral(R"js(
function Signal() { this.receivers = []; }
Signal.prototype.connect = function (receiver) { this.receivers.push(receiver); };
Signal.prototype.disconnect = function (receiver) {
    this.receivers = this.receivers.filter(each => each !== receiver);
};
Signal.prototype.emit = function (argument) { this.receivers.slice().forEach(each => each(argument)); };

var timers = [];
function QTimer() { this.timeout = new Signal(); this.active = false; timers.push(this); }
QTimer.prototype.start = function () { this.active = true; };
function endTimers() {
    const ended = timers.filter(timer => timer.active);
    ended.forEach(timer => { timer.active = false; timer.timeout.emit(); });
    return ended.length;
}

var calls = [];
function callDBus(service, path, iface, method, text) { calls.push([service, path, iface, method, text]); }

function createWindow(properties) {
    const window = Object.assign({
        caption: "", pid: 0, resourceClass: "", resourceName: "", desktopFileName: "", desktopWindow: false
    }, properties);
    window.captionChanged = new Signal();
    window.desktopFileNameChanged = new Signal();
    window.windowClassChanged = new Signal();
    const access = { get: function (target, name) {
        if (target.isDestroyed && name !== "isDestroyed") {
            throw new TypeError("the window does not exist");
        }
        return target[name];
    } };
    return new Proxy(window, access);
}
)js");

QString workspaceFor(KWinVersion version)
{
    return version == KWinVersion::five
        ? QStringLiteral("var workspace = {clientActivated: new Signal(), activeClient: null};"
                         "function activate(window) { workspace.activeClient = window;"
                         " workspace.clientActivated.emit(window); }")
        : QStringLiteral("var workspace = {windowActivated: new Signal(), activeWindow: null};"
                         "function activate(window) { workspace.activeWindow = window;"
                         " workspace.windowActivated.emit(window); }");
}

} // namespace

KWinScriptEngine::KWinScriptEngine(KWinVersion version, std::function<void(const ScriptCall&)> onCall)
    : m_onCall(std::move(onCall))
{
    evaluate(Prelude);
    evaluate(workspaceFor(version));
    m_calls = evaluate(QStringLiteral("calls"));
}

void KWinScriptEngine::run(const QByteArray& script)
{
    evaluate(QString::fromUtf8(script));
    deliverCalls();
}

void KWinScriptEngine::activate(const QString& window)
{
    evaluate(QStringLiteral("activate(%1)").arg(window));
    deliverCalls();
}

void KWinScriptEngine::create(const QString& window, const QString& properties)
{
    evaluate(QStringLiteral("var %1 = createWindow(%2)").arg(window, properties));
}

void KWinScriptEngine::setTitle(const QString& window, const QString& title)
{
    evaluate(QStringLiteral("%1.caption = '%2'; %1.captionChanged.emit()").arg(window, title));
    deliverCalls();
}

void KWinScriptEngine::destroy(const QString& window)
{
    evaluate(QStringLiteral("%1.isDestroyed = true").arg(window));
}

int KWinScriptEngine::endTimers()
{
    const auto count = evaluate(QStringLiteral("endTimers()")).toInt();
    deliverCalls();
    return count;
}

QJSValue KWinScriptEngine::evaluate(const QString& text)
{
    auto result = m_engine.evaluate(text);
    EXPECT_FALSE(result.isError()) << result.toString().toStdString();
    return result;
}

void KWinScriptEngine::deliverCalls()
{
    const auto count = m_calls.property(QStringLiteral("length")).toInt();
    while (m_callCount < count) {
        const auto call = m_calls.property(static_cast<quint32>(m_callCount++));
        const auto text = [&](quint32 index) { return call.property(index).toString(); };
        m_onCall({.service = text(0), .path = text(1), .interface = text(2), .method = text(3), .text = text(4)});
    }
}

} // namespace quelto::test
