// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace quelto {

/// One key of the keyboard by its place, whatever the layout prints on it.
struct KeyPosition {
    /// The stored form: 8 is the place of C on an ANSI keyboard, in every layout.
    std::uint32_t code = 0;
    /// The name that keyboard descriptions (XKB) give the place, such as "AB03".
    const char* xkbName = nullptr;
    /// The kernel's code of the place (evdev); an X key code is this plus 8 on all present servers.
    std::uint32_t scanCode = 0;
};

/// All places with a stored code. Two places may share one: what a PC keyboard has in place of F13 to F15 (Print,
/// Scroll Lock, Pause) counts as these.
std::span<const KeyPosition> keyPositions() noexcept;

/// The stored code for a pressed key, or nothing for a key that has none, such as a modifier.
std::optional<std::uint32_t> keyCodeForScanCode(std::uint32_t scanCode) noexcept;
std::optional<std::uint32_t> keyCodeForXkbName(std::string_view xkbName) noexcept;

/// The places of a stored code; empty for a code that no keyboard has.
std::vector<KeyPosition> positionsOfKeyCode(std::uint32_t code);

} // namespace quelto
