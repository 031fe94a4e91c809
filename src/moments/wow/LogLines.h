// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/wow/LogLine.h"

#include <QByteArrayView>

#include <array>
#include <functional>

namespace quelto {

/// Splits a growing combat log into lines and selects those that contain the name of an event. It searches for the
/// names directly, so most of a log is never split, copied or decoded.
///
/// The result does not depend on how the log is divided into blocks. Buffers at most one incomplete line; skips lines
/// of MaxLineSize bytes or more.
class LogLines {
public:
    /// Units: bytes.
    static constexpr std::size_t MaxLineSize = 4096;

    /// Receives a line without its line feed. The view is valid during the call only.
    using OnLine = std::function<void(QByteArrayView line)>;

    /// Adds the next bytes of the log. Calls onLine for each selected line that they complete, in order.
    void take(QByteArrayView block, const OnLine& onLine);
    /// Discards the buffered incomplete line.
    void clear();

private:
    void appendPartial(QByteArrayView part);

    std::array<char, MaxLineSize> m_partial;
    std::size_t m_partialSize = 0;
    /// Whether the rest of the current line is to be skipped.
    bool m_isTooLong = false;
};

} // namespace quelto
