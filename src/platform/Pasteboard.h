// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// What the user copied last and can paste into other programs.
///
/// Thread: main.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Replaces what is there by the file: pasting gives the file itself, in a folder as well as in a chat.
    virtual void setFile(const QString& path) = 0;
};

} // namespace quelto
