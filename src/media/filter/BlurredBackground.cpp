// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/BlurredBackground.h"

#include "media/ffmpeg/FfmpegError.h"

namespace quelto {

namespace {

/// Fewer show the grid of the small picture, more cost time.
constexpr double SmallPixelsPerSigma = 3;
/// Pixels of the small picture around the canvas, so that enlarging it has neighbours there.
constexpr int Margin = 2;

int pitchFor(double sigma)
{
    return std::max(1, static_cast<int>(std::lround(sigma / SmallPixelsPerSigma)));
}

/// Averaging over a box blurs too: its variance is a twelfth of its length squared.
double smallSigma(double sigma, int pitch)
{
    return std::sqrt(std::max(0.0, sigma * sigma / (pitch * pitch) - 1.0 / 12));
}

/// Even, so that the enlarged picture is even too, as its chroma requires.
int smallLength(int canvas, int pitch)
{
    return ((canvas + pitch - 1) / pitch + 2 * Margin + 1) & ~1;
}

struct PlaneRatio {
    double scale = 1;
    double offset = 0;
};

/// Where the pixels of a plane are, in pixels of luma. Chroma is placed left and in the middle of two rows.
constexpr PlaneRatio Luma{};
constexpr PlaneRatio ChromaX{0.5, 0.25};
constexpr PlaneRatio ChromaY{0.5, 0};

/// Boxes of one direction. The picture's length lies on begin … begin + length of the canvas.
struct Direction {
    double begin = 0;
    double length = 1;
    int picture = 1;
    int count = 0;
};

BoxSampler::Boxes boxes(const Direction& direction, int pitch, int border, PlaneRatio plane)
{
    const auto scale = direction.picture / direction.length;
    const auto origin = (-border * pitch - direction.begin) * scale;
    return {
        .origin = origin * plane.scale + plane.offset, .length = pitch * scale * plane.scale, .count = direction.count};
}

/// A component of limited range with 16 bits.
std::uint16_t storedValue(float value, float range, float zero)
{
    constexpr float Unit = 256;
    // No value is negative, so this rounds without a call.
    constexpr float Half = 0.5;
    return static_cast<std::uint16_t>((zero + value * range) * Unit + Half);
}

struct Rgb {
    float red = 0;
    float green = 0;
    float blue = 0;
};

constexpr float LumaRed = 0.2126F;
constexpr float LumaBlue = 0.0722F;
constexpr float LumaGreen = 1 - LumaRed - LumaBlue;

/// A BT.709 colour: luma 0 … 1 and chroma −0.5 … 0.5.
struct Yuv {
    float luma = 0;
    float blue = 0;
    float red = 0;
};

Rgb toRgb(const Yuv& color)
{
    const auto red = color.luma + 2 * (1 - LumaRed) * color.red;
    const auto blue = color.luma + 2 * (1 - LumaBlue) * color.blue;
    return {red, (color.luma - LumaRed * red - LumaBlue * blue) / LumaGreen, blue};
}

Yuv toYuv(const Rgb& color)
{
    const auto luma = LumaRed * color.red + LumaGreen * color.green + LumaBlue * color.blue;
    return {luma, (color.blue - luma) / (2 * (1 - LumaBlue)), (color.red - luma) / (2 * (1 - LumaRed))};
}

/// In RGB, because a dark colour would become too vivid if only its luma were limited.
Yuv limited(const Yuv& color)
{
    const auto rgb = toRgb(color);
    const auto limit = [](float value) { return std::clamp(value, 0.0F, 1.0F); };
    return toYuv({limit(rgb.red), limit(rgb.green), limit(rgb.blue)});
}

} // namespace

BlurredBackground::BlurredBackground(const FrameLayout& layout, const QRectF& rect, QSize picture, PictureScaler scaler)
    : m_look(*layout.background)
    , m_pitch(pitchFor(m_look.sigma))
    , m_taps(gaussian(smallSigma(m_look.sigma, m_pitch)))
    , m_size(smallLength(layout.canvas.width(), m_pitch), smallLength(layout.canvas.height(), m_pitch))
    , m_sampled(m_size + QSize(int(m_taps.size()) - 1, int(m_taps.size()) - 1))
    , m_blurred(3, FloatPlane(m_size))
{
    const Direction x{rect.left(), rect.width(), picture.width(), m_sampled.size().width()};
    const Direction y{rect.top(), rect.height(), picture.height(), m_sampled.size().height()};
    const int border = Margin + static_cast<int>(m_taps.size()) / 2;
    const QSize chroma((picture.width() + 1) / 2, (picture.height() + 1) / 2);
    m_samplers.emplace_back(boxes(x, m_pitch, border, Luma), boxes(y, m_pitch, border, Luma), picture);
    m_samplers.emplace_back(boxes(x, m_pitch, border, ChromaX), boxes(y, m_pitch, border, ChromaY), chroma);

    const auto canvas = layout.canvas;
    const auto enlarged = m_size * m_pitch;
    const auto crop = QStringLiteral(",crop=w=%1:h=%2:x=%3:y=%3")
                          .arg(canvas.width())
                          .arg(canvas.height())
                          .arg(Margin * m_pitch)
                          .toStdString();
    m_enlarge.emplace(*makeSmall(), enlargingFilter(enlarged, scaler) + crop);
}

ffmpeg::Frame BlurredBackground::makeSmall() const
{
    auto small = ffmpeg::makeFrame();
    small->format = AV_PIX_FMT_YUV444P16;
    small->width = m_size.width();
    small->height = m_size.height();
    tagAsBt709(*small);
    ffmpeg::checked(av_frame_get_buffer(small.get(), 0));
    return small;
}

ffmpeg::Frame BlurredBackground::draw(const AVFrame& picture)
{
    for (std::size_t i = 0; i < m_blurred.size(); ++i) {
        m_samplers[std::min<std::size_t>(i, 1)].sample({picture.data[i], picture.linesize[i]}, m_sampled);
        convolve(m_sampled, m_taps, m_blurred[i]);
    }
    const auto small = makeSmall();
    writeSmall(*small);
    m_enlarge->push(*small);
    auto canvas = m_enlarge->tryPull();
    if (!canvas) {
        throw ffmpeg::FfmpegError(AVERROR_BUG);
    }
    ffmpeg::checked(av_frame_make_writable(canvas.get()));
    return canvas;
}

void BlurredBackground::writeSmall(AVFrame& small) const
{
    const auto brightness = static_cast<float>(m_look.brightness);
    const auto saturation = static_cast<float>(m_look.saturation);
    for (int y = 0; y < m_size.height(); ++y) {
        std::array<std::uint16_t*, 3> rows{};
        for (std::size_t i = 0; i < rows.size(); ++i) {
            rows[i] = reinterpret_cast<std::uint16_t*>(small.data[i] + std::ptrdiff_t{y} * small.linesize[i]);
        }
        for (int x = 0; x < m_size.width(); ++x) {
            const auto color = limited({(m_blurred[0].row(y)[x] - 16) / 219 + brightness,
                                        (m_blurred[1].row(y)[x] - 128) / 224 * saturation,
                                        (m_blurred[2].row(y)[x] - 128) / 224 * saturation});
            rows[0][x] = storedValue(color.luma, 219, 16);
            rows[1][x] = storedValue(color.blue, 224, 128);
            rows[2][x] = storedValue(color.red, 224, 128);
        }
    }
}

} // namespace quelto
