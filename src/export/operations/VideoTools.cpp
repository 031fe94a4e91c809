// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/operations/VideoTools.h"

#include "base/language/T.h"
#include "export/errors/ExportError.h"
#include "export/operations/ExportFile.h"
#include "export/rules/CanvasSize.h"
#include "export/rules/Fades.h"
#include "export/rules/FrameRate.h"
#include "export/rules/OutputName.h"
#include "export/rules/Placement.h"
#include "export/title/TitleCard.h"
#include "media/codec/AacEncoder.h"
#include "media/reader/MovieInfo.h"

namespace quelto {

namespace {

using namespace std::chrono_literals;

constexpr double FadeSeconds = 0.3;
constexpr int AudioRate = 192000;
constexpr HostDuration ProgressInterval = 300ms;

/// The clips of a video, back to back.
struct Timeline {
    std::vector<std::unique_ptr<SourceFile>> sources;
    std::vector<TranscodeClip> clips;
    /// Where each clip is in the output.
    std::vector<TimeRange> ranges;
    /// Of the first clip.
    QSizeF size;
    double frameRate = 0;
    bool hasAudio = false;
};

MovieInfo readClip(const SourceFile& source, const ExportControl& control)
{
    try {
        return readMovieInfo(source.readPath(), control.stop);
    } catch (const std::runtime_error&) {
        control.throwIfStopped();
        source.requireUnchanged();
        throw ExportError::failed(T("okuma hatası"));
    }
}

Timeline concatenate(const QStringList& clips, const ExportControl& control)
{
    Timeline timeline;
    double cursor = 0;
    for (const auto& path : clips) {
        auto source = std::make_unique<SourceFile>(path);
        const auto info = readClip(*source, control);
        if (!info.video || !(info.video->end > info.video->start)) {
            continue;
        }
        if (info.intactUntil < info.video->end) {
            throw ExportError::failed(T("okuma hatası"));
        }
        if (timeline.ranges.empty()) {
            timeline.size = info.video->size;
            timeline.frameRate = info.video->frameRate;
        }
        timeline.hasAudio = timeline.hasAudio || !info.audio.empty();
        timeline.clips.push_back(
            {.path = source->readPath(), .start = fromSeconds(info.video->start), .end = fromSeconds(info.video->end)});
        const auto end = cursor + info.video->end - info.video->start;
        timeline.ranges.push_back({.start = cursor, .end = end});
        timeline.sources.push_back(std::move(source));
        cursor = end;
    }
    if (timeline.ranges.empty()) {
        throw ExportError::noVideo();
    }
    return timeline;
}

TranscodeVideo videoOf(const VideoTools::Rendering& rendering, const Timeline& timeline)
{
    const auto canvas = canvasFor(timeline.size, rendering.aspect, rendering.clips.size());
    const auto rate = renderFrameRate(timeline.frameRate);
    TranscodeVideo video{
        .size = canvas,
        .layout = [canvas, fill = rendering.fill](QSizeF size) { return frameLayout(size, canvas, fill); },
        .constantRate = ConstantFrameRate{.framesPerSecond = rate},
        .framesPerSecond = rate,
        .maxKeyFrameInterval = rate};
    if (rendering.transitions == VideoTools::Transitions::fade) {
        video.brightness = [ranges = timeline.ranges](double time) {
            return videoBrightness(ranges, FadeSeconds, time);
        };
    }
    if (rendering.title) {
        if (const auto card = drawTitleCard(*rendering.title, canvas)) {
            video.overlay = {.image = card->image, .position = card->position.toPoint(), .opacity = &titleOpacity};
        }
    }
    return video;
}

std::vector<TranscodeAudio> audioOf(const VideoTools::Rendering& rendering, const Timeline& timeline)
{
    if (!timeline.hasAudio) {
        return {};
    }
    TranscodeAudio track{.bitsPerSecond = AudioRate};
    if (rendering.transitions == VideoTools::Transitions::fade) {
        track.gain = [fades = AudioFades(timeline.ranges, AacEncoder::sampleRate)](std::int64_t sample) {
            return fades.gainAt(sample);
        };
    }
    return {track};
}

ExportControl atIntervals(const ExportControl& control)
{
    if (!control.progress) {
        return control;
    }
    return {.stop = control.stop,
            .progress = [report = control.progress, last = std::optional<HostTime>()](double done) mutable {
                const auto now = HostClock::now();
                if (!last || now - *last >= ProgressInterval || done >= 1) {
                    last = now;
                    report(done);
                }
            }};
}

QString renderTo(const VideoTools::Rendering& rendering, const ExportTarget& target, const ExportControl& control)
{
    const auto timeline = concatenate(rendering.clips, control);
    const TranscodeJob job{
        .clips = timeline.clips, .video = videoOf(rendering, timeline), .audio = audioOf(rendering, timeline)};
    return writeExport(job, timeline.sources, target, atIntervals(control));
}

} // namespace

QString VideoTools::exportAspect(const QString& clip, AspectRatio aspect, FillMode fill, const ExportControl& control)
{
    const auto slash = clip.lastIndexOf(u'/');
    return renderTo({.clips = {clip}, .aspect = aspect, .fill = fill},
                    {.folder = clip.left(slash),
                     .name = [&, fileName = clip.mid(slash + 1)](
                                 int attempt) { return aspectFileName(fileName, aspect, attempt); }},
                    control);
}

void VideoTools::render(const Rendering& rendering, const ExportControl& control)
{
    const auto slash = rendering.output.lastIndexOf(u'/');
    renderTo(rendering,
             {.folder = rendering.output.left(slash),
              .name = [name = rendering.output.mid(slash + 1)](int) { return name; },
              .existing = ExportTarget::Existing::replace},
             control);
}

} // namespace quelto
