// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/Palette.h"

#include "base/language/T.h"

namespace quelto {

namespace {

enum class NameKind { translated, fixed };

struct PaletteRow {
    const char* id;
    const char* name;
    NameKind nameKind;
    // bg, sidebar, panel, card, cardHover, border, accent, accentDark, text, muted, dim
    std::array<QRgb, 11> colors;
    std::vector<QRgb> gradient;
};

const std::vector<PaletteRow>& rows()
{
    static const std::vector<PaletteRow> table{
        {"ember",
         "Kor",
         NameKind::translated,
         {0x0E0E12, 0x15151B, 0x1B1B22, 0x22222B, 0x2A2A35, 0x2D2D39, 0xFF5A1F, 0xD9440F, 0xEDEDF2, 0x8C8C9C, 0x5E5E6C},
         {}},
        {"blurple",
         "Blurple",
         NameKind::fixed,
         {0x313338, 0x2B2D31, 0x2B2D31, 0x383A40, 0x404249, 0x1E1F22, 0x5865F2, 0x4752C4, 0xF2F3F5, 0xB5BAC1, 0x80848E},
         {}},
        {"onyx",
         "Onyx",
         NameKind::fixed,
         {0x000000, 0x0B0B0D, 0x111114, 0x18181C, 0x222228, 0x26262C, 0x5865F2, 0x4752C4, 0xF2F3F5, 0x9A9AA6, 0x5C5C66},
         {}},
        {"midnight",
         "Gece Mavisi",
         NameKind::translated,
         {0x0F1424, 0x121A2E, 0x172038, 0x1D2844, 0x253252, 0x28355A, 0x4F8BFF, 0x3A6FD8, 0xE8EEFF, 0x93A2C8, 0x5D6B90},
         {0x1A1F48, 0x0B0F1E}},
        {"crimson",
         "Kızıl Ay",
         NameKind::translated,
         {0x16090B, 0x1C0B0E, 0x241013, 0x2E1418, 0x3A1A1F, 0x4A2026, 0xE8364F, 0xB9283D, 0xF7E9EB, 0xC0969C, 0x7E5A60},
         {0x3A0B12, 0x0E0406}},
        {"forest",
         "Orman",
         NameKind::translated,
         {0x0D1610, 0x101C14, 0x14241A, 0x1A2E21, 0x213929, 0x274532, 0x3BD16F, 0x2BA656, 0xE8F6EC, 0x92B59C, 0x5A7A63},
         {0x14361F, 0x0A120C}},
        {"sunset",
         "Gün Batımı",
         NameKind::translated,
         {0x1A0F17, 0x1F121B, 0x281722, 0x331D2B, 0x3F2435, 0x4C2B40, 0xFF8A3D, 0xE06A1F, 0xFFF1E8, 0xCFA6A0, 0x8A6468},
         {0x4A1942, 0x7A2E2A, 0x1A0F17}},
        {"cottoncandy",
         "Pamuk Şeker",
         NameKind::translated,
         {0x1B1426, 0x20172E, 0x281D39, 0x322447, 0x3D2C56, 0x4A3668, 0xFF7AC6, 0xE057A8, 0xFCEFFF, 0xC8A9D8, 0x846C98},
         {0x3B2A6B, 0x6B2E63, 0x1B1426}},
        {"ocean",
         "Okyanus",
         NameKind::translated,
         {0x07161C, 0x091B22, 0x0D232C, 0x122D38, 0x183846, 0x1D4454, 0x22D3C5, 0x16A89C, 0xE6FAFB, 0x8FBAC0, 0x587C83},
         {0x0B3A4A, 0x05222E, 0x040E13}},
        {"neon",
         "Neon Geceler",
         NameKind::translated,
         {0x0B0716, 0x0F0A1E, 0x150F29, 0x1C1436, 0x261B47, 0x33245C, 0xB14BFF, 0x8E2FE0, 0xF4ECFF, 0xAE9CD6, 0x6E5F96},
         {0x2A0E5A, 0x0E3B5C, 0x0B0716}},
    };
    return table;
}

Palette paletteOf(const PaletteRow& row)
{
    const auto color = [&](std::size_t index) { return QColor(row.colors[index]); };
    Palette palette{.id = QString::fromLatin1(row.id),
                    .name = row.nameKind == NameKind::translated ? T(row.name) : QString::fromLatin1(row.name),
                    .bg = color(0),
                    .sidebar = color(1),
                    .panel = color(2),
                    .card = color(3),
                    .cardHover = color(4),
                    .border = color(5),
                    .accent = color(6),
                    .accentDark = color(7),
                    .text = color(8),
                    .muted = color(9),
                    .dim = color(10)};
    for (const auto rgb : row.gradient) {
        palette.gradient.append(QColor(rgb));
    }
    return palette;
}

} // namespace

QList<Palette> Palette::all()
{
    QList<Palette> palettes;
    for (const auto& row : rows()) {
        palettes.append(paletteOf(row));
    }
    return palettes;
}

Palette Palette::find(const QString& id)
{
    const auto row = std::ranges::find_if(rows(), [&](const PaletteRow& each) { return id == QLatin1String(each.id); });
    return paletteOf(row == rows().end() ? rows().front() : *row);
}

} // namespace quelto
