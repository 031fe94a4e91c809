// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/ffmpeg/Handles.h"

#include <QRect>
#include <QSize>

namespace quelto::test {

/// An empty picture, tagged as limited BT.709.
ffmpeg::Frame makePicture(QSize size, AVPixelFormat format = AV_PIX_FMT_YUV420P);

/// A picture of one colour: one value for each component of the format, in its own depth.
ffmpeg::Frame plainPicture(QSize size, AVPixelFormat format, std::array<int, 3> values);

/// Fills a rectangle of pixels of the picture.
void fill(AVFrame& frame, QRect rect, std::array<int, 3> values);

/// The value of a component at a pixel of the picture; chroma planes may have fewer pixels.
int valueAt(const AVFrame& frame, int component, QPoint pixel);
std::array<int, 3> pixelAt(const AVFrame& frame, QPoint pixel);

/// Between the pixels of two yuv420p pictures of one size.
int largestChange(const AVFrame& first, const AVFrame& second);

/// A picture that FFmpeg's source filters generate.
ffmpeg::Frame generatedPicture(const std::string& description);

} // namespace quelto::test
