// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

namespace quelto {

/// How a picture of another shape fills the canvas: in front of a blurred copy of itself, or cropped.
enum class FillMode { blur, crop };

/// In the order in which screens list them.
constexpr std::array<FillMode, 2> allFillModes()
{
    return {FillMode::blur, FillMode::crop};
}

/// The word that the program stores.
QString rawValue(FillMode mode);
/// Identifies the mode in lists.
QString id(FillMode mode);
/// The translated words to display.
QString label(FillMode mode);
/// The inverse of rawValue().
std::optional<FillMode> fillModeFromRawValue(QStringView value);

} // namespace quelto
