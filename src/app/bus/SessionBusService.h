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

namespace quelto {

namespace busNames {
inline const QString service = QStringLiteral("app.quelto.Quelto");
inline const QString path = QStringLiteral("/app/quelto/Quelto");
} // namespace busNames

/// What other programs can ask of Quelto on the session bus: the way to the key's action where the desktop keeps global
/// keys to itself, and to scripts.
class ProgramOnBus : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.quelto.Quelto")
    /// "idle", "starting", "recording" or "error".
    Q_PROPERTY(QString State READ stateName)
    /// Of an error: the text that the user reads.
    Q_PROPERTY(QString Message READ message)
    Q_PROPERTY(QString CaptureSummary READ captureSummary)
    Q_PROPERTY(QString MicWarning READ micWarning)
    Q_PROPERTY(double BufferMB READ bufferMB)
    Q_PROPERTY(bool IsSaving READ isSaving)
    /// The page in the window: "library", "review" and the match's id.
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
    /// Does what the key does.
    void SaveClip();
    void Start();
    void Stop();
    /// Sets one preference by its name. An unknown name or a value of another kind is an error.
    void SetSetting(const QString& key, const QDBusVariant& value, const QDBusMessage& call);

Q_SIGNALS:
    void ClipSaved(const QString& path);
    void SaveFailed(const QString& message);

private:
    Recorder& m_recorder;
    AppSettings& m_settings;
    const Navigation& m_navigation;
};

/// The desktop's own interface for programs that run once: a second start raises the first one's window.
class ApplicationOnBus : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    ApplicationOnBus(std::function<void()> activate, QObject* object);

public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private:
    std::function<void()> m_activate;
};

/// Whether this process is now the one that bears Quelto's name on the session bus; true also where there is no bus.
bool claimBusName();
/// Asks the Quelto that bears the name to show its window. True also if it is still starting, and will show it by
/// itself; false if it does not answer within a few seconds.
bool raiseRunningInstance();

} // namespace quelto
