// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace quelto {

struct HttpPost {
    QByteArray body;
    /// Browsers add the header to what a page sends to another site; games do not.
    bool hasOrigin = false;
};

/// Puts one request together from the pieces in which it arrives. Only the header's end, the length of the body and
/// where it comes from are looked at, not method nor path.
///
/// However the bytes are cut into pieces, the result is the same, and the work is in proportion to their number.
/// Thread: none of its own; touches no socket.
class HttpPostReader {
public:
    enum class State { needsMore, complete, tooLarge };

    /// Header and body together.
    static constexpr qsizetype LargestRequest = 4 * 1024 * 1024;

    /// What follows a complete request is ignored.
    State add(QByteArrayView bytes);
    /// Only when complete.
    HttpPost post() const;
    /// How many bytes are held.
    qsizetype size() const { return m_bytes.size(); }

private:
    void findBody();
    void readHeader(QByteArrayView header);

    State m_state = State::needsMore;
    QByteArray m_bytes;
    /// Behind the empty line; 0 until that was found.
    qsizetype m_bodyStart = 0;
    qint64 m_bodySize = 0;
    qsizetype m_searched = 0;
    bool m_hasOrigin = false;
};

} // namespace quelto
