// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

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

/// A shortcut in one short word: the symbols of control, option, shift and command, in this order, then the key name.
QString hotKeyDisplay(std::uint32_t modifiers, const QString& keyName);

/// The same keys, in the same order, by the names that desktops on Linux use: "Alt", "Shift", "C". In the language of
/// Qt's own texts.
QStringList hotKeyWords(std::uint32_t modifiers, const QString& keyName);
/// The words in one text, as desktops write shortcuts: "Alt+Shift+C".
QString hotKeyText(std::uint32_t modifiers, const QString& keyName);

/// The name of a key whose name does not depend on the keyboard layout; nothing for other keys.
std::optional<QString> specialKeyName(std::uint32_t keyCode);

/// True for F1 to F19.
bool isFunctionKey(std::uint32_t keyCode);

/// The name of a key: its special name, else the upper-case characters that it types without modifiers, else what is
/// printed on it, else "?".
QString hotKeyName(std::uint32_t keyCode, const QString& charactersIgnoringModifiers);

/// Converts Qt's modifiers to the stored bits: Meta is command, Alt is option. Keypad and group switch are ignored.
std::uint32_t storedModifiers(Qt::KeyboardModifiers modifiers);

} // namespace quelto
