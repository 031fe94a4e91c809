// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QColor>
#include <QRect>
#include <QString>

#include <vector>

namespace quelto::test {

/// A frame as ffmpeg decodes it.
struct DecodedPicture {
    /// On the movie's timeline. Units: seconds.
    double time = 0;
    QByteArray bytes;
};

/// Decodes all frames of a clip, turned as a player shows them: the rectangle, by default everything, then the filters,
/// then FFmpeg's pixel format. Errors: std::runtime_error with ffmpeg's text.
std::vector<DecodedPicture> decodePictures(const QString& path, const QRect& rect, const QString& filters,
                                           const QString& format);

struct TimedColor {
    double time = 0;
    QColor color;
};

/// The mean colour of the rectangle in each frame.
std::vector<TimedColor> meanColors(const QString& path, const QRect& rect);

/// The colour that is shown at a time: that of the last frame that is not later.
QColor colorAt(const std::vector<TimedColor>& colors, double time);

/// How alike the pictures of two clips are, frame by frame. Errors: std::runtime_error with ffmpeg's text.
struct Likeness {
    /// Of the luma. Units: dB; infinity for equal pictures.
    double psnr = 0;
    /// Of the luma. 1 for equal pictures.
    double ssim = 0;
};
Likeness likenessOf(const QString& path, const QString& original);

} // namespace quelto::test
