// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalDisplays.h"

#include "base/language/T.h"

namespace quelto {

PortalDisplays::PortalDisplays(std::shared_ptr<PortalConnection> portal, std::shared_ptr<PortalScreen> screen)
    : m_portal(std::move(portal))
    , m_screen(std::move(screen))
{
}

QList<DisplayInfo> PortalDisplays::all() const
{
    return {{.id = 1, .name = T("Masaüstünün seçtiği ekran"), .pixelSize = m_screen->size(), .isMain = true}};
}

void PortalDisplays::chooseAgain(const DisplayChoiceEvents& events)
{
    // The earlier dialog closes first.
    m_choice.reset();
    // Only the token of this session is of use: the next recording shares the same screen by it.
    m_choice = std::make_unique<PortalScreenCast>(
        m_portal, PortalScreenCast::Options{.token = m_screen->token(), .choice = ScreenCastChoice::another},
        PortalScreenCast::Events{.onStarted =
                                     [this, onChosen = events.onChosen](const ScreenCastStream& /*stream*/) {
                                         m_choice.reset();
                                         onChosen();
                                     },
                                 .onFailed =
                                     [this, onFailed = events.onFailed](PortalEnd end) {
                                         m_choice.reset();
                                         if (end != PortalEnd::cancelled) {
                                             onFailed(T("Masaüstü ekran seçimini göstermedi. xdg-desktop-portal'ın "
                                                        "çalıştığını denetleyip yeniden deneyin."));
                                         }
                                     },
                                 .onClosed = [this] { m_choice.reset(); }});
}

} // namespace quelto
