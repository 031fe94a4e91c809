// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/Palette.h"

#include "base/language/L10n.h"
#include "base/settings/AppSettings.h"

#include <gtest/gtest.h>

#include <array>

namespace quelto {
namespace {

TEST(Palette, FallsBackToTheFirst)
{
    EXPECT_EQ(Palette::find(QString()).id, QStringLiteral("ember"));
    EXPECT_EQ(Palette::find(QStringLiteral("Neon")).id, QStringLiteral("ember"));
    EXPECT_EQ(Palette::find(QStringLiteral("neon")).id, QStringLiteral("neon"));
    EXPECT_EQ(Palette::all().size(), 10);
}

TEST(Palette, ListsTheThemesOfTheSettings)
{
    EXPECT_TRUE(std::ranges::equal(Palette::all(), AppSettings::colorThemes, {}, &Palette::id,
                                   [](const char* id) { return QLatin1String(id); }));
}

TEST(Palette, ListsTenPalettesInOrder)
{
    struct Row {
        const char* id;
        const char* name;
        /// bg, sidebar, panel, card, cardHover, border, accent, accentDark, text, muted, dim
        const char* colours;
        const char* gradient;
    };
    // clang-format off
    constexpr std::array<Row, 10> Rows{{
        {"ember", "Kor", "0E0E12 15151B 1B1B22 22222B 2A2A35 2D2D39 FF5A1F D9440F EDEDF2 8C8C9C 5E5E6C", ""},
        {"blurple", "Blurple", "313338 2B2D31 2B2D31 383A40 404249 1E1F22 5865F2 4752C4 F2F3F5 B5BAC1 80848E", ""},
        {"onyx", "Onyx", "000000 0B0B0D 111114 18181C 222228 26262C 5865F2 4752C4 F2F3F5 9A9AA6 5C5C66", ""},
        {"midnight", "Gece Mavisi", "0F1424 121A2E 172038 1D2844 253252 28355A 4F8BFF 3A6FD8 E8EEFF 93A2C8 5D6B90", "1A1F48 0B0F1E"},
        {"crimson", "Kızıl Ay", "16090B 1C0B0E 241013 2E1418 3A1A1F 4A2026 E8364F B9283D F7E9EB C0969C 7E5A60", "3A0B12 0E0406"},
        {"forest", "Orman", "0D1610 101C14 14241A 1A2E21 213929 274532 3BD16F 2BA656 E8F6EC 92B59C 5A7A63", "14361F 0A120C"},
        {"sunset", "Gün Batımı", "1A0F17 1F121B 281722 331D2B 3F2435 4C2B40 FF8A3D E06A1F FFF1E8 CFA6A0 8A6468", "4A1942 7A2E2A 1A0F17"},
        {"cottoncandy", "Pamuk Şeker", "1B1426 20172E 281D39 322447 3D2C56 4A3668 FF7AC6 E057A8 FCEFFF C8A9D8 846C98", "3B2A6B 6B2E63 1B1426"},
        {"ocean", "Okyanus", "07161C 091B22 0D232C 122D38 183846 1D4454 22D3C5 16A89C E6FAFB 8FBAC0 587C83", "0B3A4A 05222E 040E13"},
        {"neon", "Neon Geceler", "0B0716 0F0A1E 150F29 1C1436 261B47 33245C B14BFF 8E2FE0 F4ECFF AE9CD6 6E5F96", "2A0E5A 0E3B5C 0B0716"},
    }};
    // clang-format on
    const auto written = [](const QList<QColor>& colours) {
        QStringList words;
        for (const auto& colour : colours) {
            EXPECT_EQ(colour.alpha(), 255);
            words.append(colour.name().sliced(1).toUpper());
        }
        return words.join(u' ').toStdString();
    };
    L10n::use(QStringLiteral("tr"));
    const auto palettes = Palette::all();
    ASSERT_EQ(palettes.size(), std::ssize(Rows));
    for (qsizetype i = 0; i < palettes.size(); ++i) {
        const auto& row = Rows[static_cast<std::size_t>(i)];
        const auto& [id, name, bg, sidebar, panel, card, cardHover, border, accent, accentDark, text, muted, dim,
                     gradient] = palettes[i];
        EXPECT_EQ(id, QString::fromUtf8(row.id));
        EXPECT_EQ(name, QString::fromUtf8(row.name));
        EXPECT_EQ(written({bg, sidebar, panel, card, cardHover, border, accent, accentDark, text, muted, dim}),
                  row.colours)
            << row.id;
        EXPECT_EQ(written(gradient), row.gradient) << row.id;
        EXPECT_EQ(Palette::find(id).bg, bg);
    }
}

TEST(Palette, NameFollowsTheLanguage)
{
    const auto nameOf = [](const char* id) { return Palette::find(QLatin1String(id)).name; };
    L10n::use(QStringLiteral("tr"));
    EXPECT_EQ(nameOf("ocean"), QStringLiteral("Okyanus"));
    L10n::use(QStringLiteral("en"));
    EXPECT_NE(nameOf("ocean"), QStringLiteral("Okyanus"));
    EXPECT_EQ(nameOf("blurple"), QStringLiteral("Blurple"));
    EXPECT_EQ(nameOf("onyx"), QStringLiteral("Onyx"));
    L10n::use(QStringLiteral("tr"));
}

TEST(Palette, PalettesWithEqualAccentsDiffer)
{
    const auto blurple = Palette::find(QStringLiteral("blurple"));
    const auto onyx = Palette::find(QStringLiteral("onyx"));
    EXPECT_EQ(blurple.accent, onyx.accent);
    EXPECT_EQ(blurple.accentDark, onyx.accentDark);
    EXPECT_NE(blurple.bg, onyx.bg);
}

TEST(Palette, GradientEndsInTheBackgroundInSomePalettes)
{
    for (const auto& palette : Palette::all()) {
        const bool endsInBackground = !palette.gradient.isEmpty() && palette.gradient.last() == palette.bg;
        const bool isOneOfThem = palette.id == QStringLiteral("sunset") ||
            palette.id == QStringLiteral("cottoncandy") || palette.id == QStringLiteral("neon");
        EXPECT_EQ(endsInBackground, isOneOfThem) << palette.id.toStdString();
    }
}

TEST(Palette, ReadsColoursAsRedGreenBlue)
{
    EXPECT_EQ(Palette::find(QStringLiteral("ember")).accent, QColor(0xFF, 0x5A, 0x1F));
}

} // namespace
} // namespace quelto
