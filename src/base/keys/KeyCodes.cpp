// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/keys/KeyCodes.h"

#include <algorithm>
#include <iterator>

namespace quelto {

namespace {

// clang-format off
constexpr KeyPosition Positions[] = {
    {0, "AC01", 30},    {1, "AC02", 31},    {2, "AC03", 32},    {3, "AC04", 33},
    {4, "AC06", 35},    {5, "AC05", 34},    {6, "AB01", 44},    {7, "AB02", 45},
    {8, "AB03", 46},    {9, "AB04", 47},    {10, "LSGT", 86},   {11, "AB05", 48},
    {12, "AD01", 16},   {13, "AD02", 17},   {14, "AD03", 18},   {15, "AD04", 19},
    {16, "AD06", 21},   {17, "AD05", 20},   {18, "AE01", 2},    {19, "AE02", 3},
    {20, "AE03", 4},    {21, "AE04", 5},    {22, "AE06", 7},    {23, "AE05", 6},
    {24, "AE12", 13},   {25, "AE09", 10},   {26, "AE07", 8},    {27, "AE11", 12},
    {28, "AE08", 9},    {29, "AE10", 11},   {30, "AD12", 27},   {31, "AD09", 24},
    {32, "AD07", 22},   {33, "AD11", 26},   {34, "AD08", 23},   {35, "AD10", 25},
    {36, "RTRN", 28},   {37, "AC09", 38},   {38, "AC07", 36},   {39, "AC11", 40},
    {40, "AC08", 37},   {41, "AC10", 39},   {42, "BKSL", 43},   {43, "AB08", 51},
    {44, "AB10", 53},   {45, "AB06", 49},   {46, "AB07", 50},   {47, "AB09", 52},
    {48, "TAB", 15},    {49, "SPCE", 57},   {50, "TLDE", 41},   {51, "BKSP", 14},
    {53, "ESC", 1},     {64, "FK17", 187},  {65, "KPDL", 83},   {67, "KPMU", 55},
    {69, "KPAD", 78},   {71, "NMLK", 69},   {72, "VOL+", 115},  {73, "VOL-", 114},
    {74, "MUTE", 113},  {75, "KPDV", 98},   {76, "KPEN", 96},   {78, "KPSU", 74},
    {79, "FK18", 188},  {80, "FK19", 189},  {81, "KPEQ", 117},  {82, "KP0", 82},
    {83, "KP1", 79},    {84, "KP2", 80},    {85, "KP3", 81},    {86, "KP4", 75},
    {87, "KP5", 76},    {88, "KP6", 77},    {89, "KP7", 71},    {90, "FK20", 190},
    {91, "KP8", 72},    {92, "KP9", 73},    {93, "AE13", 124},  {94, "AB11", 89},
    {96, "FK05", 63},   {97, "FK06", 64},   {98, "FK07", 65},   {99, "FK03", 61},
    {100, "FK08", 66},  {101, "FK09", 67},  {102, "MUHE", 94},  {103, "FK11", 87},
    {104, "HENK", 92},  {105, "FK13", 183}, {105, "PRSC", 99},  {106, "FK16", 186},
    {107, "FK14", 184}, {107, "SCLK", 70},  {109, "FK10", 68},  {110, "COMP", 127},
    {111, "FK12", 88},  {113, "FK15", 185}, {113, "PAUS", 119}, {114, "INS", 110},
    {115, "HOME", 102}, {116, "PGUP", 104}, {117, "DELE", 111}, {118, "FK04", 62},
    {119, "END", 107},  {120, "FK02", 60},  {121, "PGDN", 109}, {122, "FK01", 59},
    {123, "LEFT", 105}, {124, "RGHT", 106}, {125, "DOWN", 108}, {126, "UP", 103},
};
// clang-format on

} // namespace

std::span<const KeyPosition> keyPositions() noexcept
{
    return Positions;
}

std::optional<std::uint32_t> keyCodeForScanCode(std::uint32_t scanCode) noexcept
{
    const auto* found = std::ranges::find(Positions, scanCode, &KeyPosition::scanCode);
    return found == std::end(Positions) ? std::nullopt : std::optional(found->code);
}

std::optional<std::uint32_t> keyCodeForXkbName(std::string_view xkbName) noexcept
{
    const auto* found = std::ranges::find(
        Positions, xkbName, [](const KeyPosition& position) { return std::string_view(position.xkbName); });
    return found == std::end(Positions) ? std::nullopt : std::optional(found->code);
}

std::vector<KeyPosition> positionsOfKeyCode(std::uint32_t code)
{
    std::vector<KeyPosition> found;
    std::ranges::copy_if(Positions, std::back_inserter(found),
                         [code](const KeyPosition& position) { return position.code == code; });
    return found;
}

} // namespace quelto
