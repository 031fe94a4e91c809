// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

namespace quelto {

/// What games send is nested a handful of levels deep; what is nested deeper is not from a game.
inline constexpr int DeepestJson = 64;

/// The bytes as a JSON object; nothing for anything else, nesting beyond DeepestJson included.
std::optional<QJsonObject> jsonObject(const QByteArray& bytes);

/// A field by its kind. A value of another kind counts as absent; so does a number that is no whole one, or that no int
/// can hold, where an integer is asked for.
std::optional<double> numberIn(const QJsonObject& object, QLatin1StringView key);
std::optional<int> integerIn(const QJsonObject& object, QLatin1StringView key);
std::optional<bool> booleanIn(const QJsonObject& object, QLatin1StringView key);
std::optional<QString> textIn(const QJsonObject& object, QLatin1StringView key);

} // namespace quelto
