// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/Probe.h"

#include "tests/media/reader/GeneratedClips.h"
#include "tests/media/reader/RunProgram.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <cstring>
#include <sys/wait.h>

namespace quelto::test {

CommandResult run(const QString& program, const QStringList& arguments)
{
    const QTemporaryDir folder;
    const auto output = folder.filePath(QStringLiteral("output"));
    const auto errors = folder.filePath(QStringLiteral("errors"));
    std::vector<QByteArray> command{QFile::encodeName(program)};
    for (const auto& argument : arguments) {
        command.push_back(QFile::encodeName(argument));
    }
    const int status = runProgram(command, QFile::encodeName(output), QFile::encodeName(errors));
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, GeneratedClips::read(output), GeneratedClips::read(errors)};
}

namespace {

QJsonObject ffprobe(const QStringList& what, const QString& path)
{
    const auto result =
        run(QStringLiteral("ffprobe"),
            QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-of"), QStringLiteral("json")} +
                what + QStringList{path});
    return QJsonDocument::fromJson(result.output).object();
}

} // namespace

QJsonObject probe(const QString& path)
{
    return ffprobe({QStringLiteral("-show_streams"), QStringLiteral("-show_format")}, path);
}

QJsonArray streamsOf(const QString& path)
{
    return probe(path)[u"streams"].toArray();
}

QJsonArray packetsOf(const QString& path, const QString& stream)
{
    return ffprobe({QStringLiteral("-show_packets"), QStringLiteral("-select_streams"), stream}, path)[u"packets"]
        .toArray();
}

QByteArray decodingErrors(const QString& path)
{
    const auto result = run(QStringLiteral("ffmpeg"),
                            {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
                             QStringLiteral("-map"), QStringLiteral("0"), QStringLiteral("-fps_mode"),
                             QStringLiteral("passthrough"), QStringLiteral("-enc_time_base"), QStringLiteral("-1"),
                             QStringLiteral("-f"), QStringLiteral("null"), QStringLiteral("-")});
    return result.exitCode == 0 ? result.errors : result.errors + " [failed]";
}

std::vector<float> decodeAudio(const QString& path, int audioTrack)
{
    const auto result = run(QStringLiteral("ffmpeg"),
                            {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
                             QStringLiteral("-map"), QStringLiteral("0:a:%1").arg(audioTrack), QStringLiteral("-f"),
                             QStringLiteral("f32le"), QStringLiteral("-ac"), QStringLiteral("2"), QStringLiteral("-ar"),
                             QStringLiteral("48000"), QStringLiteral("-")});
    std::vector<float> audio(static_cast<std::size_t>(result.output.size()) / sizeof(float));
    std::memcpy(audio.data(), result.output.constData(), audio.size() * sizeof(float));
    return audio;
}

float peakOf(const std::vector<float>& audio)
{
    float peak = 0;
    for (const auto value : audio) {
        peak = std::max(peak, std::abs(value));
    }
    return peak;
}

} // namespace quelto::test
