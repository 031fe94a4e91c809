// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <vector>

namespace quelto::test {

struct CommandResult {
    int exitCode = -1;
    QByteArray output;
    QByteArray errors;
};

CommandResult run(const QString& program, const QStringList& arguments);

/// What ffprobe says about a file: "streams" and "format".
QJsonObject probe(const QString& path);
QJsonArray streamsOf(const QString& path);
/// The streams' packets, as ffprobe lists them.
QJsonArray packetsOf(const QString& path, const QString& stream);

/// Everything that ffmpeg has to complain about while it decodes all tracks; empty for a sound file.
QByteArray decodingErrors(const QString& path);

/// One sound track as a player hears it, edit lists honoured: interleaved stereo at 48,000 Hz.
std::vector<float> decodedSound(const QString& path, int soundTrack);

/// The loudest value.
float peakOf(const std::vector<float>& sound);

} // namespace quelto::test
