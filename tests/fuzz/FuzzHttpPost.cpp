// SPDX-License-Identifier: GPL-3.0-or-later
// Requires that the result does not depend on how a request is split into reads. The first byte seeds the split.
#include "moments/dota/HttpPostReader.h"

#include "tests/fuzz/Require.h"

#include <random>

namespace {

using namespace quelto;
using namespace quelto::fuzz;
using State = HttpPostReader::State;

State feed(HttpPostReader& reader, QByteArrayView bytes, std::uint8_t seed)
{
    std::minstd_rand random(seed);
    auto state = State::needsMore;
    while (!bytes.isEmpty()) {
        const auto size = std::min(static_cast<qsizetype>(1 + random() % (1U + seed % 16U)), bytes.size());
        const auto now = reader.add(bytes.first(size));
        require(state == State::needsMore || now == state);
        state = now;
        bytes = bytes.sliced(size);
    }
    return state;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const QByteArrayView request(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size) - 1);
    HttpPostReader whole;
    HttpPostReader pieces;
    const auto state = whole.add(request);
    require(feed(pieces, request, data[0]) == state);
    if (state == State::complete) {
        require(whole.post().body == pieces.post().body && whole.post().hasOrigin == pieces.post().hasOrigin);
        require(request.toByteArray().contains("\r\n\r\n" + whole.post().body));
    }
    return 0;
}
