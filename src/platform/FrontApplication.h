// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace quelto {

/// The application whose window has the keyboard focus.
struct FrontApplicationInfo {
    /// The display name: from its desktop entry, else from its window.
    QString name;
    /// The desktop or the file manager has the focus, so no game is being played.
    bool isDesktop = false;
    bool isThisProgram = false;
};

/// Finds the application that the user is working with.
///
/// Thread: main. Answers from memory: a save must not wait for the desktop.
class FrontApplication {
public:
    virtual ~FrontApplication() = default;

    /// Nothing if no window has the focus or the desktop cannot tell.
    virtual std::optional<FrontApplicationInfo> current() const = 0;
};

} // namespace quelto
