// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/operations/Exporter.h"

#include "base/files/FileName.h"
#include "base/language/T.h"
#include "export/errors/ExportError.h"
#include "export/operations/ExportFile.h"
#include "export/rules/EvenSide.h"
#include "export/rules/OutputName.h"
#include "export/rules/Placement.h"
#include "export/rules/ShrinkLadder.h"
#include "export/rules/ShrinkPasses.h"
#include "media/reader/MovieInfo.h"

#include <filesystem>

namespace quelto {

namespace {

/// Of the sound of a trimmed clip. What the source has is kept within these limits. Units: bits per second.
constexpr int MinAudioRate = 128000;
constexpr int MaxAudioRate = 256000;
constexpr int UnknownAudioRate = 192000;
/// One key frame a second, as in clips, so that the copy can be searched as quickly.
constexpr int DefaultFrameRate = 60;

int nominalRate(double frameRate)
{
    return frameRate >= 1 ? static_cast<int>(std::lround(std::min(frameRate, 1000.0))) : DefaultFrameRate;
}

/// The picture at its own size. An odd line or column is cut off, because the encoder cannot store it.
TranscodeVideo unscaled(const MovieInfo::Video& video)
{
    const QSize canvas(evenSide(video.size.width()), evenSide(video.size.height()));
    const auto rate = nominalRate(video.frameRate);
    return {.size = canvas,
            .layout =
                [canvas, original = video.size](QSizeF size) {
                    return size == original ? FrameLayout{.canvas = canvas, .image = QRectF({0, 0}, size)}
                                            : frameLayout(size, canvas, FillMode::crop);
                },
            .framesPerSecond = rate,
            .maxKeyFrameInterval = rate};
}

std::vector<TranscodeAudio> allTracks(const MovieInfo& info)
{
    std::vector<TranscodeAudio> tracks;
    for (const auto& track : info.audio) {
        tracks.push_back({.sourceTrack = static_cast<int>(tracks.size()),
                          .isEnabled = track.isEnabled,
                          .bitsPerSecond = track.bitsPerSecond > 0
                              ? std::clamp(track.bitsPerSecond, MinAudioRate, MaxAudioRate)
                              : UnknownAudioRate});
    }
    return tracks;
}

/// Nothing for a file that is not a movie.
std::optional<MovieInfo> tryReadInfo(const SourceFile& source, const ExportControl& control)
{
    try {
        return readMovieInfo(source.readPath(), control.stop);
    } catch (const std::runtime_error&) {
        control.throwIfStopped();
        return std::nullopt;
    }
}

std::vector<std::unique_ptr<SourceFile>> opened(const QString& clip)
{
    std::vector<std::unique_ptr<SourceFile>> sources;
    sources.push_back(std::make_unique<SourceFile>(clip));
    return sources;
}

qint64 sizeOf(const QString& path)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(encodeFileName(path).toStdString(), error);
    return error ? 0 : static_cast<qint64>(size);
}

void removeFile(const QString& path)
{
    std::error_code error;
    std::filesystem::remove(encodeFileName(path).toStdString(), error);
}

} // namespace

QString Exporter::trim(const QString& clip, const TimeRange& range, const ExportControl& control)
{
    const auto sources = opened(clip);
    const auto& source = *sources.front();
    const auto info = tryReadInfo(source, control);
    if (!info) {
        throw ExportError::failed(T("oturum oluşturulamadı"));
    }
    if (!info->video) {
        throw ExportError::noVideo();
    }
    const TimeRange part{.start = std::max(range.start, 0.0), .end = std::min(range.end, info->duration)};
    if (!(part.duration() > 0)) {
        throw ExportError::failed(T("oturum oluşturulamadı"));
    }
    if (part.end > info->intactUntil) {
        throw ExportError::failed(T("okuma hatası"));
    }
    const TranscodeJob job{
        .clips = {{.path = source.readPath(), .start = fromSeconds(part.start), .end = fromSeconds(part.end)}},
        .video = unscaled(*info->video),
        .audio = allTracks(*info)};
    const auto suffix = T("kırpılmış");
    return writeExport(job, sources,
                       {.folder = source.folder(),
                        .name = [&](int attempt) { return copyFileName(source.fileName(), suffix, attempt); }},
                       control);
}

QString Exporter::compressForDiscord(const QString& clip, int limitMB, const ExportControl& control)
{
    const ShrinkPasses passes{.limitMB = limitMB};
    if (passes.isSmallEnough(sizeOf(clip))) {
        return clip;
    }
    // All passes read the same file, whatever its name is by then.
    const auto sources = opened(clip);
    QString previous;
    const auto encodePass = [&](int pass) {
        try {
            return encode(sources, passes.targetBytes(pass), control);
        } catch (const ExportStopped&) {
            // Nobody will be told of it.
            removeFile(previous);
            throw;
        }
    };
    for (int pass = 0;; ++pass) {
        auto output = encodePass(pass);
        // Not before the next one is complete, so the names of the passes alternate.
        if (!previous.isEmpty()) {
            removeFile(previous);
        }
        if (passes.verdict(pass, sizeOf(output)) != ShrinkVerdict::tryAgain) {
            return output;
        }
        previous = std::move(output);
    }
}

QString Exporter::encode(std::span<const std::unique_ptr<SourceFile>> sources, double targetBytes,
                         const ExportControl& control)
{
    const auto& source = *sources.front();
    const auto info = tryReadInfo(source, control);
    if (!info || !(info->duration > 0) || !info->video) {
        throw ExportError::noVideo();
    }
    if (info->intactUntil < info->duration) {
        throw ExportError::failed(T("okuma hatası"));
    }
    const auto settings = shrinkSettings(targetBytes,
                                         {.duration = info->duration,
                                          .hasAudio = !info->audio.empty(),
                                          .size = info->video->size,
                                          .frameRate = info->video->frameRate});
    TranscodeJob job{.clips = {{.path = source.readPath(), .start = {}, .end = fromSeconds(info->duration)}},
                     .video = {.size = settings.size,
                               .layout =
                                   [size = settings.size](QSizeF) {
                                       return FrameLayout{.canvas = size, .image = QRectF({0, 0}, QSizeF(size))};
                                   },
                               .keptTimes = {.minGap = settings.minGap},
                               .framesPerSecond = nominalRate(settings.frameRate),
                               .maxKeyFrameInterval = settings.keyFrameInterval,
                               .bitsPerSecond = settings.videoRate}};
    if (settings.audioRate > 0) {
        job.audio.push_back({.bitsPerSecond = settings.audioRate});
    }
    return writeExport(
        job, sources,
        {.folder = source.folder(),
         .name = [&](int attempt) { return copyFileName(source.fileName(), QStringLiteral("Discord"), attempt); }},
        control);
}

} // namespace quelto
