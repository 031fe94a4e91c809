// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/Isolate.h"

#include <optional>

namespace quelto {

namespace {

constexpr QChar RightToLeftIsolate(0x2067);
constexpr QChar FirstStrongIsolate(0x2068);
constexpr QChar PopIsolate(0x2069);

struct Directions {
    /// From the first to behind the last right-to-left letter.
    std::optional<qsizetype> start;
    qsizetype end = 0;
    bool hasLeftToRight = false;
    /// Invisible characters that change the direction, as a file name may contain them.
    bool hasControls = false;
};

Directions directionsOf(const QString& text)
{
    Directions found;
    qsizetype end = 0;
    for (const auto letter : text.toUcs4()) {
        const auto start = std::exchange(end, end + (QChar::requiresSurrogates(letter) ? 2 : 1));
        switch (QChar::direction(letter)) {
        case QChar::DirR:
        case QChar::DirAL:
            found.start = found.start.value_or(start);
            found.end = end;
            break;
        case QChar::DirL:
        case QChar::DirEN:
            found.hasLeftToRight = true;
            break;
        case QChar::DirLRE:
        case QChar::DirLRO:
        case QChar::DirRLE:
        case QChar::DirRLO:
        case QChar::DirLRI:
        case QChar::DirRLI:
        case QChar::DirFSI:
            found.hasControls = true;
            break;
        default:
            break;
        }
    }
    return found;
}

} // namespace

QString isolated(const QString& text)
{
    const auto found = directionsOf(text);
    if (found.hasControls || (found.start && !found.hasLeftToRight)) {
        return FirstStrongIsolate + text + PopIsolate;
    }
    if (!found.start) {
        return text;
    }
    return text.left(*found.start) + RightToLeftIsolate + text.mid(*found.start, found.end - *found.start) +
        PopIsolate + text.mid(found.end);
}

} // namespace quelto
