// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/title/TitleText.h"

#include <QFont>
#include <QPainter>
#include <QRegularExpression>

namespace quelto {

namespace {

/// The line is laid out at this size and scaled, because fonts only have whole sizes.
constexpr int LayoutFontSize = 100;
/// Longer titles are cut: on any canvas their letters would be smaller than can be read. Bounds memory.
constexpr qsizetype MaxLength = 4096;
/// No line is as long. Larger widths overflow the layout's fixed-point numbers.
constexpr double UnlimitedWidth = 16'000'000;

QFont titleFont()
{
    QFont font(QStringLiteral("sans-serif"));
    font.setStyleHint(QFont::SansSerif);
    font.setBold(true);
    font.setPixelSize(LayoutFontSize);
    // Hinting fits letters to the pixels of the layout's size, not of the size that is drawn.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QString singleLine(const QString& title)
{
    static const QRegularExpression lineBreak(QStringLiteral("\\R"));
    return title.left(MaxLength).replace(lineBreak, QStringLiteral(" "));
}

} // namespace

TitleText::TitleText(const QString& title, double fontSize)
    : m_layout(singleLine(title), titleFont())
    , m_scale(fontSize / LayoutFontSize)
{
    m_layout.beginLayout();
    if (auto line = m_layout.createLine(); line.isValid()) {
        line.setLineWidth(UnlimitedWidth);
        m_layoutSize = {line.naturalTextWidth(), line.height()};
    }
    m_layout.endLayout();
}

QSizeF TitleText::size() const
{
    return m_layoutSize * m_scale;
}

void TitleText::draw(QPainter& painter, const QRectF& rect) const
{
    if (m_layoutSize.isEmpty()) {
        return;
    }
    painter.save();
    painter.translate(rect.topLeft());
    painter.scale(rect.width() / m_layoutSize.width(), rect.height() / m_layoutSize.height());
    painter.setPen(Qt::white);
    m_layout.draw(&painter, {});
    painter.restore();
}

} // namespace quelto
