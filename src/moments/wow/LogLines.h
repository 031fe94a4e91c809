// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/wow/LogLine.h"

#include <QByteArrayView>

#include <array>
#include <functional>

namespace quelto {

/// Cuts a growing combat log into lines and picks those that may tell of an event, by nothing but a search for the
/// events' words: the bulk of a log is never cut, copied or decoded.
///
/// What it picks does not depend on where the log was cut into blocks. It holds a line that is not complete, and no
/// more: a line of LongestLogLine bytes or more is passed over, however long it gets.
class LogLines {
public:
    static constexpr std::size_t LongestLogLine = 4096;

    /// A line without its line feed; valid during the call.
    using OnLine = std::function<void(QByteArrayView line)>;

    /// Goes on with the log's next bytes and hands out the lines that they complete, in order.
    void take(QByteArrayView block, const OnLine& onLine);
    /// Forgets the beginning of a line that is held.
    void clear();

private:
    void hold(QByteArrayView part);

    std::array<char, LongestLogLine> m_partial;
    std::size_t m_held = 0;
    /// The line at hand is to be passed over up to its end.
    bool m_isTooLong = false;
};

} // namespace quelto
