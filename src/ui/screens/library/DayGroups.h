// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/naming/Clip.h"

#include <QDate>
#include <QList>

namespace quelto {

/// The clips of one day in local time.
struct DayGroup {
    QDate day;
    /// Indexes into the grouped list, newest clip first.
    QList<qsizetype> clips;

    bool operator==(const DayGroup&) const = default;
};

/// Groups the clips at those indexes by day, newest day first. Clips of the same time keep their order.
///
/// Thread: any.
QList<DayGroup> dayGroups(const QList<Clip>& clips, const QList<qsizetype>& indexes);

/// "Today", "Yesterday" or the full date, translated.
QString dayTitle(QDate day, QDate today);

} // namespace quelto
