// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogLine.h"

#include <charconv>

namespace quelto {

namespace {

// A unit's flags: who it belongs to, what it is, how it stands to the player.
constexpr quint32 PlayerSelf = 0x401;
constexpr quint32 EnemyPlayer = 0x440;

// Far above any key there will be, and low enough for points to be counted in an int.
constexpr int HighestKeystone = 1000;

/// All of the text as a number; nothing for signs, blanks or letters around it.
template <typename Number> std::optional<Number> number(const QString& text, int base = 10)
{
    const auto bytes = text.toUtf8();
    Number value{};
    const auto [end, error] = std::from_chars(bytes.cbegin(), bytes.cend(), value, base);
    return error == std::errc() && end == bytes.cend() ? std::optional(value) : std::nullopt;
}

bool hasFlags(QString field, quint32 wanted)
{
    const auto flags = number<quint32>(field.remove(QStringLiteral("0x")), 16);
    return flags && (*flags & wanted) == wanted;
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
    return BossKill{.name = fields[2], .difficulty = number<int>(fields[3])};
}

std::optional<LogEvent> challengeModeEnd(const QStringList& fields)
{
    if (fields.size() < 4 || fields[2] != QStringLiteral("1")) {
        return std::nullopt;
    }
    const auto level = number<int>(fields[3]);
    return level && *level >= 0 && *level <= HighestKeystone ? std::optional<LogEvent>(KeystoneRun{*level})
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
    const auto stampEnd = text.indexOf(QStringLiteral("  "));
    if (stampEnd < 0) {
        return std::nullopt;
    }
    const auto fields = logFields(QStringView(text).mid(stampEnd + 2));
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
