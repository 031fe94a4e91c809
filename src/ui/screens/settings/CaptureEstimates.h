// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "capture/recorder/Recorder.h"
#include "platform/DisplayWatch.h"
#include "platform/Displays.h"

#include <QSize>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// What recordings with the current settings need, as texts.
struct CaptureFigures {
    QString output;
    QString bitrate;
    QString clipSize;
    QString memory;

    /// Units: pixels, bits per second, seconds.
    static CaptureFigures of(QSize output, int bitrate, int clipLength);

    bool operator==(const CaptureFigures&) const = default;
};

/// The figures for the settings page. Follows the settings and the displays.
///
/// Thread: main.
class CaptureEstimates : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString output READ output NOTIFY changed)
    Q_PROPERTY(QString bitrate READ bitrate NOTIFY changed)
    Q_PROPERTY(QString clipSize READ clipSize NOTIFY changed)
    Q_PROPERTY(QString memory READ memory NOTIFY changed)

public:
    explicit CaptureEstimates(QObject* parent = nullptr);
    /// recorder: may be null.
    CaptureEstimates(const AppSettings& settings, const Displays& displays, const Recorder* recorder,
                     QObject* parent = nullptr);

    const QString& output() const noexcept { return m_figures.output; }
    const QString& bitrate() const noexcept { return m_figures.bitrate; }
    const QString& clipSize() const noexcept { return m_figures.clipSize; }
    const QString& memory() const noexcept { return m_figures.memory; }

Q_SIGNALS:
    void changed();

private:
    void refresh();

    const AppSettings& m_settings;
    const Displays& m_displays;
    DisplayWatch m_watch;
    CaptureFigures m_figures;
};

} // namespace quelto
