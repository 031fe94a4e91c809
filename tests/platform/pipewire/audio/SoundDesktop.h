// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ChildProcess.h"
#include "base/time/HostClock.h"

#include <functional>
#include <vector>

namespace quelto::pipewire {

/// The text of a command that must succeed.
QString run(const QString& program, const QStringList& arguments);
/// What the private desktop calls its devices.
QString desktopName(const char* variable);
/// Whether a claim comes true in time.
bool comesTrue(const std::function<bool()>& claim, double longestSeconds = 5);
/// Whether a claim on every beep or cycle of a recording holds in one of three: a busy machine loses a cycle now and
/// then, and so shifts what is played in it.
bool holdsUndisturbed(const std::function<bool()>& claimOnARecording);

/// The node of the one program that plays.
QString onlyStream();
/// Sends what a node plays to another output. Not by pactl: its server confirms before the request is on its way, and
/// forgets it when pactl leaves in that moment.
void moveStream(const QString& node, const QString& sink);

/// A module of the PulseAudio server, here for adding devices.
class LoadedModule {
public:
    explicit LoadedModule(const QStringList& arguments);
    ~LoadedModule();
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

private:
    QString m_index;
};

/// A setting of the server's graph, such as "clock.force-quantum", for the time being.
class GraphSetting {
public:
    GraphSetting(const QString& name, int value);
    ~GraphSetting();
    GraphSetting(const GraphSetting&) = delete;
    GraphSetting& operator=(const GraphSetting&) = delete;

private:
    void set(int value);

    QString m_name;
};

/// A tone from another process.
class OtherProgram {
public:
    struct Sound {
        double leftHertz = 440;
        double rightHertz = 440;
        double amplitude = 0.25;
        bool isBeeping = false;
        QString target;
    };

    explicit OtherProgram(const Sound& sound);

    /// When its beeps entered the graph, so far.
    std::vector<HostTime> beeps();

private:
    ChildProcess m_process;
    QByteArray m_unread;
    std::vector<HostTime> m_beeps;
};

} // namespace quelto::pipewire
