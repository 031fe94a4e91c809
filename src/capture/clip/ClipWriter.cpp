// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/ClipWriter.h"

#include "base/failures/WriteFailure.h"
#include "base/files/AtomicFile.h"
#include "base/files/FileName.h"
#include "base/language/T.h"
#include "capture/clip/AudioTrackEncoder.h"
#include "capture/clip/ClipPlan.h"
#include "capture/clip/RecorderError.h"
#include "capture/mix/AudioMixer.h"
#include "library/naming/ClipName.h"
#include "media/audio/ResamplingConverter.h"
#include "media/mux/Mp4Writer.h"

#include <QDir>

#include <filesystem>
#include <system_error>

namespace quelto {

namespace {

constexpr int MainBitsPerSecond = 192000;
constexpr int AlternateBitsPerSecond = 128000;

/// The audio of a clip: the mix first, then each source on its own if there is more than one. Without a mix there is no
/// main track that the other tracks could be alternates of.
std::vector<AudioMix> mixTracks(const ClipRequest& request, const ClipPlan& plan)
{
    const AudioMixer mixer(makeResamplingConverter);
    const auto& snapshot = request.snapshot;
    const auto audio = audioNear(snapshot.audio, plan.start);
    const auto mic = audioNear(snapshot.mic, plan.start);
    const auto chat = audioNear(snapshot.chat, plan.start);

    std::vector<AudioMix> tracks;
    // System audio already includes voice chat; mixing it in again would double it.
    auto mix = mixer.mix({{audio, request.systemGain}, {mic, request.micGain}}, plan.start, plan.end);
    if (mix.isEmpty()) {
        return tracks;
    }
    tracks.push_back(std::move(mix));
    if (hasOwnTracks(snapshot)) {
        for (const auto& source : {audio, mic, chat}) {
            auto track = mixer.mix({{source, 1.0F}}, plan.start, plan.end);
            tracks.push_back(track.isEmpty() ? AudioMixer::silence(plan.start, plan.end) : std::move(track));
        }
    }
    return tracks;
}

std::vector<std::unique_ptr<AudioTrackEncoder>> startEncoding(std::vector<AudioMix> mixes)
{
    std::vector<std::unique_ptr<AudioTrackEncoder>> tracks;
    for (auto& mix : mixes) {
        const bool isMain = tracks.empty();
        tracks.push_back(
            std::make_unique<AudioTrackEncoder>(std::move(mix), isMain ? MainBitsPerSecond : AlternateBitsPerSecond,
                                                isMain ? Mp4TrackState::enabled : Mp4TrackState::disabled));
    }
    return tracks;
}

void createFolder(const QString& folder)
{
    const std::filesystem::path path(encodeFileName(folder).toStdString());
    std::error_code error;
    do {
        std::filesystem::create_directories(path, error);
    } while (error == std::errc::interrupted);
    if (error) {
        throw std::system_error(error);
    }
}

QString publishAs(const ClipNameParts& parts, AtomicFile& file)
{
    for (int mark = 1;; ++mark) {
        auto name = clipFileName(parts, mark);
        if (file.tryPublish(name)) {
            return name;
        }
    }
}

QString publish(const ClipNameParts& parts, AtomicFile& file)
{
    const auto portableParts = portableClipNameParts(parts);
    try {
        return publishAs(parts, file);
    } catch (const std::system_error&) {
        // A file system that rejects a character may report EINVAL, ENOENT or EPERM.
        if (portableParts == parts) {
            throw;
        }
    }
    return publishAs(portableParts, file);
}

SavedClip writeClip(ClipRequest request, const ClipPlan& plan)
{
    auto tracks = startEncoding(mixTracks(request, plan));
    const auto& video = request.snapshot.video;
    Mp4Movie movie{
        .video = {video.begin() + plan.firstSample, video.end()}, .start = plan.start, .end = plan.end, .audio = {}};
    for (const auto& track : tracks) {
        movie.audio.push_back(track->asAudioTrackInfo());
    }
    // From here on only the tracks and the movie hold the samples that they still need.
    request.snapshot = {};
    createFolder(request.folder);
    const auto date = QDateTime::currentDateTime();

    AtomicFile file(request.folder);
    writeMp4(std::move(movie), file);
    file.flush();
    const auto name = publish({.game = request.game, .date = date, .suffix = request.suffix}, file);
    return {.path = QDir(request.folder).filePath(name), .duration = toSeconds(plan.end - plan.start)};
}

} // namespace

SavedClip ClipWriter::write(ClipRequest request)
{
    const auto plan = planClip(request.snapshot.video, request.endTime, request.seconds);
    if (!plan) {
        throw RecorderError::emptyBuffer();
    }
    if (!isPlausible(*plan)) {
        throw RecorderError::writer(T("Görüntünün zaman bilgisi bozuk. Kaydı durdurup yeniden başlatın."));
    }
    try {
        return writeClip(std::move(request), *plan);
    } catch (const std::system_error& error) {
        throw RecorderError::writer(writeFailureText(error.code().value()));
    } catch (const std::bad_alloc&) {
        throw RecorderError::writer(T("Bellek yetmedi. Klip süresini kısaltın."));
    } catch (const std::exception& error) {
        const auto text = QString::fromLocal8Bit(error.what());
        throw RecorderError::writer(text.isEmpty() ? T("bilinmeyen hata") : text);
    }
}

} // namespace quelto
