// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>

namespace quelto {

/// Whether a press of a global key arrives.
class GlobalKeyStates : public QObject {
    Q_OBJECT

public:
    enum class Kind {
        /// No combination is wanted.
        Released,
        /// A press arrives.
        Held,
        /// Another program holds the combination, so a press may not arrive. Ends without a further call when that
        /// program lets go.
        Taken,
        /// A press arrives, and also switches the layout of the keyboard.
        SwitchesLayout,
        /// The desktop does not let programs grab keys globally. Its own settings can bind a command to a key.
        ReservedByDesktop,
        /// The keyboard lacks one of the keys, or there is no keyboard.
        Unavailable,
    };
    Q_ENUM(Kind)
};

/// A key combination that reaches this program whichever window has the focus.
///
/// Key codes and modifier bits are those that the settings store (see HotKeyManager). Each back end translates them.
///
/// Thread: main.
class GlobalKey {
public:
    using State = GlobalKeyStates::Kind;

    virtual ~GlobalKey() = default;

    /// Replaces the earlier combination. A combination that another program has grabbed never fires.
    virtual void grab(std::uint32_t keyCode, std::uint32_t modifiers) = 0;
    virtual void release() = 0;

    virtual State state() const = 0;
    /// The keys that the desktop bound, as it writes them, where the desktop decides. Empty where grab() decides.
    virtual QString boundText() const { return {}; }
    /// What the key types without modifiers in the present layout. Empty if it types nothing.
    virtual QString characters(std::uint32_t keyCode) = 0;
    /// The stored bits of the modifier keys that are down now, whatever the layout makes of them.
    virtual std::uint32_t heldModifiers() = 0;

    /// Called once per press. A key that is held down does not repeat.
    std::function<void()> onPressed;
    /// Called when state() or boundText() has changed, also from grab() and release().
    std::function<void()> onStateChanged;
};

} // namespace quelto
