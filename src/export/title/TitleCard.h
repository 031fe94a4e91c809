// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPointF>
#include <QSize>
#include <QString>

#include <optional>

namespace quelto {

/// The card with the title that stands over the start of a video: white text on a dark plate with an accent bar.
struct TitleCard {
    /// Premultiplied; no larger than the canvas.
    QImage image;
    /// Where its top left corner is on the canvas. Units: whole pixels, from the canvas's top left.
    QPointF position;
};

/// Nothing for a blank title. The text shrinks as far as it needs to be drawn whole.
///
/// Thread: any. Needs a QGuiApplication.
std::optional<TitleCard> drawTitleCard(const QString& title, QSize canvas);

} // namespace quelto
