// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Displays.h"
#include "platform/portal/PortalScreen.h"
#include "platform/portal/PortalScreenCast.h"

#include <memory>

namespace quelto {

/// The one display that the user chose in the desktop's dialog, or will choose.
class PortalDisplays final : public Displays {
public:
    PortalDisplays(std::shared_ptr<PortalConnection> portal, std::shared_ptr<PortalScreen> screen);

    QList<DisplayInfo> all() const override;
    bool areChosenByTheDesktop() const override { return true; }
    void chooseAgain(const DisplayChoiceEvents& events) override;

private:
    std::shared_ptr<PortalConnection> m_portal;
    std::shared_ptr<PortalScreen> m_screen;
    /// While the dialog is open.
    std::unique_ptr<PortalScreenCast> m_choice;
};

} // namespace quelto
