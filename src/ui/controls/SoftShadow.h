// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// The geometry and colour of a soft shadow.
struct ShadowShape {
    /// The size of the box that casts the shadow.
    QSizeF box;
    double cornerRadius = 0;
    /// The shadow fades from full strength at this distance inside the edge to nothing at this distance outside.
    double radius = 0;
    QColor color;
};

/// The shadow as an image, larger than the box by the radius on each side.
///
/// Units: logical pixels; the image has `scale` device pixels for each.
QImage softShadow(const ShadowShape& shape, double scale);

/// A soft shadow or glow that needs no GPU. The item covers the box and the radius around it; Shadow.qml places it.
///
/// Thread: main; Qt's renderer calls paint().
class SoftShadow : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY changed)
    Q_PROPERTY(double cornerRadius READ cornerRadius WRITE setCornerRadius NOTIFY changed)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)

public:
    explicit SoftShadow(QQuickItem* parent = nullptr);

    double radius() const { return m_radius; }
    void setRadius(double radius);
    double cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(double cornerRadius);
    QColor color() const { return m_color; }
    void setColor(const QColor& color);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    template <typename Value> void assign(Value& member, const Value& value);

    double m_radius = 0;
    double m_cornerRadius = 0;
    QColor m_color = Qt::transparent;
};

} // namespace quelto
