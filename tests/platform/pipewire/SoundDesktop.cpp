// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundDesktop.h"

#include <gtest/gtest.h>

#include <thread>

namespace quelto::pipewire {

QString run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool hasFinished = process.waitForFinished(20000);
    EXPECT_TRUE(hasFinished && process.exitCode() == 0)
        << program.toStdString() << " " << arguments.join(u' ').toStdString() << ": "
        << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QString desktopName(const char* variable)
{
    return QString::fromUtf8(qgetenv(variable));
}

bool comesTrue(const std::function<bool()>& claim, double longestSeconds)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(longestSeconds);
    while (!claim()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

LoadedModule::LoadedModule(const QStringList& arguments)
    : m_index(run(QStringLiteral("pactl"), QStringList{QStringLiteral("load-module")} + arguments))
{
}

LoadedModule::~LoadedModule()
{
    run(QStringLiteral("pactl"), {QStringLiteral("unload-module"), m_index});
}

OtherProgram::OtherProgram(const Sound& sound)
{
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.start(QStringLiteral(TONE_PLAYER),
                    {QString::number(sound.leftHertz), QString::number(sound.rightHertz),
                     QString::number(sound.amplitude),
                     sound.isBeeping ? QStringLiteral("beep") : QStringLiteral("steady"), sound.target});
    EXPECT_TRUE(m_process.waitForStarted());
}

OtherProgram::~OtherProgram()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(3000)) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

std::vector<HostTime> OtherProgram::beeps()
{
    m_process.waitForReadyRead(1);
    while (m_process.canReadLine()) {
        m_beeps.emplace_back(HostDuration(m_process.readLine().trimmed().toLongLong()));
    }
    return m_beeps;
}

} // namespace quelto::pipewire
