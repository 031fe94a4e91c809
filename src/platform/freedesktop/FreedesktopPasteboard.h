// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Pasteboard.h"

namespace quelto {

/// The session's clipboard. What was copied is offered as long as the program runs, or a clipboard manager keeps it.
class FreedesktopPasteboard final : public Pasteboard {
public:
    void setFile(const QString& path) override;
};

} // namespace quelto
