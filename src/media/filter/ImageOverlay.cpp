// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/ImageOverlay.h"

#include "media/ffmpeg/FfmpegError.h"

namespace quelto {

namespace {

constexpr std::uint32_t FullAlpha = 255;
constexpr std::uint32_t FullOpacity = 256;

double lumaOf(QRgb pixel)
{
    return 0.2126 * qRed(pixel) + 0.7152 * qGreen(pixel) + 0.0722 * qBlue(pixel);
}

/// A component of limited range, multiplied by the pixel's alpha, as its colours are.
double premultiplied(QRgb pixel, int component)
{
    const auto luma = lumaOf(pixel);
    switch (component) {
    case 0:
        return 16 * qAlpha(pixel) + 219 * luma;
    case 1:
        return 128 * qAlpha(pixel) + 224 * (qBlue(pixel) - luma) / 1.8556;
    default:
        return 128 * qAlpha(pixel) + 224 * (qRed(pixel) - luma) / 1.5748;
    }
}

/// Pixels outside the image are transparent.
QRgb pixelAt(const QImage& image, int x, int y)
{
    return image.valid(x, y) ? reinterpret_cast<const QRgb*>(image.constScanLine(y))[x] : 0;
}

int halfDown(int value)
{
    return value >> 1;
}

int halfUp(int value)
{
    return (value + 1) >> 1;
}

} // namespace

ImageOverlay::ImageOverlay(const QImage& image, QPoint position)
{
    const auto pixels = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    m_layers = {lumaLayer(pixels, position), chromaLayer(pixels, position, 1), chromaLayer(pixels, position, 2)};
}

ImageOverlay::Layer ImageOverlay::lumaLayer(const QImage& image, QPoint position)
{
    Layer layer{.rect = QRect(position, image.size()), .alpha = {}, .value = {}};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto pixel = pixelAt(image, x, y);
            layer.alpha.push_back(static_cast<std::uint8_t>(qAlpha(pixel)));
            layer.value.push_back(static_cast<std::uint16_t>(std::lround(premultiplied(pixel, 0))));
        }
    }
    return layer;
}

ImageOverlay::Layer ImageOverlay::chromaLayer(const QImage& image, QPoint position, int component)
{
    const QPoint first(halfDown(position.x()), halfDown(position.y()));
    const QPoint end(halfUp(position.x() + image.width()), halfUp(position.y() + image.height()));
    Layer layer{.rect = QRect(first, QSize(end.x() - first.x(), end.y() - first.y())), .alpha = {}, .value = {}};
    for (int y = first.y(); y < end.y(); ++y) {
        for (int x = first.x(); x < end.x(); ++x) {
            double alpha = 0;
            double value = 0;
            for (const auto& [right, down] : {std::pair(0, 0), std::pair(1, 0), std::pair(0, 1), std::pair(1, 1)}) {
                const auto pixel = pixelAt(image, 2 * x + right - position.x(), 2 * y + down - position.y());
                alpha += qAlpha(pixel) / 4.0;
                value += premultiplied(pixel, component) / 4;
            }
            layer.alpha.push_back(static_cast<std::uint8_t>(std::lround(alpha)));
            layer.value.push_back(static_cast<std::uint16_t>(std::lround(value)));
        }
    }
    return layer;
}

void ImageOverlay::drawOn(AVFrame& frame, double opacity) const
{
    const auto share = static_cast<std::uint32_t>(std::lround(std::clamp(opacity, 0.0, 1.0) * FullOpacity));
    if (share == 0) {
        return;
    }
    ffmpeg::checked(av_frame_make_writable(&frame));
    for (std::size_t i = 0; i < m_layers.size(); ++i) {
        const QSize plane =
            i == 0 ? QSize(frame.width, frame.height) : QSize(halfUp(frame.width), halfUp(frame.height));
        blend(m_layers[i], frame.data[i], frame.linesize[i], plane, share);
    }
}

void ImageOverlay::blend(const Layer& layer, std::uint8_t* data, int stride, QSize plane, std::uint32_t opacity)
{
    constexpr auto Whole = FullAlpha * FullOpacity;
    const auto visible = layer.rect & QRect({}, plane);
    for (int y = visible.top(); y <= visible.bottom(); ++y) {
        auto* row = data + std::ptrdiff_t{y} * stride;
        const auto offset = std::ptrdiff_t{y - layer.rect.top()} * layer.rect.width() - layer.rect.left();
        for (int x = visible.left(); x <= visible.right(); ++x) {
            const auto index = static_cast<std::size_t>(offset + x);
            const auto sum = row[x] * (Whole - layer.alpha[index] * opacity) + layer.value[index] * opacity;
            row[x] = static_cast<std::uint8_t>((sum + Whole / 2) / Whole);
        }
    }
}

} // namespace quelto
