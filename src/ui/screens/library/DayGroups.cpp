// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/DayGroups.h"

#include "base/language/L10n.h"
#include "base/language/T.h"

namespace quelto {

namespace {

/// Units: milliseconds since 1970.
struct DatedClip {
    qint64 time;
    qsizetype index;
};

/// A day in local time, as instants. Finding the day of an instant takes much longer than a comparison.
class LocalDay {
public:
    LocalDay() = default;
    explicit LocalDay(qint64 time)
        : m_date(QDateTime::fromMSecsSinceEpoch(time).date())
        , m_start(m_date.startOfDay().toMSecsSinceEpoch())
        , m_end(m_date.addDays(1).startOfDay().toMSecsSinceEpoch())
    {
    }

    QDate date() const { return m_date; }
    bool contains(qint64 time) const { return time >= m_start && time < m_end; }

private:
    QDate m_date;
    qint64 m_start = 0;
    qint64 m_end = 0;
};

} // namespace

QList<DayGroup> dayGroups(const QList<Clip>& clips, const QList<qsizetype>& indexes)
{
    std::vector<DatedClip> dated;
    dated.reserve(static_cast<std::size_t>(indexes.size()));
    for (const auto index : indexes) {
        dated.push_back({.time = clips.at(index).date.toMSecsSinceEpoch(), .index = index});
    }
    // A library is sorted already.
    if (!std::ranges::is_sorted(dated, std::ranges::greater(), &DatedClip::time)) {
        std::ranges::stable_sort(dated, std::ranges::greater(), &DatedClip::time);
    }
    QList<DayGroup> groups;
    LocalDay day;
    for (const auto& each : dated) {
        if (!day.contains(each.time)) {
            day = LocalDay(each.time);
            groups.append({.day = day.date(), .clips = {}});
        }
        groups.last().clips.append(each.index);
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
