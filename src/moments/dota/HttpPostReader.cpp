// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/HttpPostReader.h"

#include <QString>

#include <algorithm>
#include <charconv>
#include <optional>

namespace quelto {

namespace {

constexpr QByteArrayView LineEnd("\r\n");
constexpr QByteArrayView HeaderEnd("\r\n\r\n");

/// The rest of a line that starts with the name, ignoring case.
std::optional<QByteArrayView> valueAfter(QByteArrayView name, QByteArrayView line)
{
    if (line.size() < name.size() || line.first(name.size()).compare(name, Qt::CaseInsensitive) != 0) {
        return std::nullopt;
    }
    return line.sliced(name.size());
}

/// Returns 0 for a negative or invalid number: such a request has no body.
qint64 parseLength(QByteArrayView text)
{
    const auto trimmed = QString::fromUtf8(text).trimmed().toUtf8();
    qint64 length = 0;
    const auto* begin = trimmed.startsWith('+') ? trimmed.cbegin() + 1 : trimmed.cbegin();
    const auto [end, error] = std::from_chars(begin, trimmed.cend(), length);
    const bool isNumber = error == std::errc{} && end == trimmed.cend();
    return isNumber ? std::max(length, qint64{0}) : 0;
}

} // namespace

HttpPostReader::State HttpPostReader::add(QByteArrayView bytes)
{
    if (m_state != State::needsMore) {
        return m_state;
    }
    m_bytes.append(bytes);
    if (m_bodyStart == 0) {
        findBody();
    }
    // Compares with the remaining size, so that no length can overflow.
    const auto maxBodySize = std::min(m_bytes.size(), MaxRequestSize) - m_bodyStart;
    if (m_bodyStart > 0 && m_bodySize <= maxBodySize) {
        m_state = State::complete;
    } else if (m_bytes.size() > MaxRequestSize) {
        m_state = State::tooLarge;
    }
    return m_state;
}

HttpPost HttpPostReader::post() const
{
    Q_ASSERT(m_state == State::complete);
    return {.body = m_bytes.sliced(m_bodyStart, m_bodySize), .hasOrigin = m_hasOrigin};
}

void HttpPostReader::findBody()
{
    const auto end = m_bytes.indexOf(HeaderEnd, m_searchStart);
    if (end < 0) {
        // The last bytes may be the start of the header's end; earlier bytes need not be searched again.
        m_searchStart = std::max(m_bytes.size() - (HeaderEnd.size() - 1), qsizetype{0});
        return;
    }
    m_bodyStart = end + HeaderEnd.size();
    readHeader(QByteArrayView(m_bytes).first(end));
}

void HttpPostReader::readHeader(QByteArrayView header)
{
    bool hasLength = false;
    for (qsizetype start = 0; start <= header.size();) {
        auto end = header.indexOf(LineEnd, start);
        end = end < 0 ? header.size() : end;
        const auto line = header.sliced(start, end - start);
        start = end + LineEnd.size();
        if (const auto length = valueAfter("content-length:", line); length && !hasLength) {
            hasLength = true;
            m_bodySize = parseLength(*length);
        }
        m_hasOrigin = m_hasOrigin || valueAfter("origin:", line).has_value();
    }
}

} // namespace quelto
