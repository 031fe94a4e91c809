// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace quelto {

/// What the factory looks at.
struct SessionFacts {
    /// The value of QUELTO_PLATFORM; empty if it is not set.
    QString forced;
    /// Windows are those of a Wayland compositor, even if this program's own go through Xwayland.
    bool isWayland = false;
    /// Whether a program with that name is on the session bus, or the bus can start one.
    std::function<bool(const QString& name)> canReach;

    /// Of this process.
    static SessionFacts present();
};

/// Who captures the screen, and with it who grants the global key.
enum class ScreenBackEnd { x11, portal, none };

struct SessionChoice {
    ScreenBackEnd screen = ScreenBackEnd::none;
    /// Why there is none: a translated sentence for the user.
    QString problem;
};

/// The first entry of a list that applies.
SessionChoice chooseSession(const SessionFacts& facts);

} // namespace quelto
