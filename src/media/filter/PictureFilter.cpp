// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/filter/PictureFilter.h"

#include "media/filter/DisplayTransform.h"
#include "media/filter/FilterGraph.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace quelto {

namespace {

/// The luminance of white in SDR content that is shown as HDR. Units: cd/m².
constexpr double ReferenceWhite = 203;
/// The brightest highlight that keeps its shape. Most HDR content is made for this. Units: cd/m².
constexpr double PeakWhite = 1000;
/// Below this part of the reference white nothing changes; highlights share the rest.
constexpr double HighlightStart = 0.6;

constexpr FrameColor Bt709;
constexpr FrameColor LinearRgb{.matrix = AVCOL_SPC_RGB, .isFullRange = true, .transfer = AVCOL_TRC_LINEAR};

const AVPixFmtDescriptor& descriptorOf(AVPixelFormat format)
{
    static constexpr AVPixFmtDescriptor Unknown{};
    const auto* found = av_pix_fmt_desc_get(format);
    return found != nullptr ? *found : Unknown;
}

int depthOf(AVPixelFormat format)
{
    return descriptorOf(format).comp[0].depth;
}

QSize atLeast(QSize size, int side)
{
    return size.expandedTo({side, side});
}

QString sizeText(QSize size)
{
    return QStringLiteral("w=%1:h=%2").arg(size.width()).arg(size.height());
}

QString formatFilter(const char* format)
{
    return QStringLiteral("format=") + QLatin1String(format);
}

QString turned(const QTransform& display)
{
    if (isTransposed(display)) {
        const bool isXReversed = display.m21() < 0;
        const bool isYReversed = display.m12() < 0;
        const int direction = isXReversed ? (isYReversed ? 3 : 1) : (isYReversed ? 2 : 0);
        return QStringLiteral("transpose=%1").arg(direction);
    }
    QStringList flips;
    if (display.m11() < 0) {
        flips << QStringLiteral("hflip");
    }
    if (display.m22() < 0) {
        flips << QStringLiteral("vflip");
    }
    return flips.join(u',');
}

QString cropped(QRect rect)
{
    return QStringLiteral("crop=w=%1:h=%2:x=%3:y=%4:exact=1")
        .arg(rect.width())
        .arg(rect.height())
        .arg(rect.x())
        .arg(rect.y());
}

/// Numbers of zimg's options are those of FFmpeg's enumerations. Says what the input is, because zimg refuses to guess.
QString zimgColors(const FrameColor& from, const FrameColor& to)
{
    const auto end = [](const FrameColor& color, const QString& suffix) {
        return QStringLiteral("matrix%1=%2:range%1=%3:primaries%1=%4:transfer%1=%5")
            .arg(suffix)
            .arg(color.matrix)
            .arg(color.isFullRange ? 1 : 0)
            .arg(color.primaries)
            .arg(color.transfer);
    };
    // Approximated, the brightness of HLG would change each component by itself, and colours would become too vivid.
    const bool isApproximated = from.transfer != AVCOL_TRC_ARIB_STD_B67;
    return end(from, QStringLiteral("in")) + u':' + end(to, {}) +
        QStringLiteral(":npl=%1:agamma=%2").arg(ReferenceWhite).arg(isApproximated ? 1 : 0);
}

QString zimgScaled(QSize size)
{
    return QStringLiteral("zscale=") + sizeText(size) + QStringLiteral(":filter=bicubic:param_a=0:param_b=0.5");
}

QString zimgConverted(const FrameColor& from, const FrameColor& to)
{
    return QStringLiteral("zscale=") + zimgColors(from, to);
}

/// Chroma of BT.709 is placed at the left; ordered dithering repeats the same pattern in each picture.
QString last(bool hasMoreDepth)
{
    return QStringLiteral(":chromal=left:dither=") +
        (hasMoreDepth ? QStringLiteral("ordered") : QStringLiteral("none")) + QStringLiteral(",format=yuv420p");
}

/// From any HDR to linear light, of which the brightest colour keeps its hue.
QStringList toneMapped(const FrameColor& color)
{
    return {zimgConverted(color, LinearRgb), formatFilter("gbrpf32le"),
            QStringLiteral("tonemap=tonemap=mobius:param=%1:desat=0:peak=%2")
                .arg(HighlightStart)
                .arg(PeakWhite / ReferenceWhite)};
}

QStringList zimgHdr(const PictureSteps& steps)
{
    const auto area = [](QSize size) { return std::int64_t{size.width()} * size.height(); };
    const bool isSmaller = area(steps.target) < area(steps.source.size());
    QStringList filters;
    if (isSmaller) {
        filters << zimgScaled(steps.target);
    }
    filters << toneMapped(steps.color);
    if (isSmaller || steps.target == steps.source.size()) {
        return filters << zimgConverted(LinearRgb, Bt709) + last(true);
    }
    filters << zimgConverted(LinearRgb, Bt709) << formatFilter("yuv420p10le");
    return filters << zimgScaled(steps.target) + last(true);
}

QStringList zimgFilters(const PictureSteps& steps)
{
    QStringList filters;
    if (steps.color.matrix == AVCOL_SPC_RGB) {
        // The only RGB that zimg reads is planar.
        filters << formatFilter(depthOf(steps.format) > 8 ? "gbrp16le" : "gbrp");
    }
    if (steps.color.isHdr()) {
        return filters + zimgHdr(steps);
    }
    return filters << zimgScaled(steps.target) + u':' + zimgColors(steps.color, Bt709) +
        last(depthOf(steps.format) > 8);
}

QStringList swscaleFilters(const PictureSteps& steps)
{
    const bool isRgb = steps.color.matrix == AVCOL_SPC_RGB;
    const auto input = QStringLiteral(":in_color_matrix=%1:in_range=%2")
                           .arg(QLatin1String(av_color_space_name(steps.color.matrix)),
                                steps.color.isFullRange ? QStringLiteral("full") : QStringLiteral("limited"));
    return {QStringLiteral("scale=") + sizeText(steps.target) + (isRgb ? QString() : input) +
                QStringLiteral(":out_color_matrix=bt709:out_range=limited:flags=bicubic+accurate_rnd+full_chroma_int"),
            formatFilter("yuv420p")};
}

bool isConverted(const PictureSteps& steps)
{
    return steps.format != AV_PIX_FMT_YUV420P || steps.color != Bt709 || steps.source.size() != steps.target;
}

} // namespace

PictureScaler availableScaler()
{
    static const bool hasZimg = hasFilter("zscale") && hasFilter("tonemap");
    return hasZimg ? PictureScaler::Zimg : PictureScaler::Swscale;
}

std::string pictureFilter(const PictureSteps& steps, PictureScaler scaler)
{
    QStringList filters;
    const auto enlarged = atLeast(steps.size, sourceAlignment(steps.format));
    if (enlarged != steps.size) {
        filters << QStringLiteral("scale=") + sizeText(enlarged);
    }
    filters << turned(steps.display);
    const auto picture = isTransposed(steps.display) ? enlarged.transposed() : enlarged;
    if (steps.source != QRect({}, picture)) {
        filters << cropped(steps.source);
    }
    if (isConverted(steps)) {
        filters << (scaler == PictureScaler::Zimg ? zimgFilters(steps) : swscaleFilters(steps));
    }
    filters.removeAll({});
    return filters.join(u',').toStdString();
}

std::string enlargingFilter(QSize size, PictureScaler scaler)
{
    if (scaler == PictureScaler::Zimg) {
        return (zimgScaled(size) + last(true)).toStdString();
    }
    return (QStringLiteral("scale=") + sizeText(size) +
            QStringLiteral(":flags=bicubic+accurate_rnd:sws_dither=bayer,format=yuv420p"))
        .toStdString();
}

int sourceAlignment(AVPixelFormat format)
{
    const auto& descriptor = descriptorOf(format);
    return std::max(2, 1 << std::max(descriptor.log2_chroma_w, descriptor.log2_chroma_h));
}

} // namespace quelto
