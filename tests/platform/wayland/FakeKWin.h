// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "KWinScriptEngine.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QHash>

#include <memory>

namespace quelto::test {

class FakeKWin;

/// One loaded script, as an object on the bus.
class FakeKWinScript final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.kwin.Script")

public:
    FakeKWinScript(FakeKWin& kwin, QString file);

public Q_SLOTS:
    void run();

private:
    FakeKWin& m_kwin;
    QString m_file;
};

/// KWin's scripting service on a separate bus connection. It really runs the scripts.
class FakeKWin final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.kwin.Scripting")

public:
    /// Has its name on the bus, but takes no scripts before start().
    explicit FakeKWin(KWinVersion version);
    ~FakeKWin() override;
    FakeKWin(const FakeKWin&) = delete;
    FakeKWin& operator=(const FakeKWin&) = delete;

    void start();
    KWinScriptEngine& engine() { return *m_engine; }
    QStringList loadedNames() const { return m_scripts.keys(); }
    int runCount() const { return m_runCount; }
    void runFile(const QString& file);

public Q_SLOTS:
    int loadScript(const QString& file, const QString& name);
    bool unloadScript(const QString& name);

private:
    QDBusConnection m_bus;
    KWinVersion m_version;
    std::unique_ptr<KWinScriptEngine> m_engine;
    QHash<QString, std::shared_ptr<FakeKWinScript>> m_scripts;
    int m_nextScript = 0;
    int m_runCount = 0;
};

/// A new connection to the session bus.
QDBusConnection newBusConnection();

} // namespace quelto::test
