// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "platform/Displays.h"

#include <QSize>
#include <QString>

namespace quelto {

/// The preferences that a capture session is built from. A change of any of them needs a new session; a change of any
/// other preference does not.
struct CaptureSettings {
    /// 0 for the main display.
    std::uint32_t displayID = 0;
    ResolutionPreset resolution = ResolutionPreset::p1080;
    QualityPreset quality = QualityPreset::high;
    int framesPerSecond = 60;
    VideoCodec codec = VideoCodec::h264;
    bool capturesAudio = true;
    bool showsCursor = true;
    bool capturesMicrophone = true;
    /// Empty for the default device.
    QString microphoneID;
    bool capturesVoiceChat = true;

    bool operator==(const CaptureSettings&) const = default;

    static CaptureSettings of(const AppSettings& settings);

    /// One text of all fields, in the order above, separated by "|".
    QString captureSignature() const;
    QSize outputSize(QSize display) const;
    /// Units: bits per second.
    int bitrate(QSize output) const;
};

/// The output size of a session that would start now; that of a 1920×1080 display if the display is unknown. Asks the
/// display system on each call.
QSize estimatedCaptureSize(const CaptureSettings& settings, const Displays& displays);

/// How far back the replay buffer reaches: the clip length, but at least 90 s while moments are detected.
/// Units: seconds.
int bufferSeconds(const AppSettings& settings);

} // namespace quelto
