// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/VideoCodec.h"

#include <QString>

#include <array>
#include <optional>

namespace quelto {

/// The height of the output.
enum class ResolutionPreset { native, p1440, p1080, p720 };
/// The bit rate, as bits per pixel.
enum class QualityPreset { low, medium, high, ultra };

inline constexpr std::array AllResolutionPresets{ResolutionPreset::native, ResolutionPreset::p1440,
                                                 ResolutionPreset::p1080, ResolutionPreset::p720};
inline constexpr std::array AllQualityPresets{QualityPreset::low, QualityPreset::medium, QualityPreset::high,
                                              QualityPreset::ultra};
inline constexpr std::array AllVideoCodecs{VideoCodec::h264, VideoCodec::hevc};

/// The preset's name in the settings file.
QString rawValueOf(ResolutionPreset preset);
QString rawValueOf(QualityPreset preset);
QString rawValueOf(VideoCodec codec);

/// The text for the user.
QString labelOf(ResolutionPreset preset);
QString labelOf(QualityPreset preset);
QString labelOf(VideoCodec codec);

/// The preset with that name in the settings file, or its default for an unknown name. Case-sensitive.
template <typename Preset> Preset presetFromRawValue(const QString& rawValue);
template <> ResolutionPreset presetFromRawValue(const QString& rawValue);
template <> QualityPreset presetFromRawValue(const QString& rawValue);
template <> VideoCodec presetFromRawValue(const QString& rawValue);

/// The greatest height of the output, or nothing for the display's own. Units: pixels.
std::optional<int> heightOf(ResolutionPreset preset);
double bitsPerPixelOf(QualityPreset preset);

} // namespace quelto
