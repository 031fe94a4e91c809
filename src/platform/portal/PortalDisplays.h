// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Displays.h"
#include "platform/portal/PortalScreen.h"

#include <memory>

namespace quelto {

/// The one display that the user chose in the desktop's dialog, or will choose.
///
/// Thread: chooseAgain() on the main thread.
class PortalDisplays final : public Displays {
public:
    explicit PortalDisplays(std::shared_ptr<PortalScreen> screen);

    QList<DisplayInfo> all() const override;
    bool areChosenByTheDesktop() const override { return true; }
    void chooseAgain() override { m_screen->token().save(QString()); }

private:
    std::shared_ptr<PortalScreen> m_screen;
};

} // namespace quelto
