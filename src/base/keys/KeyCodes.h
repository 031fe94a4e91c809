// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace quelto {

/// The physical position of a key, independent of the keyboard layout.
struct KeyPosition {
    /// The stored key code: 8 is the position of C on an ANSI keyboard, in every layout.
    std::uint32_t code = 0;
    /// The XKB key name of the position, such as "AB03".
    const char* xkbName = nullptr;
    /// The kernel's evdev code of the position. An X key code is this plus 8 on all current servers.
    std::uint32_t scanCode = 0;
};

/// All positions with a stored code. Two positions may share a code: Print, Scroll Lock and Pause of a PC keyboard
/// count as F13 to F15.
std::span<const KeyPosition> keyPositions() noexcept;

/// The stored code of a pressed key; nothing for a key without a code, such as a modifier.
std::optional<std::uint32_t> keyCodeForScanCode(std::uint32_t scanCode) noexcept;
std::optional<std::uint32_t> keyCodeForXkbName(std::string_view xkbName) noexcept;

/// The positions of a stored code; empty for a code that no keyboard has.
std::vector<KeyPosition> positionsOfKeyCode(std::uint32_t code);

} // namespace quelto
