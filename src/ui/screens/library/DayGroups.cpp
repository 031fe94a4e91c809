// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/DayGroups.h"

#include "base/language/L10n.h"
#include "base/language/T.h"

#include <map>

namespace quelto {

QList<DayGroup> dayGroups(const QList<Clip>& clips, const QList<qsizetype>& indexes)
{
    struct Dated {
        qint64 time;
        qsizetype index;
    };
    std::map<QDate, std::vector<Dated>, std::greater<>> days;
    for (const auto index : indexes) {
        const auto date = clips.at(index).date.toLocalTime();
        days[date.date()].push_back({date.toMSecsSinceEpoch(), index});
    }
    QList<DayGroup> groups;
    for (auto& [day, dated] : days) {
        std::ranges::stable_sort(dated, std::ranges::greater(), &Dated::time);
        DayGroup group{.day = day, .clips = {}};
        group.clips.reserve(static_cast<qsizetype>(dated.size()));
        for (const auto& each : dated) {
            group.clips.append(each.index);
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
