// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/settings/CaptureSettings.h"

#include "capture/settings/CaptureArithmetic.h"

namespace quelto {

namespace {

// The longest clip that a moment asks for.
constexpr int MinBufferSecondsForMoments = 90;
constexpr QSize UnknownDisplaySize{1920, 1080};

QString textOf(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

CaptureSettings CaptureSettings::of(const AppSettings& settings)
{
    return {.displayID = settings.displayID(),
            .resolution = settings.resolution(),
            .quality = settings.quality(),
            .framesPerSecond = settings.fps(),
            .codec = settings.codec(),
            .capturesAudio = settings.captureAudio(),
            .showsCursor = settings.showCursor(),
            .capturesMicrophone = settings.captureMicrophone(),
            .microphoneID = settings.microphoneID(),
            .capturesVoiceChat = settings.captureVoiceChat()};
}

QString CaptureSettings::captureSignature() const
{
    return QStringList{QString::number(displayID),
                       rawValueOf(resolution),
                       rawValueOf(quality),
                       QString::number(framesPerSecond),
                       rawValueOf(codec),
                       textOf(capturesAudio),
                       textOf(showsCursor),
                       textOf(capturesMicrophone),
                       microphoneID,
                       textOf(capturesVoiceChat)}
        .join(u'|');
}

QSize CaptureSettings::outputSize(QSize display) const
{
    return scaledSize(display, heightOf(resolution), codec);
}

int CaptureSettings::bitrate(QSize output) const
{
    return bitrateFor(output, framesPerSecond, quality, codec);
}

QSize estimatedCaptureSize(const CaptureSettings& settings, const Displays& displays)
{
    const auto all = displays.all();
    const auto found = std::ranges::find_if(all, [&](const DisplayInfo& each) {
        return settings.displayID == 0 || displays.areChosenByTheDesktop() ? each.isMain
                                                                           : each.id == settings.displayID;
    });
    const bool isKnown = found != all.end() && !found->pixelSize.isEmpty();
    return settings.outputSize(isKnown ? found->pixelSize : UnknownDisplaySize);
}

int bufferSeconds(const AppSettings& settings)
{
    return settings.autoClipEnabled() ? std::max(settings.clipLength(), MinBufferSecondsForMoments)
                                      : settings.clipLength();
}

} // namespace quelto
