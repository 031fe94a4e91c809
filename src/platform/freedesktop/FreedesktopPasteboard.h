// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Pasteboard.h"

namespace quelto {

/// The session's clipboard. The contents last until the program exits, unless a clipboard manager keeps them.
class FreedesktopPasteboard final : public Pasteboard {
public:
    void setFile(const QString& path) override;
    void setImage(const QImage& image) override;
    void setText(const QString& text) override;
};

} // namespace quelto
