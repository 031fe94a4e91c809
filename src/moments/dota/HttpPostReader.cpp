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

/// The rest of a line that begins so, whatever the case of its letters.
std::optional<QByteArrayView> restBehind(QByteArrayView name, QByteArrayView line)
{
    if (line.size() < name.size() || line.first(name.size()).compare(name, Qt::CaseInsensitive) != 0) {
        return std::nullopt;
    }
    return line.sliced(name.size());
}

/// What is no number, or a negative one, is none: such a request has no body.
qint64 lengthFrom(QByteArrayView text)
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
    // Compared by what is left, so that no length, however absurd, overflows.
    const auto mostForBody = std::min(m_bytes.size(), LargestRequest) - m_bodyStart;
    if (m_bodyStart > 0 && m_bodySize <= mostForBody) {
        m_state = State::complete;
    } else if (m_bytes.size() > LargestRequest) {
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
    const auto end = m_bytes.indexOf(HeaderEnd, m_searched);
    if (end < 0) {
        // The mark may have come in part; the rest has not to be searched again.
        m_searched = std::max(m_bytes.size() - (HeaderEnd.size() - 1), qsizetype{0});
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
        if (const auto length = restBehind("content-length:", line); length && !hasLength) {
            hasLength = true;
            m_bodySize = lengthFrom(*length);
        }
        m_hasOrigin = m_hasOrigin || restBehind("origin:", line).has_value();
    }
}

} // namespace quelto
