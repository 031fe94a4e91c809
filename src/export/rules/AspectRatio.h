// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

namespace quelto {

/// The shape of the picture that an aspect export makes.
enum class AspectRatio { wide, vertical, square, portrait };

/// In the order in which screens list them.
constexpr std::array<AspectRatio, 4> allAspectRatios()
{
    return {AspectRatio::wide, AspectRatio::vertical, AspectRatio::square, AspectRatio::portrait};
}

/// Width and height as users see and the program stores them: "16:9".
QString rawValue(AspectRatio aspect);
/// Identifies the ratio in lists.
QString id(AspectRatio aspect);
/// The ratio in file names, which cannot have a colon: "16x9". Names of clips are read by it, see hasTallMark.
QString tag(AspectRatio aspect);
/// The inverse of rawValue().
std::optional<AspectRatio> aspectRatioFromRawValue(QStringView value);

} // namespace quelto
