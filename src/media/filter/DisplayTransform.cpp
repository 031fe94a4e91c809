// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/DisplayTransform.h"

#include <cstring>

namespace quelto {

namespace {

int signOf(std::int32_t value)
{
    return value < 0 ? -1 : 1;
}

const std::uint8_t* displayMatrixOf(const AVStream& stream)
{
    constexpr std::size_t Bytes = 9 * sizeof(std::int32_t);
#if LIBAVCODEC_VERSION_MAJOR >= 61
    const auto* data = av_packet_side_data_get(stream.codecpar->coded_side_data, stream.codecpar->nb_coded_side_data,
                                               AV_PKT_DATA_DISPLAYMATRIX);
    return data != nullptr && data->size >= Bytes ? data->data : nullptr;
#else
    std::size_t size = 0;
    const auto* data = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    return size >= Bytes ? data : nullptr;
#endif
}

} // namespace

QTransform displayTransform(const AVStream& stream)
{
    const auto* bytes = displayMatrixOf(stream);
    if (bytes == nullptr) {
        return {};
    }
    std::array<std::int32_t, 9> matrix{};
    std::memcpy(matrix.data(), bytes, sizeof(matrix));
    const auto [a, b, c, d] = std::array{matrix[0], matrix[1], matrix[3], matrix[4]};
    const auto magnitude = [](std::int32_t value) { return std::abs(std::int64_t{value}); };
    if (magnitude(a) + magnitude(d) >= magnitude(b) + magnitude(c)) {
        return {double(signOf(a)), 0, 0, double(signOf(d)), 0, 0};
    }
    return {0, double(signOf(b)), double(signOf(c)), 0, 0, 0};
}

bool isTransposed(const QTransform& transform)
{
    return transform.m11() == 0;
}

double pixelStretch(AVRational pixelAspect)
{
    return pixelAspect.num > 0 && pixelAspect.den > 0 ? av_q2d(pixelAspect) : 1.0;
}

} // namespace quelto
