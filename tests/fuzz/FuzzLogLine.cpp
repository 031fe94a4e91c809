// SPDX-License-Identifier: GPL-3.0-or-later
// Requires that a log read in blocks of any size gives the same lines as a log that is split into lines first, and that
// moments are within bounds for any content.
#include "moments/wow/LogLines.h"
#include "moments/wow/WowFights.h"

#include "tests/fuzz/EventListener.h"
#include "tests/moments/wow/PickedLineByLine.h"

#include <QByteArrayList>

namespace {

using namespace quelto;
using namespace quelto::fuzz;

// Expands to many bytes, since the fuzzer cannot generate overlong lines itself.
constexpr char Filler = '\x01';
constexpr qsizetype FillerLength = 1021;

/// The block sizes repeat until the whole log is read.
QByteArrayList pickedInBlocks(const QByteArray& log, const QByteArray& sizes)
{
    QByteArrayList picked;
    LogLines lines;
    qsizetype offset = 0;
    for (qsizetype i = 0; offset < log.size(); ++i) {
        const auto size = sizes.isEmpty() ? 1 : 1 + static_cast<unsigned char>(sizes[i % sizes.size()]);
        const auto block = log.mid(offset, size);
        lines.take(block, [&](QByteArrayView line) { picked.append(line.toByteArray()); });
        offset += block.size();
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
        // Varies the gap, so that some fights are still open at the next line.
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
    // The first line holds the block sizes, the rest is the log.
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto end = std::max<qsizetype>(input.indexOf('\n'), 0);
    auto log = input.mid(end);
    log.replace(Filler, QByteArray(FillerLength, 'x'));
    const auto lines = test::pickedLineByLine(log);
    require(pickedInBlocks(log, input.left(end)) == lines);
    score(lines);
    return 0;
}
