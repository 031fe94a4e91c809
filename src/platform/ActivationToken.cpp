// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ActivationToken.h"

namespace quelto::activationToken {

namespace {

constexpr const char* WaylandVariable = "XDG_ACTIVATION_TOKEN";
constexpr const char* X11Variable = "DESKTOP_STARTUP_ID";
const auto WaylandKey = QStringLiteral("activation-token");
const auto X11Key = QStringLiteral("desktop-startup-id");

} // namespace

QByteArray present()
{
    const auto token = qgetenv(WaylandVariable);
    return token.isEmpty() ? qgetenv(X11Variable) : token;
}

QByteArray fromPlatformData(const QVariantMap& data)
{
    const auto token = data.value(WaylandKey).toString();
    return (token.isEmpty() ? data.value(X11Key).toString() : token).toUtf8();
}

QVariantMap toPlatformData(const QByteArray& token)
{
    if (token.isEmpty()) {
        return {};
    }
    const auto text = QString::fromUtf8(token);
    return {{WaylandKey, text}, {X11Key, text}};
}

Scope::Scope(const QByteArray& token)
{
    if (!token.isEmpty()) {
        qputenv(WaylandVariable, token);
        qputenv(X11Variable, token);
    }
}

Scope::~Scope()
{
    qunsetenv(WaylandVariable);
    qunsetenv(X11Variable);
}

} // namespace quelto::activationToken
