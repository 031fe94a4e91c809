// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/DetachableQueue.h"
#include "playback/model/Player.h"
#include "playback/mpv/MpvHandle.h"
#include "playback/rules/FrameTimes.h"

#include <stop_token>

namespace quelto {

/// Plays clips with libmpv. Its pictures are drawn by an output that is connected to `handle`.
class MpvPlayer final : public Player {
    Q_OBJECT

public:
    struct Dependencies {
        TaskQueue& main;
        /// Runs tasks that read files, on another thread.
        std::function<void(Task)> work;
    };

    /// All must outlive the player. Errors: std::runtime_error if libmpv cannot start.
    explicit MpvPlayer(Dependencies dependencies);
    ~MpvPlayer() override;

    void open(const QString& path) override;
    bool isOpening() const override { return m_isOpening; }
    void close() override;
    void play(double rate) override;
    void pause() override;
    void seek(double seconds) override;
    void setVolume(double volume) override;
    double position() const override;
    std::optional<double> duration() const override { return m_duration; }
    double rate() const override { return m_isPlaying ? m_rate : 0; }
    const FrameTimes& frames() const override { return m_frames; }

    /// Outputs share it, because they may outlive the player by a picture.
    const std::shared_ptr<MpvHandle>& handle() const { return m_mpv; }
    /// An output is connected. Files are opened from then on: libmpv drops the video of a file that it opens without
    /// one.
    void setOutputReady();
    /// The output is about to end. The sound of an open file goes on, and its picture comes back with the next output.
    void setOutputLost();
    /// The output holds no picture of this file or of one that it replaced, so that it must not be shown.
    bool isBlank() const { return m_isBlank; }

Q_SIGNALS:
    /// The output must draw again: its picture is of an earlier file.
    void pictureOutdated();

private:
    void takeEvents();
    void fileLoaded();
    void playbackRestarted();
    void commandEnded(const mpv_event& reply);
    void propertyChanged(const mpv_event& event);
    void forgetFile();
    /// Tells libmpv to open the file, or to close the one before, when it has taken the request before. Of several
    /// quick requests, only the latest one is carried out.
    void requestFile();
    void applyRate();
    void openingEnded();
    void readFrameTimes();
    void setFrames(FrameTimes frames);
    void startSeek();
    void seekEnded();

    Dependencies m_dependencies;
    std::shared_ptr<DetachableQueue> m_replies;
    std::shared_ptr<MpvHandle> m_mpv;
    QString m_path;
    FrameTimes m_frames;
    std::stop_source m_reading;
    std::optional<double> m_duration;
    double m_time = 0;
    double m_rate = 1;
    /// The latest position asked for, until playback moves on from it.
    std::optional<double> m_target;
    /// libmpv carries out a seek.
    bool m_isSeeking = false;
    /// `m_target` changed since that seek started.
    bool m_isTargetNew = false;
    bool m_isOutputReady = false;
    bool m_isBlank = true;
    bool m_isOpening = false;
    /// libmpv has not answered the latest request yet.
    bool m_isRequestPending = false;
    /// libmpv was told to open an earlier file, and not to close it.
    bool m_hasEarlierFile = false;
    /// libmpv was told to open `m_path`.
    bool m_isRequested = false;
    /// libmpv began to open `m_path`. Events before that are about an earlier file.
    bool m_isBegun = false;
    bool m_isLoaded = false;
    bool m_isPlaying = false;
    bool m_isEnded = false;
};

} // namespace quelto
