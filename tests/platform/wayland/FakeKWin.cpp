// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeKWin.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFile>

#include <gtest/gtest.h>

namespace quelto::test {

namespace {

const auto Service = QStringLiteral("org.kde.KWin");
const auto ObjectPath = QStringLiteral("/Scripting");

} // namespace

QDBusConnection newBusConnection()
{
    static int count = 0;
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("test.%1").arg(++count));
}

FakeKWinScript::FakeKWinScript(FakeKWin& kwin, QString file)
    : m_kwin(kwin)
    , m_file(std::move(file))
{
}

void FakeKWinScript::run()
{
    m_kwin.runFile(m_file);
}

FakeKWin::FakeKWin(KWinVersion version)
    : m_bus(newBusConnection())
    , m_version(version)
    , m_engine(std::make_unique<KWinScriptEngine>(version, [this](const ScriptCall& call) {
        auto message = QDBusMessage::createMethodCall(call.service, call.path, call.interface, call.method);
        message << call.text;
        m_bus.asyncCall(message);
    }))
{
    EXPECT_TRUE(m_bus.registerService(Service));
}

void FakeKWin::start()
{
    EXPECT_TRUE(m_bus.registerObject(ObjectPath, this, QDBusConnection::ExportAllSlots));
}

FakeKWin::~FakeKWin()
{
    m_bus.unregisterService(Service);
    QDBusConnection::disconnectFromBus(m_bus.name());
}

int FakeKWin::loadScript(const QString& file, const QString& name)
{
    if (m_scripts.contains(name)) {
        return -1;
    }
    const int number = m_nextScript++;
    const auto path = (m_version == KWinVersion::five ? QStringLiteral("/%1") : QStringLiteral("/Scripting/Script%1"));
    m_scripts[name] = std::make_shared<FakeKWinScript>(*this, file);
    m_bus.registerObject(path.arg(number), m_scripts[name].get(), QDBusConnection::ExportAllSlots);
    return number;
}

bool FakeKWin::unloadScript(const QString& name)
{
    return m_scripts.remove(name) > 0;
}

void FakeKWin::runFile(const QString& file)
{
    QFile script(file);
    ASSERT_TRUE(script.open(QIODevice::ReadOnly));
    ++m_runCount;
    m_engine->run(script.readAll());
}

} // namespace quelto::test
