// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogLine.h"

#include <charconv>

namespace quelto {

namespace {

// A unit's flags: affiliation, reaction to the player, controller and type.
constexpr quint32 PlayerSelf = 0x401;
constexpr quint32 EnemyPlayer = 0x440;

// Far above any real keystone level, and low enough for the points to fit an int.
constexpr int MaxKeystoneLevel = 1000;

/// Parses the whole text as a number; returns nothing if it has any other character.
template <typename Number> std::optional<Number> parseNumber(const QString& text, int base = 10)
{
    const auto bytes = text.toUtf8();
    Number value{};
    const auto [end, error] = std::from_chars(bytes.cbegin(), bytes.cend(), value, base);
    return error == std::errc() && end == bytes.cend() ? std::optional(value) : std::nullopt;
}

bool hasFlags(QString field, quint32 mask)
{
    const auto flags = parseNumber<quint32>(field.remove(QStringLiteral("0x")), 16);
    return flags && (*flags & mask) == mask;
}

std::optional<LogEvent> partyKill(const QStringList& fields)
{
    if (fields.size() < 9 || !hasFlags(fields[3], PlayerSelf) || !hasFlags(fields[7], EnemyPlayer)) {
        return std::nullopt;
    }
    return PlayerKill{};
}

std::optional<LogEvent> unitDied(const QStringList& fields)
{
    if (fields.size() < 9 || !hasFlags(fields[7], PlayerSelf)) {
        return std::nullopt;
    }
    return PlayerDeath{};
}

std::optional<LogEvent> encounterEnd(const QStringList& fields)
{
    if (fields.size() < 6 || fields[5] != QStringLiteral("1")) {
        return std::nullopt;
    }
    return BossKill{.name = fields[2], .difficulty = parseNumber<int>(fields[3])};
}

std::optional<LogEvent> challengeModeEnd(const QStringList& fields)
{
    if (fields.size() < 4 || fields[2] != QStringLiteral("1")) {
        return std::nullopt;
    }
    const auto level = parseNumber<int>(fields[3]);
    return level && *level >= 0 && *level <= MaxKeystoneLevel ? std::optional<LogEvent>(KeystoneRun{*level})
                                                              : std::nullopt;
}

} // namespace

QStringList logFields(QStringView text)
{
    QStringList fields;
    QString field;
    bool isQuoted = false;
    for (const auto character : text) {
        if (character == u'"') {
            isQuoted = !isQuoted;
        } else if (character == u',' && !isQuoted) {
            fields.append(std::exchange(field, {}));
        } else {
            field += character;
        }
    }
    fields.append(field.trimmed());
    return fields;
}

std::optional<LogEvent> logEvent(QByteArrayView line)
{
    const auto text = QString::fromUtf8(line);
    const auto timestampEnd = text.indexOf(QStringLiteral("  "));
    if (timestampEnd < 0) {
        return std::nullopt;
    }
    const auto fields = logFields(QStringView(text).mid(timestampEnd + 2));
    const auto& event = fields.first();
    if (event == QStringLiteral("PARTY_KILL")) {
        return partyKill(fields);
    }
    if (event == QStringLiteral("UNIT_DIED")) {
        return unitDied(fields);
    }
    if (event == QStringLiteral("ENCOUNTER_END")) {
        return encounterEnd(fields);
    }
    if (event == QStringLiteral("CHALLENGE_MODE_END")) {
        return challengeModeEnd(fields);
    }
    return std::nullopt;
}

} // namespace quelto
