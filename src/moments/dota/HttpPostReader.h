// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace quelto {

struct HttpPost {
    QByteArray body;
    /// Browsers add this header to requests from a page to another site; games do not.
    bool hasOrigin = false;
};

/// Assembles one HTTP request from the pieces in which it arrives. Reads only the Content-Length and Origin headers and
/// the body; ignores method and path.
///
/// The result does not depend on how the bytes are split. The total cost is linear in the number of bytes.
class HttpPostReader {
public:
    enum class State { needsMore, complete, tooLarge };

    /// Units: bytes, header and body.
    static constexpr qsizetype MaxRequestSize = 4 * 1024 * 1024;

    /// Bytes after a complete request are ignored.
    State add(QByteArrayView bytes);
    /// Must only be called in state complete.
    HttpPost post() const;
    /// The number of buffered bytes.
    qsizetype size() const { return m_bytes.size(); }

private:
    void findBody();
    void readHeader(QByteArrayView header);

    State m_state = State::needsMore;
    QByteArray m_bytes;
    /// The offset after the empty line; 0 until that is found.
    qsizetype m_bodyStart = 0;
    qint64 m_bodySize = 0;
    /// The header's end is not before this offset.
    qsizetype m_searchStart = 0;
    bool m_hasOrigin = false;
};

} // namespace quelto
