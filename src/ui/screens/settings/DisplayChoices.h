// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "capture/recorder/Recorder.h"
#include "platform/DisplayWatch.h"
#include "platform/Displays.h"

#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// The displays that can be recorded, for a ThemedDropDown: first the main display, whichever that is, then each one by
/// its name. Follows displays that come and go.
///
/// Thread: main.
class DisplayChoices : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// Each has a `text` and a `value` for AppSettings.displayID.
    Q_PROPERTY(QVariantList choices READ choices NOTIFY choicesChanged)
    /// AppSettings.displayID; also that of a display that is not connected.
    Q_PROPERTY(QVariant selected READ selected WRITE setSelected NOTIFY selectedChanged)
    /// Then there is nothing to choose from here, and chooseAgain() makes the desktop ask.
    Q_PROPERTY(bool areMadeByTheDesktop READ areMadeByTheDesktop CONSTANT)
    /// Why the desktop did not let the user choose; empty if it did. A sentence for the user.
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)

public:
    explicit DisplayChoices(QObject* parent = nullptr);
    /// recorder: may be null; otherwise it lives while the event loop runs.
    DisplayChoices(AppSettings& settings, Displays& displays, Recorder* recorder, QObject* parent = nullptr);

    const QVariantList& choices() const noexcept { return m_choices; }
    QVariant selected() const { return m_settings.displayID(); }
    void setSelected(const QVariant& display) { m_settings.setDisplayID(display.toUInt()); }

    bool areMadeByTheDesktop() const { return m_displays.areChosenByTheDesktop(); }
    const QString& error() const noexcept { return m_error; }
    /// A recording that runs, or has failed, starts again with the new choice.
    Q_INVOKABLE void chooseAgain();

Q_SIGNALS:
    void choicesChanged();
    void selectedChanged();
    void errorChanged();

private:
    void refresh();
    void setError(const QString& error);

    AppSettings& m_settings;
    Displays& m_displays;
    Recorder* m_recorder;
    DisplayWatch m_watch;
    QVariantList m_choices;
    QString m_error;
};

} // namespace quelto
