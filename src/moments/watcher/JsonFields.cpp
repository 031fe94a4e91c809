// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/watcher/JsonReading.h"

#include <QJsonDocument>

#include <limits>

namespace quelto {

namespace {

/// Looked at before the parser is, so that depth costs neither its stack nor its memory.
bool isDeeperThan(int limit, const QByteArray& bytes)
{
    int depth = 0;
    bool isInText = false;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const char byte = bytes[i];
        if (isInText) {
            if (byte == '\\') {
                ++i;
            } else {
                isInText = byte != '"';
            }
        } else if (byte == '"') {
            isInText = true;
        } else if (byte == '{' || byte == '[') {
            if (++depth > limit) {
                return true;
            }
        } else if (byte == '}' || byte == ']') {
            --depth;
        }
    }
    return false;
}

} // namespace

std::optional<QJsonObject> jsonObject(const QByteArray& bytes)
{
    if (isDeeperThan(DeepestJson, bytes)) {
        return std::nullopt;
    }
    const auto document = QJsonDocument::fromJson(bytes);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

std::optional<double> numberIn(const QJsonObject& object, QLatin1StringView key)
{
    const auto value = object.value(key);
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<int> integerIn(const QJsonObject& object, QLatin1StringView key)
{
    const auto number = numberIn(object, key);
    if (!number || *number != std::floor(*number) || std::abs(*number) > std::numeric_limits<int>::max()) {
        return std::nullopt;
    }
    return static_cast<int>(*number);
}

std::optional<bool> booleanIn(const QJsonObject& object, QLatin1StringView key)
{
    const auto value = object.value(key);
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<QString> textIn(const QJsonObject& object, QLatin1StringView key)
{
    const auto value = object.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

} // namespace quelto
