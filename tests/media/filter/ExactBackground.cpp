// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/filter/ExactBackground.h"

#include "tests/media/filter/TestFrames.h"

#include <random>

namespace quelto::test {

namespace {

/// A direction of a plane: the source's sample i is at `first + i × step` of the canvas.
struct Samples {
    double first = 0;
    double step = 1;
    int count = 0;
};

using Weights = std::vector<std::pair<int, double>>;

/// The weights of the samples for a point of the canvas. Samples outside repeat the last one.
Weights gaussianAround(double point, const Samples& samples, double sigma)
{
    Weights weights;
    double sum = 0;
    const auto reach = 5 * sigma;
    const int begin = int(std::floor((point - reach - samples.first) / samples.step));
    const int end = int(std::ceil((point + reach - samples.first) / samples.step));
    for (int i = begin; i <= end; ++i) {
        const auto distance = (samples.first + i * samples.step - point) / sigma;
        weights.emplace_back(std::clamp(i, 0, samples.count - 1), std::exp(-0.5 * distance * distance));
        sum += weights.back().second;
    }
    for (auto& weight : weights) {
        weight.second /= sum;
    }
    return weights;
}

std::vector<double> blurred(const AVFrame& source, int component, std::array<Samples, 2> samples, double sigma,
                            const std::vector<double>& xs, const std::vector<double>& ys)
{
    const auto [sampleX, sampleY] = samples;
    std::vector<double> rows(ys.size() * std::size_t(sampleX.count));
    for (std::size_t y = 0; y < ys.size(); ++y) {
        auto* row = rows.data() + y * std::size_t(sampleX.count);
        for (const auto& [index, weight] : gaussianAround(ys[y], sampleY, sigma)) {
            const auto* line = source.data[component] + std::ptrdiff_t{index} * source.linesize[component];
            for (int x = 0; x < sampleX.count; ++x) {
                row[x] += weight * line[x];
            }
        }
    }
    std::vector<double> result(ys.size() * xs.size());
    for (std::size_t x = 0; x < xs.size(); ++x) {
        const auto weights = gaussianAround(xs[x], sampleX, sigma);
        for (std::size_t y = 0; y < ys.size(); ++y) {
            for (const auto& [index, weight] : weights) {
                result[y * xs.size() + x] += weight * rows[y * std::size_t(sampleX.count) + std::size_t(index)];
            }
        }
    }
    return result;
}

/// Applies brightness and saturation in RGB, of which 0 and 1 are the limits.
std::array<double, 3> adjusted(std::array<double, 3> color, const FrameLayout::Background& look)
{
    const double luma = (color[0] - 16) / 219;
    const double blueDifference = (color[1] - 128) / 224;
    const double redDifference = (color[2] - 128) / 224;
    const double red = luma + 1.5748 * redDifference;
    const double blue = luma + 1.8556 * blueDifference;
    const double green = (luma - 0.2126 * red - 0.0722 * blue) / 0.7152;
    const auto adjust = [&look, luma](double value) {
        return std::clamp((value - luma) * look.saturation + luma + look.brightness, 0.0, 1.0);
    };
    const double newLuma = 0.2126 * adjust(red) + 0.7152 * adjust(green) + 0.0722 * adjust(blue);
    return {16 + 219 * newLuma, 128 + 224 * (adjust(blue) - newLuma) / 1.8556,
            128 + 224 * (adjust(red) - newLuma) / 1.5748};
}

std::vector<double> points(int count, double first, double step)
{
    std::vector<double> result(std::size_t(count), first);
    for (int i = 0; i < count; ++i) {
        result[std::size_t(i)] += i * step;
    }
    return result;
}

/// The positions of a component's pixels on a canvas or in a picture: chroma is placed left and between two rows.
struct Sites {
    double x = 0.5;
    double y = 0.5;
    int step = 1;
};

Sites sitesOf(int component)
{
    return component == 0 ? Sites{} : Sites{0.5, 1, 2};
}

} // namespace

ExactBackground::ExactBackground(const AVFrame& source, const FrameLayout& layout, int firstRow, int rows)
    : m_firstRow(firstRow)
    , m_size(layout.canvas.width(), rows)
{
    const auto& look = *layout.background;
    const double scaleX = look.rect.width() / source.width;
    const double scaleY = look.rect.height() / source.height;
    for (int component = 0; component < 3; ++component) {
        const auto [siteX, siteY, step] = sitesOf(component);
        const auto xs = points(m_size.width() / step, siteX, step);
        const auto ys = points(rows / step, firstRow + siteY, step);
        std::array<std::vector<double>, 3> planes;
        for (int i = 0; i < 3; ++i) {
            const auto [sampleX, sampleY, sampleStep] = sitesOf(i);
            const Samples x{look.rect.left() + sampleX * scaleX, sampleStep * scaleX, source.width / sampleStep};
            const Samples y{look.rect.top() + sampleY * scaleY, sampleStep * scaleY, source.height / sampleStep};
            planes[std::size_t(i)] = blurred(source, i, {x, y}, look.sigma, xs, ys);
        }
        auto& result = m_planes[std::size_t(component)];
        for (std::size_t i = 0; i < planes[0].size(); ++i) {
            result.push_back(adjusted({planes[0][i], planes[1][i], planes[2][i]}, look)[std::size_t(component)]);
        }
    }
}

double ExactBackground::valueAt(int component, int x, int y) const
{
    const int step = sitesOf(component).step;
    const auto index = (y - m_firstRow / step) * (m_size.width() / step) + x;
    return m_planes.at(std::size_t(component)).at(std::size_t(index));
}

Difference difference(const AVFrame& picture, const ExactBackground& exact, int component, int firstRow, int rows)
{
    const int step = sitesOf(component).step;
    double sum = 0;
    Difference result;
    for (int y = firstRow / step; y < (firstRow + rows) / step; ++y) {
        const auto* line = picture.data[component] + std::ptrdiff_t{y} * picture.linesize[component];
        for (int x = 0; x < picture.width / step; ++x) {
            const auto error = std::abs(line[x] - exact.valueAt(component, x, y));
            result.largest = std::max(result.largest, error);
            sum += error * error;
        }
    }
    const auto count = (picture.width / step) * (rows / step);
    result.psnr = 10 * std::log10(255.0 * 255.0 * count / sum);
    return result;
}

ffmpeg::Frame naturalPicture(QSize size)
{
    auto frame = makePicture(size);
    std::minstd_rand random(5);
    const auto noise = [&random] { return double(random()) / std::minstd_rand::max() - 0.5; };
    for (int component = 0; component < 3; ++component) {
        const int step = sitesOf(component).step;
        const int width = size.width() / step;
        const int height = size.height() / step;
        std::vector<double> sum(std::size_t(width) * std::size_t(height), component == 0 ? 110.0 : 128.0);
        for (int cells = 2; cells <= 256; cells *= 2) {
            std::vector<double> grid(std::size_t(cells + 2) * std::size_t(cells + 2));
            std::ranges::generate(grid, noise);
            const double strength = (component == 0 ? 220.0 : 130.0) / std::pow(cells, 0.7);
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    const double gridX = double(x) * cells / width;
                    const double gridY = double(y) * cells / height;
                    const auto left = int(gridX);
                    const auto top = int(gridY);
                    const auto value = [&grid, cells](int column, int row) {
                        return grid[std::size_t(row * (cells + 2) + column)];
                    };
                    const double upper = std::lerp(value(left, top), value(left + 1, top), gridX - left);
                    const double lower = std::lerp(value(left, top + 1), value(left + 1, top + 1), gridX - left);
                    sum[std::size_t(y * width + x)] += strength * std::lerp(upper, lower, gridY - top);
                }
            }
        }
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                frame->data[component][y * frame->linesize[component] + x] =
                    std::uint8_t(std::clamp(sum[std::size_t(y * width + x)], 16.0, 235.0));
            }
        }
    }
    return frame;
}

ffmpeg::Frame chartPicture(QSize size)
{
    auto frame = plainPicture(size, AV_PIX_FMT_YUV420P, {16, 128, 128});
    const std::array<std::array<int, 3>, 5> colors{
        {{235, 128, 128}, {63, 102, 240}, {32, 240, 118}, {173, 42, 26}, {16, 128, 128}}};
    std::minstd_rand random(3);
    for (int i = 0; i < 300; ++i) {
        const int width = 2 + int(random() % unsigned(size.width() / 6)) / (1 + i % 5);
        const int height = 2 + int(random() % unsigned(size.height() / 4)) / (1 + i % 3);
        const QRect rect(int(random() % unsigned(size.width())), int(random() % unsigned(size.height())), width,
                         height);
        fill(*frame, rect & QRect({}, size), colors[std::size_t(i) % colors.size()]);
    }
    return frame;
}

ffmpeg::Frame pillarPicture(QSize size)
{
    const int width = size.height() * 9 / 16;
    auto frame = plainPicture(size, AV_PIX_FMT_YUV420P, {235, 128, 128});
    fill(*frame, {(size.width() - width) / 2, 0, width, size.height()}, {63, 102, 240});
    return frame;
}

ffmpeg::Frame darkGradient(QSize size)
{
    auto frame = plainPicture(size, AV_PIX_FMT_YUV420P, {16, 128, 128});
    for (int y = 0; y < size.height(); ++y) {
        // Dithered, as a game draws it.
        for (int x = 0; x < size.width(); ++x) {
            const double level = 45 + 20.0 * y / size.height() + ((x * 7 + y * 13) % 16) / 16.0;
            frame->data[0][y * frame->linesize[0] + x] = std::uint8_t(level);
        }
    }
    return frame;
}

} // namespace quelto::test
