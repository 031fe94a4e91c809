// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QJSEngine>
#include <QObject>
#include <QString>

#include <functional>

namespace quelto::test {

enum class KWinVersion { five, six };

/// The argument of the script's call, with the name of the bus and the method that it calls.
struct ScriptCall {
    QString service;
    QString path;
    QString interface;
    QString method;
    QString text;
};

/// Runs a script as KWin does, with the parts of KWin's script interface that the script may use. Windows are objects
/// of the engine.
class KWinScriptEngine {
public:
    KWinScriptEngine(KWinVersion version, std::function<void(const ScriptCall&)> onCall);

    /// Fails the test if the script throws.
    void run(const QByteArray& script);
    /// Makes a window active. The variable of that name is the window; "null" for none.
    void activate(const QString& window);
    /// Creates a window with these properties, which is then a variable of that name.
    void create(const QString& window, const QString& properties);
    /// Changes the window's title and tells the script.
    void setTitle(const QString& window, const QString& title);
    /// From now on, every access to the window throws, as to an object that was deleted.
    void destroy(const QString& window);
    /// Lets the started timers end. Returns how many there were.
    int endTimers();

private:
    QJSValue evaluate(const QString& text);

    std::function<void(const ScriptCall&)> m_onCall;
    QJSEngine m_engine;
    QJSValue m_calls;
    int m_callCount = 0;
    void deliverCalls();
};

} // namespace quelto::test
