// SPDX-License-Identifier: GPL-3.0-or-later
// A log that comes in any pieces gives the same events as one that is cut into lines first, and whatever stands in it,
// moments keep to their bounds.
#include "moments/wow/LogLines.h"
#include "moments/wow/WowFights.h"

#include "tests/fuzz/EventListener.h"
#include "tests/moments/wow/PickedLineByLine.h"

#include <QByteArrayList>

namespace {

using namespace quelto;
using namespace quelto::fuzz;

// Stands for many bytes, as lines that are too long are out of a fuzzer's reach.
constexpr char Filler = '\x01';
constexpr qsizetype FillerLength = 1021;

/// The sizes are repeated until all of the log is read.
QByteArrayList pickedInPieces(const QByteArray& log, const QByteArray& sizes)
{
    QByteArrayList picked;
    LogLines lines;
    qsizetype at = 0;
    for (qsizetype i = 0; at < log.size(); ++i) {
        const auto size = sizes.isEmpty() ? 1 : 1 + static_cast<unsigned char>(sizes[i % sizes.size()]);
        const auto piece = log.mid(at, size);
        lines.take(piece, [&](QByteArrayView line) { picked.append(line.toByteArray()); });
        at += piece.size();
    }
    return picked;
}

void score(const QByteArrayList& lines)
{
    WowFights fights;
    double now = 1000;
    for (const auto& line : lines) {
        QList<Moment> moments;
        if (const auto event = logEvent(line)) {
            moments = fights.take(*event, now);
        }
        // Not all fights come to rest before the next line.
        now += static_cast<double>(line.size() % 13);
        moments += fights.tick(now);
        for (const auto& moment : moments) {
            checkMoment(moment);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The first line is the sizes of the pieces, what follows is the log.
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto end = std::max<qsizetype>(input.indexOf('\n'), 0);
    auto log = input.mid(end);
    log.replace(Filler, QByteArray(FillerLength, 'x'));
    const auto lines = test::pickedLineByLine(log);
    require(pickedInPieces(log, input.left(end)) == lines);
    score(lines);
    return 0;
}
