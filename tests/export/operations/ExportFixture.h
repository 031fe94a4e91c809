// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/operations/Exporter.h"
#include "tests/media/probe/CounterClip.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <functional>

namespace quelto::test {

/// What came of an export.
struct Attempt {
    /// Empty without success.
    QString path;
    /// Of the ExportError; empty without one.
    QString message;
    bool isStopped = false;
    std::vector<double> progress;

    bool hasSucceeded() const { return !path.isEmpty(); }
};

using Export = std::function<QString(const ExportControl&)>;

/// Other exceptions than those that exports throw reach the test.
Attempt attempt(
    const Export& work, std::stop_token stop = {}, const std::function<void(double)>& onProgress = [](double) {});

/// Never goes back, and ends with 1.
void expectCompleteProgress(const std::vector<double>& progress);

/// A file's content and time of modification.
struct FileState {
    QByteArray bytes;
    QDateTime modified;

    bool operator==(const FileState&) const = default;
};
FileState stateOf(const QString& path);

/// Makes a movie larger with a box that players ignore. Returns its path. Units: bytes.
QString padded(const QString& path, qint64 size);

/// 36 frames in a file without an index of the whole.
CounterClip fragmentsWithBFrames(const std::vector<BeepTrack>& audio = {});
/// 240 × 180 pixels of 4 : 3. The file's index does not mention their shape.
CounterClip widePixelsInPictureData();
/// Requires that the export of such a clip fills 320 × 180 pixels with all of its frames.
void expectSquarePixels(const QString& output, const QString& clip);

/// Of the first video track.
QSize pictureSize(const QString& path);

/// All files of a folder, also hidden ones, in alphabetical order, but not ffmpeg's log.
QStringList filesIn(const QString& folder);

/// Exports of generated clips, in Turkish unless a test chooses another language.
class ExportTest : public testing::Test {
public:
    ExportTest(const ExportTest&) = delete;
    ExportTest& operator=(const ExportTest&) = delete;

protected:
    ExportTest();
    ~ExportTest() override;

    QStringList files() const { return filesIn(clips.path(QStringLiteral("."))); }

    GeneratedClips clips;
};

/// Requires that the file is an MP4 of H.264 and AAC, with its index in front, that decodes without errors.
void expectValidExport(const QString& path);

/// The frames that are shown in a part of a clip, with their times in that part. The first may be shown before it.
std::vector<CountedFrame> framesIn(const std::vector<CountedFrame>& frames, double start, double end);
/// Requires the same numbers, at the same times to less than a millisecond.
void expectFrames(const std::vector<CountedFrame>& actual, const std::vector<CountedFrame>& expected);

/// Where each track of an export ends. Units: seconds.
std::vector<double> trackDurations(const QString& path);

/// The beeps that are heard whole in a part of a clip, with their times in that part.
std::vector<double> beepsIn(const std::vector<double>& beeps, double start, double end);
/// Requires the same times to a millisecond.
void expectBeeps(const std::vector<double>& actual, const std::vector<double>& expected);

} // namespace quelto::test
