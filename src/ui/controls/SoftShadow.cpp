// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/SoftShadow.h"

#include <QPainter>

#include <cmath>

namespace quelto {

namespace {

/// From a rounded box that is centred on the origin; negative inside.
double distanceToBox(QPointF point, QSizeF box, double cornerRadius)
{
    const auto x = std::abs(point.x()) - box.width() / 2 + cornerRadius;
    const auto y = std::abs(point.y()) - box.height() / 2 + cornerRadius;
    return std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0) - cornerRadius;
}

/// A smooth step from 1 at -radius to 0 at radius.
double strengthAt(double distance, double radius)
{
    const auto t = std::clamp((radius - distance) / (2 * radius), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

} // namespace

QImage softShadow(const ShadowShape& shape, double scale)
{
    const auto side = [&](double boxSide) { return static_cast<int>(std::ceil((boxSide + 2 * shape.radius) * scale)); };
    QImage image(side(shape.box.width()), side(shape.box.height()), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    if (shape.radius <= 0 || shape.box.isEmpty()) {
        return image;
    }
    const auto cornerRadius = std::clamp(shape.cornerRadius, 0.0, std::min(shape.box.width(), shape.box.height()) / 2);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QPointF fromCenter((x + 0.5) / scale - shape.radius - shape.box.width() / 2,
                                     (y + 0.5) / scale - shape.radius - shape.box.height() / 2);
            const auto alpha =
                shape.color.alphaF() * strengthAt(distanceToBox(fromCenter, shape.box, cornerRadius), shape.radius);
            line[x] = qPremultiply(qRgba(shape.color.red(), shape.color.green(), shape.color.blue(),
                                         static_cast<int>(std::lround(alpha * 255))));
        }
    }
    return image;
}

SoftShadow::SoftShadow(QQuickItem* parent)
    : QQuickPaintedItem(parent)
{
}

template <typename Value> void SoftShadow::assign(Value& member, const Value& value)
{
    if (member != value) {
        member = value;
        update();
        Q_EMIT changed();
    }
}

void SoftShadow::setRadius(double radius)
{
    assign(m_radius, radius);
}

void SoftShadow::setCornerRadius(double cornerRadius)
{
    assign(m_cornerRadius, cornerRadius);
}

void SoftShadow::setColor(const QColor& color)
{
    assign(m_color, color);
}

void SoftShadow::paint(QPainter* painter)
{
    const ShadowShape shape{.box = size() - QSizeF(2 * m_radius, 2 * m_radius),
                            .cornerRadius = m_cornerRadius,
                            .radius = m_radius,
                            .color = m_color};
    painter->drawImage(QPointF(0, 0), softShadow(shape, painter->device()->devicePixelRatioF()));
}

} // namespace quelto
