// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/DayGroups.h"

#include "base/language/L10n.h"
#include "base/language/T.h"

#include <map>

namespace quelto {

QList<DayGroup> dayGroups(const QList<Clip>& clips, const QList<qsizetype>& places)
{
    struct Dated {
        qint64 instant;
        qsizetype place;
    };
    std::map<QDate, std::vector<Dated>, std::greater<>> days;
    for (const auto place : places) {
        const auto date = clips.at(place).date.toLocalTime();
        days[date.date()].push_back({date.toMSecsSinceEpoch(), place});
    }
    QList<DayGroup> groups;
    for (auto& [day, dated] : days) {
        std::ranges::stable_sort(dated, std::ranges::greater(), &Dated::instant);
        DayGroup group{.day = day, .clips = {}};
        group.clips.reserve(static_cast<qsizetype>(dated.size()));
        for (const auto& each : dated) {
            group.clips.append(each.place);
        }
        groups.append(std::move(group));
    }
    return groups;
}

QString dayTitle(QDate day, QDate today)
{
    if (day == today) {
        return T("Bugün");
    }
    if (day.addDays(1) == today) {
        return T("Dün");
    }
    return L10n::date(day.startOfDay(), QStringLiteral("EEEEdMMMMyyyy"));
}

} // namespace quelto
