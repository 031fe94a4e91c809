// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PortalFixture.h"

#include "base/keys/HotKeyText.h"
#include "platform/portal/PortalGlobalKey.h"
#include "platform/portal/PortalResults.h"

namespace quelto::test {

/// A global key on the test's portal.
class PortalGlobalKeyFixture : public PortalFixture {
protected:
    using State = GlobalKey::State;

    /// The positions of C and V.
    static constexpr std::uint32_t C = 8;
    static constexpr std::uint32_t V = 9;
    static constexpr std::uint32_t AltShift = modifierBits::option | modifierBits::shift;

    void SetUp() override
    {
        PortalFixture::SetUp();
        if (!IsSkipped()) {
            bindTo(QStringLiteral("Alt+Shift+C"));
            makeKey();
        }
    }

    void makeKey(PortalShortcutLimits limits = {})
    {
        key.reset();
        key = std::make_unique<PortalGlobalKey>(connection, limits);
        key->onPressed = [this] { ++presses; };
        key->onStateChanged = [this] { ++changes; };
    }
    void grab(std::uint32_t code = C) { key->grab(code, AltShift); }
    bool waitForState(State state)
    {
        return waitFor([this, state] { return key->state() == state; });
    }
    bool waitForCount(const char* method, int count)
    {
        return waitFor([=, this] { return portal->count(method) == count; });
    }

    void behave(const char* method, const QList<PortalBehaviour>& list)
    {
        portal->behaviours[QLatin1String(method)] = list;
    }
    /// What the desktop returns as the keys of the shortcut.
    static QVariantMap bound(const QVariant& text, const QString& id = QStringLiteral("save-clip"))
    {
        return {
            {QStringLiteral("shortcuts"),
             toDBus({PortalShortcutEntry{.id = QStringLiteral("other"), .properties = {}},
                     PortalShortcutEntry{.id = id, .properties = {{QStringLiteral("trigger_description"), text}}}})}};
    }
    void bindTo(const QVariant& text) { behave("BindShortcuts", {{.results = bound(text)}}); }

    void emitShortcut(const char* name, const QVariantList& arguments)
    {
        portal->emitSignal(QStringLiteral("/org/freedesktop/portal/desktop"), "org.freedesktop.portal.GlobalShortcuts",
                           name, arguments);
        receiveAll();
    }
    void emitPress(const char* name = "Activated", const QString& id = QStringLiteral("save-clip"),
                   const QString& session = {})
    {
        const QDBusObjectPath path(session.isEmpty() ? portal->session() : session);
        emitShortcut(name, {QVariant::fromValue(path), id, qulonglong{0}, QVariantMap()});
    }

    std::unique_ptr<PortalGlobalKey> key;
    int presses = 0;
    int changes = 0;
};

} // namespace quelto::test
