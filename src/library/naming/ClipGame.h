// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/language/T.h"

#include <QString>

#include <optional>

namespace quelto {

/// A game as pages and filters name it. The clips whose file names hold no game are one of them. They are listed under
/// a translated word, which must not identify them: it changes with the language.
struct ClipGame {
    /// Implicit: a game is usually given by its name, which may be empty.
    ClipGame(QString gameName)
        : name(std::move(gameName))
    {
    }

    /// The clips whose file names hold no game.
    static ClipGame none() { return ClipGame(); }

    bool operator==(const ClipGame&) const = default;

    /// The name; otherwise the word for "Other" in the current language.
    QString title() const { return name ? *name : T("Diğer"); }

    std::optional<QString> name;

private:
    ClipGame() = default;
};

} // namespace quelto
