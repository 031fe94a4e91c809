// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace quelto {

/// The modifier bits of a stored shortcut.
namespace modifierBits {
constexpr std::uint32_t command = 256;
constexpr std::uint32_t shift = 512;
constexpr std::uint32_t option = 2048;
constexpr std::uint32_t control = 4096;
} // namespace modifierBits

/// A shortcut as the user reads it: control, option, shift and command, in this order, then the key's name.
QString hotKeyDisplay(std::uint32_t modifiers, const QString& keyName);

/// The name of a key that has the same one on every keyboard layout; nothing for the others.
std::optional<QString> specialKeyName(std::uint32_t keyCode);

/// True for F1 to F19.
bool isFunctionKey(std::uint32_t keyCode);

/// What to show for a pressed key: its special name, else the characters that it types without modifiers in upper case,
/// else "?".
QString hotKeyName(std::uint32_t keyCode, const QString& charactersIgnoringModifiers);

/// The stored bits of Qt's modifiers: Meta is command, Alt is option. Keypad and group switch add nothing.
std::uint32_t storedModifiers(Qt::KeyboardModifiers modifiers);

} // namespace quelto
