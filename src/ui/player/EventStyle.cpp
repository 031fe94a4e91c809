// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/player/EventStyle.h"

#include "base/language/T.h"

#include <algorithm>
#include <array>
#include <optional>

namespace quelto {

namespace {

enum class Tone { accent, blue, good, gold, grey, violet, yellow };

/// A key is known by itself or by how it starts.
enum class Match { whole, start };

struct EventLook {
    const char* key;
    Match match;
    const char* icon;
    Tone tone;
};

// The first row that matches counts.
constexpr std::array Looks{
    EventLook{"multikill", Match::start, "flame.fill", Tone::gold},
    EventLook{"steal", Match::start, "bolt.fill", Tone::violet},
    EventLook{"objective", Match::start, "flag.fill", Tone::blue},
    EventLook{"kill", Match::whole, "scope", Tone::accent},
    EventLook{"solo_kill", Match::whole, "scope", Tone::accent},
    EventLook{"my_death", Match::whole, "xmark", Tone::grey},
    EventLook{"assist", Match::whole, "hand.raised.fill", Tone::good},
    EventLook{"ace", Match::whole, "crown.fill", Tone::gold},
    EventLook{"first_blood", Match::whole, "drop.fill", Tone::accent},
    EventLook{"tower", Match::whole, "building.columns.fill", Tone::blue},
    EventLook{"inhibitor", Match::whole, "building.columns.fill", Tone::blue},
    EventLook{"boss_kill", Match::whole, "trophy.fill", Tone::gold},
    EventLook{"victory", Match::whole, "trophy.fill", Tone::gold},
    EventLook{"dungeon_complete", Match::whole, "checkmark.seal.fill", Tone::gold},
    EventLook{"laugh", Match::whole, "face.smiling.inverse", Tone::yellow},
};

const EventLook* lookOf(const QString& name)
{
    const auto* look = std::ranges::find_if(Looks, [&](const EventLook& candidate) {
        const QLatin1String key(candidate.key);
        return candidate.match == Match::start ? name.startsWith(key) : name == key;
    });
    return look == Looks.end() ? nullptr : look;
}

/// The rest of the name if it starts so.
std::optional<QString> after(const char* start, const QString& name)
{
    const QLatin1String prefix(start);
    return name.startsWith(prefix) ? std::optional(name.mid(prefix.size())) : std::nullopt;
}

QString multiKillTitle(const QString& count)
{
    bool isNumber = false;
    const auto kills = count.toInt(&isNumber);
    if (!isNumber || kills == 2) {
        return QStringLiteral("Double Kill");
    }
    switch (kills) {
    case 3:
        return QStringLiteral("Triple Kill");
    case 4:
        return QStringLiteral("Quadra Kill");
    default:
        return QStringLiteral("Penta / Rampage");
    }
}

} // namespace

QString EventStyle::icon(const QString& name)
{
    const auto* look = lookOf(name);
    return QString::fromLatin1(look != nullptr ? look->icon : "circle.fill");
}

QColor EventStyle::color(const QString& name, const Theme& theme)
{
    const auto* look = lookOf(name);
    if (look == nullptr) {
        return theme.muted();
    }
    switch (look->tone) {
    case Tone::accent:
        return theme.accent();
    case Tone::blue:
        return {0x3F, 0xB6, 0xFF};
    case Tone::good:
        return Theme::good();
    case Tone::gold:
        return Theme::gold();
    case Tone::grey:
        return {0x9A, 0x9A, 0xA8};
    case Tone::violet:
        return {0xB0, 0x70, 0xFF};
    case Tone::yellow:
        return {0xFF, 0xD8, 0x4D};
    }
    return theme.muted();
}

QString EventStyle::title(const QString& name)
{
    if (const auto count = after("multikill_", name)) {
        return multiKillTitle(*count);
    }
    if (const auto objective = after("steal_", name)) {
        return T("{0} Çalma!", T(objective->toUtf8().constData()));
    }
    if (const auto objective = after("objective_", name)) {
        return T(objective->toUtf8().constData());
    }
    struct Title {
        const char* key;
        QString text;
    };
    const std::array titles{
        Title{"kill", T("Kill")},
        Title{"solo_kill", QStringLiteral("Solo Kill")},
        Title{"my_death", T("Ölüm")},
        Title{"assist", T("Asist")},
        Title{"ace", QStringLiteral("Ace")},
        Title{"first_blood", T("İlk Kan")},
        Title{"tower", T("Kule")},
        Title{"inhibitor", T("İnhibitör")},
        Title{"boss_kill", QStringLiteral("Boss")},
        Title{"victory", T("Zafer")},
        Title{"dungeon_complete", QStringLiteral("Mythic+")},
        Title{"laugh", T("Kahkaha 😂")},
    };
    const auto* title = std::ranges::find_if(titles, [&](const Title& row) { return name == QLatin1String(row.key); });
    return title == titles.end() ? name : title->text;
}

} // namespace quelto
