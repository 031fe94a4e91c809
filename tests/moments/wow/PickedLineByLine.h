// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/wow/LogLine.h"

#include <QByteArrayList>

#include <algorithm>

namespace quelto::test {

/// The lines that LogLines must select, computed line by line without optimisation.
inline QByteArrayList pickedLineByLine(const QByteArray& log)
{
    QByteArrayList picked;
    auto lines = log.split('\n');
    lines.removeLast();
    for (const auto& line : lines) {
        const bool hasWord = std::any_of(LogEventWords.begin(), LogEventWords.end(), [&](auto word) {
            return line.contains(QByteArrayView(word.data(), static_cast<qsizetype>(word.size())));
        });
        if (hasWord && line.size() < 4096) {
            picked.append(line);
        }
    }
    return picked;
}

} // namespace quelto::test
