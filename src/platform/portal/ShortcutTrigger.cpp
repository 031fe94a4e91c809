// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/ShortcutTrigger.h"

#include "base/keys/HotKeyText.h"

#include <xkbcommon/xkbcommon.h>

namespace quelto {

namespace {

enum class KeyKind { followsLayout, fixed };

struct TriggerKey {
    std::uint32_t code;
    const char* name;
    KeyKind kind = KeyKind::fixed;
};

constexpr auto Typed = KeyKind::followsLayout;

// Print, Scroll Lock and Pause count as F13 to F15. Keyboards have rather the former, and the usual layouts give the
// function keys above F12 other names.
// clang-format off
constexpr std::array TriggerKeys{
    TriggerKey{0, "a", Typed},             TriggerKey{1, "s", Typed},          TriggerKey{2, "d", Typed},
    TriggerKey{3, "f", Typed},             TriggerKey{4, "h", Typed},          TriggerKey{5, "g", Typed},
    TriggerKey{6, "z", Typed},             TriggerKey{7, "x", Typed},          TriggerKey{8, "c", Typed},
    TriggerKey{9, "v", Typed},             TriggerKey{10, "less", Typed},      TriggerKey{11, "b", Typed},
    TriggerKey{12, "q", Typed},            TriggerKey{13, "w", Typed},         TriggerKey{14, "e", Typed},
    TriggerKey{15, "r", Typed},            TriggerKey{16, "y", Typed},         TriggerKey{17, "t", Typed},
    TriggerKey{18, "1", Typed},            TriggerKey{19, "2", Typed},         TriggerKey{20, "3", Typed},
    TriggerKey{21, "4", Typed},            TriggerKey{22, "6", Typed},         TriggerKey{23, "5", Typed},
    TriggerKey{24, "equal", Typed},        TriggerKey{25, "9", Typed},         TriggerKey{26, "7", Typed},
    TriggerKey{27, "minus", Typed},        TriggerKey{28, "8", Typed},         TriggerKey{29, "0", Typed},
    TriggerKey{30, "bracketright", Typed}, TriggerKey{31, "o", Typed},         TriggerKey{32, "u", Typed},
    TriggerKey{33, "bracketleft", Typed},  TriggerKey{34, "i", Typed},         TriggerKey{35, "p", Typed},
    TriggerKey{36, "Return"},              TriggerKey{37, "l", Typed},         TriggerKey{38, "j", Typed},
    TriggerKey{39, "apostrophe", Typed},   TriggerKey{40, "k", Typed},         TriggerKey{41, "semicolon", Typed},
    TriggerKey{42, "backslash", Typed},    TriggerKey{43, "comma", Typed},     TriggerKey{44, "slash", Typed},
    TriggerKey{45, "n", Typed},            TriggerKey{46, "m", Typed},         TriggerKey{47, "period", Typed},
    TriggerKey{48, "Tab"},                 TriggerKey{49, "space"},            TriggerKey{50, "grave", Typed},
    TriggerKey{51, "BackSpace"},           TriggerKey{53, "Escape"},           TriggerKey{64, "XF86Launch8"},
    TriggerKey{65, "KP_Decimal"},          TriggerKey{67, "KP_Multiply"},      TriggerKey{69, "KP_Add"},
    TriggerKey{71, "Num_Lock"},            TriggerKey{72, "XF86AudioRaiseVolume"},
    TriggerKey{73, "XF86AudioLowerVolume"}, TriggerKey{74, "XF86AudioMute"},   TriggerKey{75, "KP_Divide"},
    TriggerKey{76, "KP_Enter"},            TriggerKey{78, "KP_Subtract"},      TriggerKey{79, "XF86Launch9"},
    TriggerKey{80, "F19"},                 TriggerKey{81, "KP_Equal"},         TriggerKey{82, "KP_0"},
    TriggerKey{83, "KP_1"},                TriggerKey{84, "KP_2"},             TriggerKey{85, "KP_3"},
    TriggerKey{86, "KP_4"},                TriggerKey{87, "KP_5"},             TriggerKey{88, "KP_6"},
    TriggerKey{89, "KP_7"},                TriggerKey{90, "F20"},              TriggerKey{91, "KP_8"},
    TriggerKey{92, "KP_9"},                TriggerKey{93, "yen", Typed},       TriggerKey{94, "underscore", Typed},
    TriggerKey{96, "F5"},                  TriggerKey{97, "F6"},               TriggerKey{98, "F7"},
    TriggerKey{99, "F3"},                  TriggerKey{100, "F8"},              TriggerKey{101, "F9"},
    TriggerKey{102, "Muhenkan"},           TriggerKey{103, "F11"},             TriggerKey{104, "Henkan_Mode"},
    TriggerKey{105, "Print"},              TriggerKey{106, "XF86Launch7"},     TriggerKey{107, "Scroll_Lock"},
    TriggerKey{109, "F10"},                TriggerKey{110, "Menu"},            TriggerKey{111, "F12"},
    TriggerKey{113, "Pause"},              TriggerKey{114, "Insert"},          TriggerKey{115, "Home"},
    TriggerKey{116, "Page_Up"},            TriggerKey{117, "Delete"},          TriggerKey{118, "F4"},
    TriggerKey{119, "End"},                TriggerKey{120, "F2"},              TriggerKey{121, "Page_Down"},
    TriggerKey{122, "F1"},                 TriggerKey{123, "Left"},            TriggerKey{124, "Right"},
    TriggerKey{125, "Down"},               TriggerKey{126, "Up"},
};
// clang-format on

/// In the order of the syntax's own examples.
constexpr std::array<std::pair<std::uint32_t, const char*>, 4> TriggerModifiers{{{modifierBits::control, "CTRL+"},
                                                                                 {modifierBits::option, "ALT+"},
                                                                                 {modifierBits::shift, "SHIFT+"},
                                                                                 {modifierBits::command, "LOGO+"}}};

/// The last one of the blocks with Latin letters.
constexpr char16_t LastLatin = u'\u024f';

/// The XKB name of what the characters are; empty unless they are one Latin character.
QString nameOfCharacter(const QString& characters)
{
    if (characters.size() != 1 || !characters.front().isPrint() || characters.front() > QChar(LastLatin)) {
        return {};
    }
    const auto symbol = xkb_utf32_to_keysym(characters.toLower().front().unicode());
    std::array<char, 64> name{};
    return symbol != XKB_KEY_NoSymbol && xkb_keysym_get_name(symbol, name.data(), name.size()) > 0
        ? QString::fromLatin1(name.data())
        : QString();
}

} // namespace

QString shortcutTrigger(std::uint32_t keyCode, std::uint32_t modifiers, const QString& characters)
{
    const auto* const key = std::ranges::find(TriggerKeys, keyCode, &TriggerKey::code);
    if (key == TriggerKeys.end()) {
        return {};
    }
    QString trigger;
    for (const auto& [bit, name] : TriggerModifiers) {
        if ((modifiers & bit) != 0) {
            trigger += QLatin1String(name);
        }
    }
    const auto typed = key->kind == KeyKind::followsLayout ? nameOfCharacter(characters) : QString();
    return trigger + (typed.isEmpty() ? QString::fromLatin1(key->name) : typed);
}

} // namespace quelto
