// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>

namespace quelto {

/// A key combination that reaches this program whichever window has the focus.
///
/// Key codes and modifier bits are those that the settings store (see HotKeyManager). Each back end translates them.
///
/// Thread: main.
class GlobalKey {
public:
    virtual ~GlobalKey() = default;

    /// Replaces the earlier combination. A combination that another program has grabbed never fires.
    virtual void grab(std::uint32_t keyCode, std::uint32_t modifiers) = 0;
    virtual void release() = 0;

    /// Called once per press. A key that is held down does not repeat.
    std::function<void()> onPressed;
};

} // namespace quelto
