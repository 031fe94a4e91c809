// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ChildProcess.h"
#include "base/time/HostClock.h"

#include <functional>
#include <vector>

namespace quelto::pipewire {

/// Runs a command that must succeed and returns its output.
QString run(const QString& program, const QStringList& arguments);
/// The value of a variable that tools/private-desktop sets.
QString desktopVariable(const char* variable);
/// Polls until the condition holds. False on timeout.
bool becomesTrue(const std::function<bool()>& condition, double timeoutSeconds = 5);
/// Whether a condition holds in one of three recordings. A busy machine occasionally loses a cycle, which shifts the
/// audio in it.
bool holdsInOneOfThree(const std::function<bool()>& recordAndCheck);

/// The id of the only node that plays audio.
QString playingNode();
/// Moves a playing node to another output. Not with pactl: its server confirms the request before it is sent, and loses
/// it if pactl exits at that moment.
void moveStream(const QString& node, const QString& sink);

/// Loads a module of the PulseAudio server, for instance to add a device, and unloads it when it is destroyed.
class LoadedModule {
public:
    explicit LoadedModule(const QStringList& arguments);
    ~LoadedModule();
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

private:
    QString m_index;
};

/// Changes a setting of the server's graph, such as "clock.force-quantum", until it is destroyed.
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

/// Another program that plays a tone.
class TonePlayerProcess {
public:
    struct Settings {
        double leftHertz = 440;
        double rightHertz = 440;
        double amplitude = 0.25;
        bool isBeeping = false;
        QString target;
        /// The name of the executable.
        QString binary = QStringLiteral("tone_player");
        /// Added to the command line, without a meaning for the player.
        QStringList moreArguments;
    };

    explicit TonePlayerProcess(const Settings& settings);

    /// The times at which the beeps so far entered the graph.
    std::vector<HostTime> beeps();

private:
    static QString executable(const QString& name);

    ChildProcess m_process;
    QByteArray m_unread;
    std::vector<HostTime> m_beeps;
};

} // namespace quelto::pipewire
