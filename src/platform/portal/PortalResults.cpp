// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalResults.h"

#include "platform/portal/PortalNames.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>

namespace quelto {

namespace {

/// PipeWire's own number for "any node".
constexpr std::uint32_t AnyNode = 0xffffffff;
/// Those that exist are UUIDs.
constexpr qsizetype MaxTokenLength = 1024;
/// Longer ones fit no row of the settings.
constexpr qsizetype MaxTriggerLength = 64;
constexpr qsizetype MaxPathLength = 512;

/// The argument if it has the signature; a default one, which has no elements, otherwise.
QDBusArgument argumentOf(const QVariant& value, const char* signature)
{
    if (value.userType() != qMetaTypeId<QDBusArgument>()) {
        return {};
    }
    auto argument = value.value<QDBusArgument>();
    return argument.currentSignature() == QLatin1String(signature) ? argument : QDBusArgument();
}

QString textOf(const QVariant& value)
{
    return value.userType() == QMetaType::QString ? value.toString() : QString();
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcutEntry& entry)
{
    argument.beginStructure();
    argument << entry.id << entry.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcutEntry& entry)
{
    argument.beginStructure();
    argument >> entry.id >> entry.properties;
    argument.endStructure();
    return argument;
}

QVariant toDBus(const PortalShortcutList& shortcuts)
{
    static const auto areRegistered = [] {
        qDBusRegisterMetaType<PortalShortcutEntry>();
        qDBusRegisterMetaType<PortalShortcutList>();
        return true;
    }();
    static_cast<void>(areRegistered);
    return QVariant::fromValue(shortcuts);
}

QString sessionHandle(const QVariantMap& results)
{
    // Portals send it as a text, although it is the path of an object.
    const auto value = results.value(QStringLiteral("session_handle"));
    const auto path =
        value.userType() == qMetaTypeId<QDBusObjectPath>() ? value.value<QDBusObjectPath>().path() : textOf(value);
    const auto isPlain = std::ranges::all_of(path, [](QChar each) {
        return (each >= u'a' && each <= u'z') || (each >= u'A' && each <= u'Z') || (each >= u'0' && each <= u'9') ||
            each == u'_' || each == u'/';
    });
    const auto isBelowPortal = path.startsWith(QString(portalNames::path) + QStringLiteral("/session/"));
    const auto hasEmptyPart = path.contains(QLatin1String("//")) || path.endsWith(u'/');
    return isPlain && isBelowPortal && !hasEmptyPart && path.size() <= MaxPathLength ? path : QString();
}

std::optional<ScreenCastNode> firstStream(const QVariantMap& results)
{
    const auto streams = argumentOf(results.value(QStringLiteral("streams")), "a(ua{sv})");
    if (streams.currentType() != QDBusArgument::ArrayType) {
        return std::nullopt;
    }
    ScreenCastNode node{.id = AnyNode};
    streams.beginArray();
    if (!streams.atEnd()) {
        QVariantMap properties;
        streams.beginStructure();
        streams >> node.id >> properties;
        streams.endStructure();
    }
    // QtDBus leaks what was begun and not ended.
    streams.endArray();
    return node.id == AnyNode ? std::nullopt : std::optional(node);
}

QString restoreToken(const QVariantMap& results)
{
    const auto token = textOf(results.value(QStringLiteral("restore_token")));
    return token.size() <= MaxTokenLength ? token : QString();
}

std::optional<QString> triggerOf(const QVariant& shortcuts, const QString& id)
{
    const auto list = argumentOf(shortcuts, "a(sa{sv})");
    if (list.currentType() != QDBusArgument::ArrayType) {
        return std::nullopt;
    }
    std::optional<QString> trigger;
    list.beginArray();
    while (!trigger && !list.atEnd()) {
        PortalShortcutEntry entry;
        list >> entry;
        if (entry.id == id) {
            const auto text = textOf(entry.properties.value(QStringLiteral("trigger_description"))).left(4096);
            const auto line = text.simplified();
            trigger = line.size() <= MaxTriggerLength ? line : line.left(MaxTriggerLength - 1) + u'…';
        }
    }
    // QtDBus leaks what was begun and not ended.
    list.endArray();
    return trigger;
}

} // namespace quelto
