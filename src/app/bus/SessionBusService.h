// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "capture/recorder/Recorder.h"
#include "ui/shared/Navigation.h"

#include <QDBusAbstractAdaptor>
#include <QDBusContext>
#include <QDBusVariant>
#include <QVariantMap>

#include <functional>
#include <optional>

namespace quelto {

namespace busNames {
inline const QString service = QStringLiteral("app.quelto.Quelto");
inline const QString path = QStringLiteral("/app/quelto/Quelto");
} // namespace busNames

/// Quelto's own interface on the session bus, for scripts and for desktop shortcuts where programs cannot grab global
/// keys.
class ProgramOnBus : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.quelto.Quelto")
    /// "idle", "starting", "recording" or "error".
    Q_PROPERTY(QString State READ stateName)
    /// In the error state: the message that the user sees.
    Q_PROPERTY(QString Message READ message)
    Q_PROPERTY(QString CaptureSummary READ captureSummary)
    Q_PROPERTY(QString MicWarning READ micWarning)
    Q_PROPERTY(double BufferMB READ bufferMB)
    Q_PROPERTY(bool IsSaving READ isSaving)
    /// The page in the window, such as "library", or "review" with the match's id.
    Q_PROPERTY(QString Page READ pageName)

public:
    ProgramOnBus(Recorder& recorder, AppSettings& settings, const Navigation& navigation, QObject* object);

    QString stateName() const;
    QString message() const { return m_recorder.errorMessage(); }
    QString captureSummary() const { return m_recorder.captureSummary(); }
    QString micWarning() const { return m_recorder.micWarningText(); }
    double bufferMB() const { return m_recorder.bufferMB(); }
    bool isSaving() const { return m_recorder.isSaving(); }
    QString pageName() const { return pageText(m_navigation.page()); }

public Q_SLOTS:
    /// Does the same as the global key.
    void SaveClip();
    void Start();
    void Stop();
    /// Sets a preference by its name. An unknown name, and a value that the settings page does not offer, is an error.
    void SetSetting(const QString& key, const QDBusVariant& value, const QDBusMessage& call);

Q_SIGNALS:
    void ClipSaved(const QString& path);
    void SaveFailed(const QString& message);
    /// With the new value of State.
    void StateChanged(const QString& state);

private:
    Recorder& m_recorder;
    AppSettings& m_settings;
    const Navigation& m_navigation;
};

/// The desktop's interface for single-instance programs: a second start raises the window of the first. A program that
/// is quitting answers with an error.
class ApplicationOnBus : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// `activate` returns whether the window was raised; false while quitting. The caller's activation token is in the
    /// environment while it runs.
    ApplicationOnBus(std::function<bool()> activate, QObject* object);

public Q_SLOTS:
    void Activate(const QVariantMap& platformData, const QDBusMessage& call);
    void Open(const QStringList& uris, const QVariantMap& platformData, const QDBusMessage& call);
    void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData,
                        const QDBusMessage& call);

private:
    void activate(const QVariantMap& platformData, const QDBusMessage& call);

    std::function<bool()> m_activate;
};

/// Claims Quelto's name on the session bus. False if another process owns it; true without a bus.
bool claimBusName();
/// Lets another process claim the name, although this one has not ended.
void releaseBusName();

enum class RunningInstance {
    /// It shows its window, also if it is still starting.
    raised,
    /// It finishes its last clips and then ends.
    quitting,
    /// It did not answer within a few seconds.
    unresponsive,
};
/// Asks the running Quelto to show its window. token: the activation token that this process was started with.
RunningInstance raiseRunningInstance(const QByteArray& token);

/// Asks the running Quelto for a clip, as its global key does. Returns a translated sentence if it cannot be asked.
std::optional<QString> requestClip();

} // namespace quelto
