// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTextLayout>

class QPainter;

namespace quelto {

/// A title laid out as one line in the desktop's sans-serif font, bold. Line breaks become spaces.
///
/// Thread: any. Needs a QGuiApplication.
class TitleText {
public:
    /// Units: pixels.
    TitleText(const QString& title, double fontSize);

    /// Units: pixels.
    QSizeF size() const;
    /// Draws the text white, also emoji, into this rectangle.
    void draw(QPainter& painter, const QRectF& rect) const;
    /// The glyphs, in order.
    QList<QGlyphRun> glyphs() const { return m_layout.glyphRuns(); }

private:
    QTextLayout m_layout;
    QSizeF m_layoutSize;
    double m_scale;
};

} // namespace quelto
