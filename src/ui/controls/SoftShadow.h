// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// What a soft shadow is made of.
struct ShadowShape {
    /// Of the box that throws it.
    QSizeF box;
    double cornerRadius = 0;
    /// How far it reaches beyond the box, and as far into it until it has its full strength.
    double radius = 0;
    QColor color;
};

/// The shadow as a picture, larger than the box by the radius on every side.
///
/// Units: logical pixels; the picture has `scale` times as many.
QImage softShadow(const ShadowShape& shape, double scale);

/// A soft shadow or glow, painted without a GPU. It covers the box and the radius around it; Shadow.qml places it.
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
