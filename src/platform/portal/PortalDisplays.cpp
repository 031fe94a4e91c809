// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalDisplays.h"

#include "base/language/T.h"

namespace quelto {

PortalDisplays::PortalDisplays(std::shared_ptr<PortalScreen> screen)
    : m_screen(std::move(screen))
{
}

QList<DisplayInfo> PortalDisplays::all() const
{
    return {{.id = 1, .name = T("Masaüstünün seçtiği ekran"), .pixelSize = m_screen->size(), .isMain = true}};
}

} // namespace quelto
