// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>

namespace quelto {

/// One key combination that reaches this program whatever has the focus.
///
/// Key codes and modifier bits are those that the settings store (see HotKeyManager); a back end translates them.
///
/// Thread: main.
class GlobalKey {
public:
    virtual ~GlobalKey() = default;

    /// Replaces an earlier combination. One that another program holds simply never fires.
    virtual void grab(std::uint32_t keyCode, std::uint32_t modifiers) = 0;
    virtual void release() = 0;

    /// Called on the main thread, once a press; a key held down does not repeat.
    std::function<void()> onPressed;
};

} // namespace quelto
