// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/CaptureEstimates.h"

#include "capture/settings/CaptureSettings.h"
#include "ui/screens/settings/SettingsPageForQml.h"

#include <cmath>

namespace quelto {

namespace {

constexpr double BitsPerMegabit = 1'000'000;
constexpr double BytesPerMegabyte = 1'000'000;
constexpr double BytesPerBit = 0.125;
/// What the program needs beside the buffered samples, as a factor and in megabytes.
constexpr double MemoryFactor = 1.1;
constexpr double BaseMemory = 30;

/// A half rounds to the even number.
QString rounded(double value)
{
    return QString::number(std::nearbyint(value), 'f', 0);
}

} // namespace

CaptureFigures CaptureFigures::of(QSize output, int bitrate, int clipLength)
{
    const auto megabytes = bitrate * BytesPerBit * clipLength / BytesPerMegabyte;
    return {.output = QStringLiteral("%1×%2").arg(output.width()).arg(output.height()),
            .bitrate = QStringLiteral("%1 Mbps").arg(rounded(bitrate / BitsPerMegabit)),
            .clipSize = QStringLiteral("~%1 MB").arg(rounded(megabytes)),
            .memory = QStringLiteral("~%1 MB").arg(rounded(megabytes * MemoryFactor + BaseMemory))};
}

CaptureEstimates::CaptureEstimates(QObject* parent)
    : CaptureEstimates(SettingsPageForQml::instance.value().settings,
                       *SettingsPageForQml::instance.value().platform.displays, RecorderForQml::instance, parent)
{
}

CaptureEstimates::CaptureEstimates(const AppSettings& settings, const Displays& displays, const Recorder* recorder,
                                   QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_displays(displays)
{
    connect(&m_watch, &DisplayWatch::changed, this, &CaptureEstimates::refresh);
    // Not changed(): a volume that is dragged must not ask for the displays again and again.
    for (const auto signal :
         {&AppSettings::displayIDChanged, &AppSettings::resolutionChanged, &AppSettings::qualityChanged,
          &AppSettings::fpsChanged, &AppSettings::codecChanged, &AppSettings::clipLengthChanged}) {
        connect(&settings, signal, this, &CaptureEstimates::refresh);
    }
    // The size of a display that the desktop chooses is known when it is recorded.
    if (recorder != nullptr) {
        connect(recorder, &Recorder::captureSummaryChanged, this, &CaptureEstimates::refresh);
    }
    refresh();
}

void CaptureEstimates::refresh()
{
    const auto capture = CaptureSettings::of(m_settings);
    const auto output = estimatedCaptureSize(capture, m_displays);
    const auto figures = CaptureFigures::of(output, capture.bitrate(output), m_settings.clipLength());
    if (m_figures != figures) {
        m_figures = figures;
        Q_EMIT changed();
    }
}

} // namespace quelto
