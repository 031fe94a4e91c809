// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/title/TitleCard.h"

#include "export/rules/TitleGeometry.h"
#include "export/title/TitleText.h"

#include <QPainter>

namespace quelto {

namespace {

constexpr QColor PlateColor(0, 0, 0, 153);
constexpr QColor BarColor(255, 89, 31);

QImage transparentImage(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The text alone. Emoji have colours of their own; what counts is their shape.
QImage whiteText(const TitleText& text, const QRectF& rect, QSize size)
{
    auto image = transparentImage(size);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    text.draw(painter, rect);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), Qt::white);
    return image;
}

} // namespace

std::optional<TitleCard> drawTitleCard(const QString& title, QSize canvas)
{
    const TitleText text(title, titleFontSize(canvas));
    if (title.trimmed().isEmpty() || text.size().isEmpty()) {
        return std::nullopt;
    }
    const auto geometry = titleGeometry(canvas, text.size());
    const auto area = geometry.plate.toAlignedRect().intersected({QPoint(0, 0), canvas});
    if (area.isEmpty()) {
        return std::nullopt;
    }
    TitleCard card{.image = transparentImage(area.size()), .position = area.topLeft()};
    QPainter painter(&card.image);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto onCard = [&card](const QRectF& rect) { return rect.translated(-card.position); };
    painter.fillRect(onCard(geometry.plate), PlateColor);
    painter.drawImage(QPoint(0, 0), whiteText(text, onCard(geometry.text), area.size()));
    painter.fillRect(onCard(geometry.bar), BarColor);
    painter.end();
    return card;
}

} // namespace quelto
