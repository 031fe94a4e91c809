// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>

namespace quelto {

/// A stored shortcut in the syntax of the desktop's shortcuts, such as "CTRL+ALT+c": modifiers in capitals, then the
/// XKB name of what the key types. Empty if the key has no name.
///
/// The syntax has no names for positions of keys. `characters` is what the key types in the present layout; without it,
/// or if it is no Latin letter, the key has the name that it has on a US keyboard, as desktops expect of layouts with
/// other letters.
QString shortcutTrigger(std::uint32_t keyCode, std::uint32_t modifiers, const QString& characters);

} // namespace quelto
