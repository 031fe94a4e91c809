// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/Presets.h"

#include <QSettings>
#include <QString>
#include <QVariant>

#include <optional>

namespace quelto {

/// The value under `key` in the settings file, converted to its type, or `fallback` if the file lacks the key. A value
/// that cannot be converted reads as 0, false or an empty string; a preset's unknown name reads as its default.
bool readStored(const QSettings& store, const char* key, bool fallback);
int readStored(const QSettings& store, const char* key, int fallback);
double readStored(const QSettings& store, const char* key, double fallback);
QString readStored(const QSettings& store, const char* key, const QString& fallback);
/// The stored text under `key` if it is a whole number that is negative or exceeds 32 bits; nothing otherwise.
std::optional<QString> outOfRangeText(const QSettings& store, const char* key);
/// Ends the program with a message if the stored number is negative or exceeds 32 bits: no control can produce one.
quint32 readStored(const QSettings& store, const char* key, quint32 fallback);
ResolutionPreset readStored(const QSettings& store, const char* key, ResolutionPreset fallback);
QualityPreset readStored(const QSettings& store, const char* key, QualityPreset fallback);
VideoCodec readStored(const QSettings& store, const char* key, VideoCodec fallback);

/// The form in which a value is written: presets by their name, everything else as it is.
template <typename T> QVariant storedForm(const T& value)
{
    if constexpr (std::is_enum_v<T>) {
        return rawValueOf(value);
    } else {
        return value;
    }
}

} // namespace quelto
