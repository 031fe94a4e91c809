// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/watcher/JsonFields.h"

#include <QJsonDocument>

#include <limits>

namespace quelto {

namespace {

/// Runs before the parser, so that deep nesting costs the parser neither stack nor memory.
bool isDeeperThan(int limit, const QByteArray& bytes)
{
    int depth = 0;
    bool isInString = false;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const char byte = bytes[i];
        if (isInString) {
            if (byte == '\\') {
                ++i;
            } else {
                isInString = byte != '"';
            }
        } else if (byte == '"') {
            isInString = true;
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

/// Replaces invalid sequences, which the parser rejects, with the replacement character.
QByteArray repaired(const QByteArray& bytes)
{
    return bytes.isValidUtf8() ? bytes : QString::fromUtf8(bytes).toUtf8();
}

} // namespace

std::optional<QJsonObject> parseJsonObject(const QByteArray& bytes)
{
    const auto text = repaired(bytes);
    if (isDeeperThan(MaxJsonDepth, text)) {
        return std::nullopt;
    }
    const auto document = QJsonDocument::fromJson(text);
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
