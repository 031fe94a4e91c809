// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/keys/HotKeyText.h"

#include "base/language/L10n.h"

#include <QCoreApplication>

namespace quelto {

namespace {

struct ModifierRow {
    std::uint32_t bit;
    Qt::KeyboardModifier modifier;
    const char* symbol;
    /// Qt's English name of the key, or the name that Qt does not use.
    const char* word;
};

// In display order.
constexpr std::array Modifiers{
    ModifierRow{modifierBits::control, Qt::ControlModifier, "⌃", "Ctrl"},
    ModifierRow{modifierBits::option, Qt::AltModifier, "⌥", "Alt"},
    ModifierRow{modifierBits::shift, Qt::ShiftModifier, "⇧", "Shift"},
    ModifierRow{modifierBits::command, Qt::MetaModifier, "⌘", "Super"},
};

struct KeyRow {
    std::uint32_t keyCode;
    const char* name;
    /// Qt's English name of the key where it has one and keyboards print it.
    const char* word = nullptr;
};

constexpr std::array FunctionKeys{
    KeyRow{122, "F1"},  KeyRow{120, "F2"},  KeyRow{99, "F3"},   KeyRow{118, "F4"},  KeyRow{96, "F5"},
    KeyRow{97, "F6"},   KeyRow{98, "F7"},   KeyRow{100, "F8"},  KeyRow{101, "F9"},  KeyRow{109, "F10"},
    KeyRow{103, "F11"}, KeyRow{111, "F12"}, KeyRow{105, "F13"}, KeyRow{107, "F14"}, KeyRow{113, "F15"},
    KeyRow{106, "F16"}, KeyRow{64, "F17"},  KeyRow{79, "F18"},  KeyRow{80, "F19"},
};

constexpr std::array NamedKeys{
    KeyRow{49, "Space", "Space"},
    KeyRow{36, "↩", "Return"},
    KeyRow{48, "⇥", "Tab"},
    KeyRow{51, "⌫", "Backspace"},
    KeyRow{117, "⌦", "Del"},
    KeyRow{123, "←"},
    KeyRow{124, "→"},
    KeyRow{125, "↓"},
    KeyRow{126, "↑"},
    KeyRow{115, "Home", "Home"},
    KeyRow{119, "End", "End"},
    KeyRow{116, "PgUp", "PgUp"},
    KeyRow{121, "PgDn", "PgDown"},
};

/// Keys that type nothing and have no name in the settings' table.
constexpr std::array OtherKeys{
    KeyRow{71, "Num Lock", "NumLock"},
    KeyRow{76, "Enter", "Enter"},
    KeyRow{114, "Ins", "Ins"},
};

/// The name of a key as Qt writes it beside menu entries.
QString inLanguageOfQt(const char* word)
{
    return QCoreApplication::translate("QShortcut", word);
}

/// Turkish keyboards have the English words on these keys, and Qt 6.8 translates them.
QString modifierName(const char* word)
{
    return L10n::current() == Language::tr ? QString::fromUtf8(word) : inLanguageOfQt(word);
}

template <typename Rows> const KeyRow* tryFind(const Rows& rows, std::uint32_t keyCode)
{
    const auto* row = std::ranges::find(rows, keyCode, &KeyRow::keyCode);
    return row == rows.end() ? nullptr : row;
}

/// Qt's name of the key with that name, if it has one.
template <typename Rows> const char* tryWord(const Rows& rows, const QString& name)
{
    const auto* row = std::ranges::find_if(
        rows, [&](const KeyRow& each) { return each.word != nullptr && name == QString::fromUtf8(each.name); });
    return row == rows.end() ? nullptr : row->word;
}

} // namespace

QString hotKeyDisplay(std::uint32_t modifiers, const QString& keyName)
{
    QString text;
    for (const auto& row : Modifiers) {
        if ((modifiers & row.bit) != 0) {
            text += QString::fromUtf8(row.symbol);
        }
    }
    return text + keyName;
}

QStringList hotKeyWords(std::uint32_t modifiers, const QString& keyName)
{
    QStringList words;
    for (const auto& row : Modifiers) {
        if ((modifiers & row.bit) != 0) {
            words.append(modifierName(row.word));
        }
    }
    const auto* word = tryWord(NamedKeys, keyName);
    word = word != nullptr ? word : tryWord(OtherKeys, keyName);
    words.append(word == nullptr ? keyName : inLanguageOfQt(word));
    return words;
}

QString hotKeyText(std::uint32_t modifiers, const QString& keyName)
{
    return hotKeyWords(modifiers, keyName).join(u'+');
}

std::optional<QString> specialKeyName(std::uint32_t keyCode)
{
    const auto* row = tryFind(FunctionKeys, keyCode);
    row = row != nullptr ? row : tryFind(NamedKeys, keyCode);
    return row != nullptr ? std::optional(QString::fromUtf8(row->name)) : std::nullopt;
}

bool isFunctionKey(std::uint32_t keyCode)
{
    return tryFind(FunctionKeys, keyCode) != nullptr;
}

QString hotKeyName(std::uint32_t keyCode, const QString& charactersIgnoringModifiers)
{
    if (const auto name = specialKeyName(keyCode)) {
        return *name;
    }
    if (charactersIgnoringModifiers.isEmpty()) {
        const auto* row = tryFind(OtherKeys, keyCode);
        return QString::fromUtf8(row != nullptr ? row->name : "?");
    }
    return charactersIgnoringModifiers.toUpper();
}

std::uint32_t storedModifiers(Qt::KeyboardModifiers modifiers)
{
    std::uint32_t bits = 0;
    for (const auto& row : Modifiers) {
        if (modifiers.testFlag(row.modifier)) {
            bits += row.bit;
        }
    }
    return bits;
}

} // namespace quelto
