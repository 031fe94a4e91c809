// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/factory/SessionChoice.h"

#include "base/language/T.h"
#include "platform/portal/PortalNames.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <algorithm>
#include <array>

namespace quelto {

namespace {

struct Entry {
    bool (*applies)(const SessionFacts&);
    ScreenBackEnd screen;
    QString (*problem)() = [] { return QString(); };
};

bool isForced(const SessionFacts& facts, QLatin1String value)
{
    return facts.forced == value;
}

constexpr std::array Entries{
    // For tests, and for users whose desktop misreports itself.
    Entry{[](const SessionFacts& facts) { return isForced(facts, QLatin1String("x11")); }, ScreenBackEnd::x11},
    Entry{[](const SessionFacts& facts) { return isForced(facts, QLatin1String("portal")); }, ScreenBackEnd::portal},
    Entry{[](const SessionFacts& facts) { return isForced(facts, QLatin1String("none")); }, ScreenBackEnd::none,
          [] { return T("QUELTO_PLATFORM ekran kaydını kapatıyor."); }},
    // An X server on a Wayland desktop has only the pictures and keys of its own windows.
    Entry{[](const SessionFacts& facts) { return facts.isWayland && facts.canReach(portalNames::service); },
          ScreenBackEnd::portal},
    Entry{[](const SessionFacts& facts) { return facts.isWayland; }, ScreenBackEnd::none,
          [] {
              return T("Masaüstünüz ekranı paylaşamıyor. Masaüstünüze uygun xdg-desktop-portal paketini kurup oturumu "
                       "yeniden açın.");
          }},
    // Without a server it reports what is missing.
    Entry{[](const SessionFacts& /*facts*/) { return true; }, ScreenBackEnd::x11},
};

} // namespace

SessionFacts SessionFacts::present()
{
    return {.forced = qEnvironmentVariable("QUELTO_PLATFORM"),
            .isWayland = qgetenv("XDG_SESSION_TYPE") == "wayland" || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"),
            .canReach = [](const QString& name) {
                // Two short questions to the bus itself, which starts no program.
                const auto* bus = QDBusConnection::sessionBus().interface();
                return bus != nullptr &&
                    (bus->registeredServiceNames().value().contains(name) ||
                     bus->activatableServiceNames().value().contains(name));
            }};
}

SessionChoice chooseSession(const SessionFacts& facts)
{
    const auto* entry = std::ranges::find_if(Entries, [&](const Entry& each) { return each.applies(facts); });
    return {.screen = entry->screen, .problem = entry->problem()};
}

} // namespace quelto
