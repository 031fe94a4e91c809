// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/language/L10n.h"
#include "base/tasks/MainQueue.h"
#include "library/naming/ClipMeta.h"
#include "tests/export/queue/Gate.h"
#include "tests/library/clips/LibraryFixture.h"
#include "tests/ui/RecordingDesktop.h"
#include "ui/screens/clip/ClipDetail.h"

#include <QTest>

namespace quelto::test {

/// The objects behind the page of a clip, on a real export queue.
class ClipScreenFixture : public LibraryFixture {
public:
    ClipScreenFixture(const ClipScreenFixture&) = delete;
    ClipScreenFixture& operator=(const ClipScreenFixture&) = delete;

protected:
    explicit ClipScreenFixture(const ClipOperations& operations = {})
        : exports({.queue = queue, .library = library, .navigation = navigation, .operations = operations})
    {
        L10n::use(QStringLiteral("tr"));
        QDir().mkpath(settings.saveFolder());
    }

    ClipDetail::Dependencies page()
    {
        return {.exports = exports,
                .frames = frames,
                .library = library,
                .thumbnails = thumbnails,
                .commands = commands,
                .settings = settings,
                .navigation = navigation};
    }
    /// Opens the page of a clip.
    std::unique_ptr<ClipDetail> open(const QString& path)
    {
        navigation.openClip(path);
        auto detail = std::make_unique<ClipDetail>(page());
        detail->setPath(path);
        return detail;
    }
    void waitUntilIdle() const
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !queue.isBusy(); }, 60000));
    }

    MainQueue main;
    ManualTime toastTime;
    ManualQueue toastQueue{toastTime};
    ExportQueue queue{main};
    Navigation navigation{toastQueue};
    RecordingFileManager files;
    RecordingPasteboard pasteboard;
    ClipExports exports;
    /// Drives the saving of frames.
    ManualTime frameTime;
    ManualQueue frameQueue{frameTime};
    ClipFrames frames{{.main = frameQueue, .work = frameQueue, .pasteboard = pasteboard, .navigation = navigation}};
    ClipCommands commands{{.library = library,
                           .files = files,
                           .pasteboard = pasteboard,
                           .settings = settings,
                           .navigation = navigation,
                           .drag = {}}};
    /// What the reader of clips says, and its reads that have not run.
    ClipInfo info{.duration = 61.6, .width = 1920, .height = 1080, .fps = 59.94};
    std::vector<Task> reads;
    ThumbnailCache thumbnails{ThumbnailCache::Dependencies{
        .main = libraryMain,
        .work = [this](Task task) { reads.push_back(std::move(task)); },
        .read = [this](const QString&, const std::stop_token&) { return ClipPreview{.info = info, .thumbnail = {}}; },
        .byteLimit = 1 << 20}};
};

/// Exports that copy the clip, so that tests of everything around them are fast. They wait at the gate of the test.
class CopyingExports {
public:
    ClipOperations operations() const
    {
        return {.trim =
                    [state = m_state](const QString& clip, const TimeRange& range, const ExportControl& control) {
                        state->ranges.push_back(range);
                        return state->copy(clip, " (kırpılmış)", control);
                    },
                .exportAspect =
                    [state = m_state](const QString& clip, AspectRatio aspect, FillMode fill,
                                      const ExportControl& control) {
                        state->shapes.emplace_back(aspect, fill);
                        return state->copy(clip, " (9x16)", control);
                    },
                .shrink =
                    [state = m_state](const QString& clip, int limitMB, const ExportControl& control) {
                        state->limits.push_back(limitMB);
                        return state->copy(clip, " (Discord)", control);
                    }};
    }

    struct State {
        /// Blocks the exports until the test opens it; none at first.
        std::optional<Gate> gate;
        /// Thrown instead of a copy.
        std::optional<QString> failure;
        /// Reported before the gate.
        std::optional<double> progress;
        std::vector<TimeRange> ranges;
        std::vector<std::pair<AspectRatio, FillMode>> shapes;
        std::vector<int> limits;

        QString copy(const QString& clip, const char* suffix, const ExportControl& control) const;
    };
    State& state() const { return *m_state; }

private:
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

inline QString CopyingExports::State::copy(const QString& clip, const char* suffix, const ExportControl& control) const
{
    EXPECT_TRUE(QFile::exists(clip)) << "an export starts with the clip's present name";
    if (progress) {
        control.progress(*progress);
    }
    if (gate) {
        gate->passOrStop(control.stop);
    }
    if (failure) {
        throw std::runtime_error(failure->toStdString());
    }
    auto path = clip;
    path.insert(path.size() - 4, QString::fromUtf8(suffix));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("cp");
    return path;
}

} // namespace quelto::test
