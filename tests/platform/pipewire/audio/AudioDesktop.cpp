// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioDesktop.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>

namespace quelto::pipewire {

QString run(const QString& program, const QStringList& arguments)
{
    ChildProcess process(program, arguments);
    const QByteArray output = process.readAll();
    EXPECT_EQ(process.wait(), 0) << program.toStdString() << " " << arguments.join(u' ').toStdString();
    return QString::fromUtf8(output).trimmed();
}

QString desktopVariable(const char* variable)
{
    return QString::fromUtf8(qgetenv(variable));
}

bool becomesTrue(const std::function<bool()>& condition, double timeoutSeconds)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(timeoutSeconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

bool holdsInOneOfThree(const std::function<bool()>& recordAndCheck)
{
    for (int i = 0; i < 3; ++i) {
        if (recordAndCheck()) {
            return true;
        }
    }
    return false;
}

QString playingNode()
{
    const QByteArray text =
        run(QStringLiteral("pactl"),
            {QStringLiteral("--format=json"), QStringLiteral("list"), QStringLiteral("sink-inputs")})
            .toUtf8();
    const QJsonArray streams = QJsonDocument::fromJson(text).array();
    EXPECT_EQ(streams.size(), 1) << text.toStdString();
    return streams[0][u"properties"][u"object.id"].toString();
}

void moveStream(const QString& node, const QString& sink)
{
    run(QStringLiteral("pw-metadata"),
        {QStringLiteral("-n"), QStringLiteral("default"), node, QStringLiteral("target.object"), sink});
}

LoadedModule::LoadedModule(const QStringList& arguments)
    : m_index(run(QStringLiteral("pactl"), QStringList{QStringLiteral("load-module")} + arguments))
{
}

LoadedModule::~LoadedModule()
{
    run(QStringLiteral("pactl"), {QStringLiteral("unload-module"), m_index});
}

GraphSetting::GraphSetting(const QString& name, int value)
    : m_name(name)
{
    set(value);
}

GraphSetting::~GraphSetting()
{
    set(0);
}

void GraphSetting::set(int value)
{
    run(QStringLiteral("pw-metadata"),
        {QStringLiteral("-n"), QStringLiteral("settings"), QStringLiteral("0"), m_name, QString::number(value)});
}

TonePlayerProcess::TonePlayerProcess(const Settings& settings)
    : m_process(executable(settings.binary),
                QStringList{QString::number(settings.leftHertz), QString::number(settings.rightHertz),
                            QString::number(settings.amplitude),
                            settings.isBeeping ? QStringLiteral("beep") : QStringLiteral("steady"), settings.target} +
                    settings.moreArguments)
{
}

/// The server learns a program's name from its file.
QString TonePlayerProcess::executable(const QString& name)
{
    static const QTemporaryDir folder;
    const QFileInfo player(QStringLiteral(TONE_PLAYER));
    if (player.fileName() == name) {
        return player.filePath();
    }
    const QString copy = folder.filePath(name);
    if (!QFileInfo::exists(copy) && !QFile::copy(player.filePath(), copy)) {
        ADD_FAILURE() << "cannot copy the player to " << copy.toStdString();
    }
    return copy;
}

std::vector<HostTime> TonePlayerProcess::beeps()
{
    m_unread += m_process.readAvailable();
    for (qsizetype end = 0; (end = m_unread.indexOf('\n')) >= 0; m_unread.remove(0, end + 1)) {
        m_beeps.emplace_back(HostDuration(m_unread.left(end).toLongLong()));
    }
    return m_beeps;
}

} // namespace quelto::pipewire
