// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogLines.h"

#include <cstring>

namespace quelto {

namespace {

constexpr std::size_t shortestWord()
{
    auto shortest = LogEventWords.front().size();
    for (const auto word : LogEventWords) {
        shortest = std::min(shortest, word.size());
    }
    return shortest;
}

// The search compares the last two bytes of a window of this length to decide how far it can skip.
constexpr std::size_t Window = shortestWord();

constexpr std::size_t pair(char first, char second)
{
    return static_cast<std::size_t>(static_cast<unsigned char>(first)) << 8 | static_cast<unsigned char>(second);
}

/// Maps the last two bytes of the window to the distance to the next possible start of a word. 0 means that a word may
/// start at the window.
constexpr auto skips()
{
    std::array<std::uint8_t, 1 << 16> skips{};
    skips.fill(Window - 1);
    for (const auto word : LogEventWords) {
        for (std::size_t i = 1; i < Window; ++i) {
            auto& skip = skips[pair(word[i - 1], word[i])];
            skip = std::min(skip, static_cast<std::uint8_t>(Window - 1 - i));
        }
    }
    return skips;
}

constexpr auto Skips = skips();

bool isWordAt(const char* at, const char* end)
{
    const std::string_view rest(at, static_cast<std::size_t>(end - at));
    return std::any_of(LogEventWords.begin(), LogEventWords.end(), [&](auto word) { return rest.starts_with(word); });
}

/// The start of the first word, or the end. A single pass; most steps skip eight bytes.
const char* firstWord(const char* at, const char* end)
{
    while (static_cast<std::size_t>(end - at) >= Window) {
        const auto skip = Skips[pair(at[Window - 2], at[Window - 1])];
        if (skip > 0) {
            at += skip;
        } else if (isWordAt(at, end)) {
            return at;
        } else {
            ++at;
        }
    }
    return end;
}

const char* lineFeed(const char* begin, const char* end)
{
    return static_cast<const char*>(std::memchr(begin, '\n', static_cast<std::size_t>(end - begin)));
}

/// The position after the last line feed, or begin if there is none.
const char* afterLastLineFeed(const char* begin, const char* end)
{
    const auto* found = static_cast<const char*>(memrchr(begin, '\n', static_cast<std::size_t>(end - begin)));
    return found != nullptr ? found + 1 : begin;
}

} // namespace

void LogLines::take(QByteArrayView block, const OnLine& onLine)
{
    if (block.isEmpty()) {
        return;
    }
    const auto* at = block.begin();
    const auto* const end = block.end();
    if (m_partialSize > 0 || m_isTooLong) {
        const auto* const feed = lineFeed(at, end);
        appendPartial({at, feed != nullptr ? feed : end});
        if (feed == nullptr) {
            return;
        }
        const QByteArrayView line(m_partial.data(), static_cast<qsizetype>(m_partialSize));
        if (!m_isTooLong && firstWord(line.begin(), line.end()) != line.end()) {
            onLine(line);
        }
        clear();
        at = feed + 1;
    }
    const auto* const rest = afterLastLineFeed(at, end);
    for (const auto* word = firstWord(at, rest); word != rest; word = firstWord(at, rest)) {
        const auto* const begin = afterLastLineFeed(at, word);
        const auto* const feed = lineFeed(word, rest);
        if (static_cast<std::size_t>(feed - begin) < MaxLineSize) {
            onLine({begin, feed});
        }
        at = feed + 1;
    }
    appendPartial({rest, end});
}

void LogLines::clear()
{
    m_partialSize = 0;
    m_isTooLong = false;
}

void LogLines::appendPartial(QByteArrayView part)
{
    const auto size = static_cast<std::size_t>(part.size());
    if (m_isTooLong || m_partialSize + size >= MaxLineSize) {
        m_isTooLong = true;
        m_partialSize = 0;
        return;
    }
    std::copy(part.begin(), part.end(), m_partial.begin() + static_cast<std::ptrdiff_t>(m_partialSize));
    m_partialSize += size;
}

} // namespace quelto
