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

/// ffprobe's output for a file: "streams" and "format".
QJsonObject probe(const QString& path);
QJsonArray streamsOf(const QString& path);
/// The packets of a stream, as ffprobe lists them.
QJsonArray packetsOf(const QString& path, const QString& stream);

/// ffmpeg's error output when it decodes all tracks; empty for a valid file.
QByteArray decodingErrors(const QString& path);

/// An audio track as a player outputs it, with edit lists applied: interleaved stereo at 48,000 Hz.
std::vector<float> decodeAudio(const QString& path, int audioTrack);

/// The largest absolute value.
float peakOf(const std::vector<float>& audio);

} // namespace quelto::test
