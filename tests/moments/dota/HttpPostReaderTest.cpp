// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/HttpPostReader.h"

#include <gtest/gtest.h>

#include <chrono>

namespace quelto {
namespace {

using State = HttpPostReader::State;

struct Request {
    const char* name;
    QByteArray bytes;
    State state;
    QByteArray body = {};
    bool hasOrigin = false;
};

class HttpPostRequest : public testing::TestWithParam<Request> { };

void expectResult(const HttpPostReader& reader, State state, const Request& expected)
{
    ASSERT_EQ(state, expected.state);
    if (state == State::complete) {
        EXPECT_EQ(reader.post().body, expected.body);
        EXPECT_EQ(reader.post().hasOrigin, expected.hasOrigin);
    }
}

TEST_P(HttpPostRequest, ResultIsSameWholeAndByteByByte)
{
    HttpPostReader whole;
    expectResult(whole, whole.add(GetParam().bytes), GetParam());

    HttpPostReader bytewise;
    auto state = State::needsMore;
    for (const auto& byte : GetParam().bytes) {
        state = bytewise.add(QByteArrayView(&byte, 1));
    }
    expectResult(bytewise, state, GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, HttpPostRequest,
    testing::Values(
        Request{"Post", "POST / HTTP/1.1\r\ncontent-type: application/json\r\nContent-Length: 4\r\n\r\nbody",
                State::complete, "body"},
        Request{"AnyMethodAndPath", "BREW /pot?x HTCPCP/1.0\r\ncontent-length:2\r\n\r\n{}", State::complete, "{}"},
        Request{"AnyCase", "POST /\r\ncOnTeNt-LeNgTh: 2\r\n\r\n{}", State::complete, "{}"},
        Request{"LengthWithWhiteSpace", "POST /\r\nContent-Length: \t 2 \t\r\n\r\n{}", State::complete, "{}"},
        Request{"LengthWithPlusSign", "POST /\r\nContent-Length: +2\r\n\r\n{}", State::complete, "{}"},
        Request{"NoLength", "GET / HTTP/1.1\r\nHost: x\r\n\r\nrest", State::complete, ""},
        Request{"LengthIsNotANumber", "POST /\r\nContent-Length: two\r\n\r\n{}", State::complete, ""},
        Request{"LengthHasTrailingText", "POST /\r\nContent-Length: 2 {}\r\n\r\n{}", State::complete, ""},
        Request{"LengthIsEmpty", "POST /\r\nContent-Length:\r\n\r\n{}", State::complete, ""},
        Request{"LengthIsNegative", "POST /\r\nContent-Length: -2\r\n\r\n{}", State::complete, ""},
        Request{"LengthOverflows", "POST /\r\nContent-Length: 99999999999999999999\r\n\r\n{}", State::complete, ""},
        Request{"LengthIsMaximum", "POST /\r\nContent-Length: 9223372036854775807\r\n\r\n{}", State::needsMore},
        Request{"LengthIsMinimum", "POST /\r\nContent-Length: -9223372036854775808\r\n\r\n{}", State::complete, ""},
        Request{"FirstLengthCounts", "POST /\r\nContent-Length: 1\r\nContent-Length: 2\r\n\r\n{}", State::complete,
                "{"},
        Request{"FirstLengthCountsEvenIfInvalid", "POST /\r\nContent-Length: x\r\nContent-Length: 2\r\n\r\n{}",
                State::complete, ""},
        Request{"LengthInFirstLine", "content-length: 2\r\n\r\n{}", State::complete, "{}"},
        Request{"SimilarHeaderNamesAreIgnored", "POST /\r\nX-Content-Length: 2\r\nContent-Lengths: 2\r\n\r\n{}",
                State::complete, ""},
        Request{"LineFeedsAloneDoNotEndHeader", "POST /\nContent-Length: 2\n\n{}", State::needsMore},
        Request{"EmptyHeader", "\r\n\r\nrest", State::complete, ""}, Request{"NoData", "", State::needsMore},
        Request{"IncompleteHeader", "POST / HTTP/1.1\r\nContent-Length: 2\r\n\r", State::needsMore},
        Request{"IncompleteBody", "POST /\r\nContent-Length: 3\r\n\r\n{}", State::needsMore},
        Request{"InvalidUtf8", "POST /\xff\xc3\r\nX: \xf0\x9f\r\nContent-Length: 2\r\n\r\n\xff\xfe", State::complete,
                "\xff\xfe"},
        Request{"FirstOfTwoRequests", "POST /\r\nContent-Length: 2\r\n\r\n{}POST /\r\nContent-Length: 2\r\n\r\n[]",
                State::complete, "{}"},
        Request{"FromWebPage", "POST /\r\norigin: https://example.org\r\nContent-Length: 2\r\n\r\n{}", State::complete,
                "{}", true},
        Request{"FromWebPageWithNullOrigin", "POST /\r\nContent-Length: 2\r\nOrigin: null\r\n\r\n{}", State::complete,
                "{}", true},
        Request{"OriginInBodyOnly", "POST /\r\nContent-Length: 11\r\n\r\n\r\norigin: x", State::complete,
                "\r\norigin: x"}),
    [](const auto& request) { return std::string(request.param.name); });

QByteArray requestOfSize(qsizetype size)
{
    const auto header = QByteArray("POST /\r\nContent-Length: %1\r\n\r\n");
    for (auto body = size; body > 0; --body) {
        const auto filled = QByteArray(header).replace("%1", QByteArray::number(body));
        if (filled.size() + body == size) {
            return filled + QByteArray(body, 'x');
        }
    }
    return {};
}

TEST(HttpPostReader, AcceptsRequestsUpToMaximumSize)
{
    HttpPostReader reader;
    EXPECT_EQ(reader.add(requestOfSize(HttpPostReader::MaxRequestSize)), State::complete);
    HttpPostReader other;
    const auto larger = requestOfSize(HttpPostReader::MaxRequestSize + 1);
    EXPECT_EQ(other.add(QByteArrayView(larger).chopped(1)), State::needsMore);
    EXPECT_EQ(other.add(QByteArrayView(larger).last(1)), State::tooLarge);
    HttpPostReader whole;
    EXPECT_EQ(whole.add(larger), State::tooLarge);
}

TEST(HttpPostReader, RejectsHeaderWithoutEnd)
{
    HttpPostReader reader;
    EXPECT_EQ(reader.add(QByteArray(HttpPostReader::MaxRequestSize, 'x')), State::needsMore);
    EXPECT_EQ(reader.add("\r\n\r\n"), State::tooLarge);
    EXPECT_EQ(reader.add("x"), State::tooLarge);
}

TEST(HttpPostReader, ReadsLargeHeaderByteByByteInLinearTime)
{
    // Searching the whole header again for each byte would take minutes.
    HttpPostReader reader;
    const auto header = QByteArray("POST /\r\nX: ") + QByteArray(1'000'000, '\r') + "\r\nContent-Length: 1\r\n\r\n!";
    const auto start = std::chrono::steady_clock::now();
    auto state = State::needsMore;
    for (const auto& byte : header) {
        ASSERT_EQ(state, State::needsMore);
        state = reader.add(QByteArrayView(&byte, 1));
    }
    EXPECT_EQ(state, State::complete);
    EXPECT_EQ(reader.post().body, "!");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(HttpPostReader, ReadsLargeHeaderWithManyLines)
{
    HttpPostReader reader;
    QByteArray header;
    while (header.size() < 2'000'000) {
        header += "a\r\n";
    }
    EXPECT_EQ(reader.add(header + "\r\n"), State::complete);
}

} // namespace
} // namespace quelto
