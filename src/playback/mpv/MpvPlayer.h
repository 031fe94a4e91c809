// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/DetachableQueue.h"
#include "playback/model/Player.h"
#include "playback/mpv/MpvHandle.h"
#include "playback/rules/FrameTimes.h"

namespace quelto {

/// Plays clips with libmpv.
///
/// A file is opened when something can draw it, because libmpv gives up video that has no output when the file opens.
class MpvPlayer final : public Player {
    Q_OBJECT

public:
    /// The queue must outlive the player.
    explicit MpvPlayer(TaskQueue& main);
    ~MpvPlayer() override;

    void open(const QString& path) override;
    void close() override;
    void play(double rate) override;
    void pause() override;
    void seek(double seconds) override;
    void setVolume(double volume) override;
    double position() const override;
    std::optional<double> duration() const override { return m_duration; }
    double rate() const override { return m_isPlaying ? m_rate : 0; }

    /// Shared with what draws its pictures, which may outlive the player by a frame.
    const std::shared_ptr<MpvHandle>& handle() const { return m_mpv; }
    /// Pictures can be drawn from now on.
    void outputIsReady();

private:
    void takeEvents();
    void propertyChanged(std::uint64_t number, const mpv_event_property& property);
    void openWaiting();
    void startSeek();
    void seekEnded();

    std::shared_ptr<DetachableQueue> m_main;
    std::shared_ptr<MpvHandle> m_mpv;
    QString m_path;
    std::optional<double> m_duration;
    double m_time = 0;
    double m_rate = 1;
    /// The latest position asked for; reported until playback moves on from it.
    std::optional<double> m_target;
    /// libmpv is busy with an earlier seek.
    bool m_isSeeking = false;
    /// `m_target` changed since that seek started.
    bool m_isTargetNew = false;
    bool m_isOutputReady = false;
    bool m_isLoaded = false;
    bool m_isPlaying = false;
    bool m_isEnded = false;
};

} // namespace quelto
