// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/naming/Clip.h"

#include <QDate>
#include <QList>

namespace quelto {

/// The clips of one day in local time.
struct DayGroup {
    QDate day;
    /// Their places in the list that was grouped, newest first.
    QList<qsizetype> clips;

    bool operator==(const DayGroup&) const = default;
};

/// Groups those clips, newest day first. Clips of the same instant keep their order.
QList<DayGroup> dayGroups(const QList<Clip>& clips, const QList<qsizetype>& places);

/// "Today", "Yesterday" or the whole date in the words of the language.
QString dayTitle(QDate day, QDate today);

} // namespace quelto
