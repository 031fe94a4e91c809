// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/DecodedPictures.h"

#include "tests/media/probe/Probe.h"

#include <QRegularExpression>

#include <stdexcept>

namespace quelto::test {

namespace {

CommandResult ffmpeg(const QStringList& arguments)
{
    auto result =
        run(QStringLiteral("ffmpeg"),
            QStringList{QStringLiteral("-nostdin"), QStringLiteral("-hide_banner"), QStringLiteral("-nostats")} +
                arguments);
    if (result.exitCode != 0) {
        throw std::runtime_error(result.errors.toStdString());
    }
    return result;
}

double numberAfter(const QString& text, const QString& label)
{
    const QRegularExpression pattern(label + QStringLiteral("([0-9.]+|inf)"));
    const auto match = pattern.match(text);
    if (!match.hasMatch()) {
        throw std::runtime_error("no result in ffmpeg's output: " + text.toStdString());
    }
    return match.captured(1).toDouble();
}

} // namespace

std::vector<DecodedPicture> decodePictures(const QString& path, const QRect& rect, const QString& filters,
                                           const QString& format)
{
    QStringList chain;
    // Before the crop, which is exact only without subsampled colours.
    chain.push_back(format == u"gray" ? QStringLiteral("format=gray") : QStringLiteral("format=rgb24"));
    if (!rect.isEmpty()) {
        chain.push_back(QStringLiteral("crop=%1:%2:%3:%4:exact=1")
                            .arg(rect.width())
                            .arg(rect.height())
                            .arg(rect.x())
                            .arg(rect.y()));
    }
    if (!filters.isEmpty()) {
        chain.push_back(filters);
    }
    chain += {QStringLiteral("format=") + format, QStringLiteral("showinfo=checksum=0")};
    const auto result =
        ffmpeg({QStringLiteral("-copyts"), QStringLiteral("-i"), path, QStringLiteral("-map"), QStringLiteral("0:v:0"),
                QStringLiteral("-vf"), chain.join(u','), QStringLiteral("-fps_mode"), QStringLiteral("passthrough"),
                QStringLiteral("-f"), QStringLiteral("rawvideo"), QStringLiteral("-")});
    const auto log = QString::fromUtf8(result.errors);
    static const QRegularExpression timeBase(QStringLiteral("config in time_base: (\\d+)/(\\d+)"));
    static const QRegularExpression frame(QStringLiteral("\\] n: *\\d+ pts: *(-?\\d+) "));
    const auto base = timeBase.match(log);
    std::vector<DecodedPicture> pictures;
    for (auto matches = frame.globalMatch(log); matches.hasNext();) {
        pictures.push_back({.time = matches.next().captured(1).toDouble() * base.captured(1).toDouble() /
                                base.captured(2).toDouble()});
    }
    if (pictures.empty()) {
        return pictures;
    }
    const auto size = result.output.size() / static_cast<qsizetype>(pictures.size());
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        pictures[i].bytes = result.output.mid(static_cast<qsizetype>(i) * size, size);
    }
    return pictures;
}

std::vector<TimedColor> meanColors(const QString& path, const QRect& rect)
{
    std::vector<TimedColor> colors;
    for (const auto& picture : decodePictures(path, rect, {}, QStringLiteral("rgb24"))) {
        std::array<double, 3> sums{};
        for (qsizetype i = 0; i < picture.bytes.size(); ++i) {
            sums[static_cast<std::size_t>(i % 3)] += static_cast<std::uint8_t>(picture.bytes[i]);
        }
        const auto mean = [&](std::size_t channel) {
            return static_cast<int>(std::lround(sums[channel] / (static_cast<double>(picture.bytes.size()) / 3)));
        };
        colors.push_back({.time = picture.time, .color = QColor(mean(0), mean(1), mean(2))});
    }
    return colors;
}

QColor colorAt(const std::vector<TimedColor>& colors, double time)
{
    QColor color;
    for (const auto& timed : colors) {
        constexpr double Rounding = 1e-4;
        if (timed.time <= time + Rounding) {
            color = timed.color;
        }
    }
    return color;
}

Likeness likenessOf(const QString& path, const QString& original)
{
    const auto result =
        ffmpeg({QStringLiteral("-i"), path, QStringLiteral("-i"), original, QStringLiteral("-lavfi"),
                QStringLiteral("[0:v]split[a][b];[1:v]split[c][d];[a][c]psnr[e];[b][d]ssim[f]"), QStringLiteral("-map"),
                QStringLiteral("[e]"), QStringLiteral("-map"), QStringLiteral("[f]"), QStringLiteral("-f"),
                QStringLiteral("null"), QStringLiteral("-")});
    const auto log = QString::fromUtf8(result.errors);
    return {.psnr = numberAfter(log, QStringLiteral("PSNR y:")), .ssim = numberAfter(log, QStringLiteral("SSIM Y:"))};
}

} // namespace quelto::test
