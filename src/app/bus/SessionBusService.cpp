// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/bus/SessionBusService.h"

#include "base/language/T.h"
#include "base/settings/SettingChoices.h"
#include "platform/ActivationToken.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QMetaEnum>

namespace quelto {

namespace {

constexpr int AnswerMilliseconds = 5000;
const QString QuittingError = QStringLiteral("app.quelto.Quelto.Quitting");

} // namespace

ProgramOnBus::ProgramOnBus(Recorder& recorder, AppSettings& settings, const Navigation& navigation, QObject* object)
    : QDBusAbstractAdaptor(object)
    , m_recorder(recorder)
    , m_settings(settings)
    , m_navigation(navigation)
{
    // Qt finds SetSetting's argument type by this name.
    qRegisterMetaType<QDBusVariant>("QDBusVariant");
    connect(&recorder, &Recorder::clipSaved, this, [this](const SavedClip& clip) { Q_EMIT ClipSaved(clip.path); });
    connect(&recorder, &Recorder::saveFailed, this, &ProgramOnBus::SaveFailed);
    connect(&recorder, &Recorder::stateChanged, this, [this] { Q_EMIT StateChanged(stateName()); });
}

QString ProgramOnBus::stateName() const
{
    return QString::fromLatin1(QMetaEnum::fromType<CaptureState>().valueToKey(static_cast<int>(m_recorder.stateKind())))
        .toLower();
}

void ProgramOnBus::SaveClip()
{
    m_recorder.saveClip();
}

void ProgramOnBus::Start()
{
    m_recorder.start();
}

void ProgramOnBus::Stop()
{
    m_recorder.stop();
}

void ProgramOnBus::SetSetting(const QString& key, const QDBusVariant& value, const QDBusMessage& call)
{
    const auto accepted = offeredSetting(key, value.variant());
    if (!accepted) {
        call.setDelayedReply(true);
        QDBusConnection::sessionBus().send(call.createErrorReply(
            QDBusError::InvalidArgs,
            QStringLiteral("there is no setting \"%1\", or it does not take this value").arg(key)));
        return;
    }
    m_settings.setProperty(key.toUtf8().constData(), *accepted);
}

ApplicationOnBus::ApplicationOnBus(std::function<bool()> activate, QObject* object)
    : QDBusAbstractAdaptor(object)
    , m_activate(std::move(activate))
{
}

void ApplicationOnBus::Activate(const QVariantMap& platformData, const QDBusMessage& call)
{
    activate(platformData, call);
}

void ApplicationOnBus::Open(const QStringList& /*uris*/, const QVariantMap& platformData, const QDBusMessage& call)
{
    activate(platformData, call);
}

void ApplicationOnBus::ActivateAction(const QString& /*name*/, const QVariantList& /*parameter*/,
                                      const QVariantMap& platformData, const QDBusMessage& call)
{
    activate(platformData, call);
}

void ApplicationOnBus::activate(const QVariantMap& platformData, const QDBusMessage& call)
{
    const activationToken::Scope token(activationToken::fromPlatformData(platformData));
    if (!m_activate()) {
        call.setDelayedReply(true);
        QDBusConnection::sessionBus().send(
            call.createErrorReply(QuittingError, QStringLiteral("the program finishes its last clips and then ends")));
    }
}

bool claimBusName()
{
    auto bus = QDBusConnection::sessionBus();
    return !bus.isConnected() || bus.registerService(busNames::service);
}

void releaseBusName()
{
    QDBusConnection::sessionBus().unregisterService(busNames::service);
}

RunningInstance raiseRunningInstance(const QByteArray& token)
{
    auto call = QDBusMessage::createMethodCall(
        busNames::service, busNames::path, QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call << activationToken::toPlatformData(token);
    const auto reply = QDBusConnection::sessionBus().call(call, QDBus::Block, AnswerMilliseconds);
    if (reply.errorName() == QuittingError) {
        return RunningInstance::quitting;
    }
    const bool isStarting = QDBusError(reply).type() == QDBusError::UnknownObject;
    return reply.type() == QDBusMessage::ReplyMessage || isStarting ? RunningInstance::raised
                                                                    : RunningInstance::unresponsive;
}

std::optional<QString> requestClip()
{
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return T("Oturum veri yoluna (D-Bus) bağlanılamadı. Komutu masaüstü oturumunun içinde çalıştırın.");
    }
    auto call = QDBusMessage::createMethodCall(busNames::service, busNames::path, busNames::service,
                                               QStringLiteral("SaveClip"));
    // A program that starts now has nothing to save.
    call.setAutoStartService(false);
    const QDBusError error(bus.call(call, QDBus::Block, AnswerMilliseconds));
    if (!error.isValid()) {
        return std::nullopt;
    }
    return error.type() == QDBusError::NoReply || error.type() == QDBusError::Timeout
        ? T("Quelto zaten çalışıyor ama yanıt vermiyor. Onu sonlandırıp yeniden deneyin.")
        : T("Quelto çalışmıyor. Önce Quelto'yi başlatın.");
}

} // namespace quelto
