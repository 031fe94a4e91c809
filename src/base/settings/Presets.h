// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/EncodedFrame.h"

#include <QString>

#include <array>
#include <optional>

namespace quelto {

/// The output's height.
enum class ResolutionPreset { native, p1440, p1080, p720 };
/// How many bits a pixel gets.
enum class QualityPreset { low, medium, high, ultra };

inline constexpr std::array AllResolutionPresets{ResolutionPreset::native, ResolutionPreset::p1440,
                                                 ResolutionPreset::p1080, ResolutionPreset::p720};
inline constexpr std::array AllQualityPresets{QualityPreset::low, QualityPreset::medium, QualityPreset::high,
                                              QualityPreset::ultra};
inline constexpr std::array AllVideoCodecs{VideoCodec::h264, VideoCodec::hevc};

/// The word that stands in the settings file.
QString rawValueOf(ResolutionPreset preset);
QString rawValueOf(QualityPreset preset);
QString rawValueOf(VideoCodec codec);

/// The words for the user.
QString labelOf(ResolutionPreset preset);
QString labelOf(QualityPreset preset);
QString labelOf(VideoCodec codec);

/// The preset of that word; an unknown word gives the default one. Case-sensitive.
ResolutionPreset resolutionFromRawValue(const QString& rawValue);
QualityPreset qualityFromRawValue(const QString& rawValue);
VideoCodec codecFromRawValue(const QString& rawValue);

/// Units: pixels; nothing for the display's own height.
std::optional<int> heightOf(ResolutionPreset preset);
double bitsPerPixelOf(QualityPreset preset);

} // namespace quelto
