// SPDX-License-Identifier: GPL-3.0-or-later
// Exports a short part of arbitrary bytes as a clip: demuxes, decodes, draws and encodes it. Requires no crash and no
// other errors than those that exports report.
#include "base/files/AtomicFile.h"
#include "export/rules/Placement.h"
#include "media/reader/MovieInfo.h"
#include "media/transcode/Transcoder.h"

#include "tests/fuzz/MemoryFile.h"

#include <QTemporaryDir>

#include <cmath>

namespace {

using namespace quelto;
using fuzz::require;

constexpr QSize Canvas(64, 96);
/// The most frames that are encoded. The rest is like them.
constexpr int MaxFrames = 6;
constexpr double MaxSeconds = 0.2;
constexpr std::size_t MaxAudioTracks = 2;

void requireBounds(const MovieInfo& info)
{
    require(std::isfinite(info.duration) && info.duration >= 0);
    require(std::isfinite(info.video->start) && std::isfinite(info.video->end));
    require(std::isfinite(info.video->frameRate) && info.video->frameRate >= 0);
    require(info.video->size.width() >= 0 && info.video->size.height() >= 0);
}

TranscodeJob jobFor(const QString& path, const MovieInfo& info)
{
    const auto start = std::max(0.0, info.duration / 4);
    TranscodeJob job{
        .clips = {{.path = path,
                   .start = fromSeconds(start),
                   .end = fromSeconds(std::min(start + MaxSeconds, info.duration))}},
        .video = {.size = Canvas, .layout = [](QSizeF size) { return frameLayout(size, Canvas, FillMode::blur); }},
        .audio = {}};
    for (std::size_t i = 0; i < std::min(info.audio.size(), MaxAudioTracks); ++i) {
        job.audio.push_back({.sourceTrack = static_cast<int>(i), .isEnabled = info.audio[i].isEnabled});
    }
    return job;
}

void exportPart(const QString& path)
{
    std::stop_source stop;
    const auto info = readMovieInfo(path, stop.get_token());
    if (!info.video || !(info.duration > 0)) {
        return;
    }
    requireBounds(info);
    static const QTemporaryDir folder;
    AtomicFile output(folder.path());
    int frames = 0;
    transcode(jobFor(path, info), output,
              {.stop = stop.get_token(),
               .progress =
                   [&](double) {
                       if (++frames == MaxFrames) {
                           stop.request_stop();
                       }
                   },
               .encoder = EncoderChoice::software});
    require(output.size() > 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const fuzz::MemoryFile file(data, size);
    try {
        exportPart(file.path());
    } catch (const std::runtime_error&) {
        // Cannot be read.
    } catch (const TranscodeStopped&) {
        // Has more frames than are encoded.
    }
    return 0;
}
