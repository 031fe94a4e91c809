// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

namespace quelto {

struct LanguageTitle {
    const char* language;
    const char* title;
};

/// With the letters that set each language apart.
inline constexpr std::array LanguageTitles{
    LanguageTitle{"Turkish", "İğne ucu: şölen, ığ, ÇÖĞÜŞ"}, LanguageTitle{"English", "Won't “quit” – it’s over"},
    LanguageTitle{"German", "Größe ÄÖÜ ẞ „Übermut“"},       LanguageTitle{"Spanish", "¿Mañana? ¡Ñandú, áéíóú!"},
    LanguageTitle{"French", "« Ça, où ? » œuvre ÿ"},        LanguageTitle{"Portuguese", "Ação, três corações, às"},
    LanguageTitle{"Russian", "Съёмка: Йод, Щука, №1 ЭЮЯ"}};

} // namespace quelto
