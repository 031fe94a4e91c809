// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

namespace quelto {

/// The deepest nesting that is parsed. Games nest a handful of levels.
inline constexpr int MaxJsonDepth = 64;

/// Parses a JSON object. Returns nothing for any other content, and for nesting deeper than MaxJsonDepth. Invalid UTF-8
/// is repaired, so that one bad name does not cost the rest.
std::optional<QJsonObject> parseJsonObject(const QByteArray& bytes);

/// These functions read one field of the given type. A value of another type counts as absent. For integerIn(), so does
/// a number with a fraction and one outside the range of int.
std::optional<double> numberIn(const QJsonObject& object, QLatin1StringView key);
std::optional<int> integerIn(const QJsonObject& object, QLatin1StringView key);
std::optional<bool> booleanIn(const QJsonObject& object, QLatin1StringView key);
std::optional<QString> textIn(const QJsonObject& object, QLatin1StringView key);

} // namespace quelto
