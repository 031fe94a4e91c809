// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/ui/WindowInspection.h"

#include <QColor>
#include <QFont>
#include <QQmlProperty>

namespace quelto::test {

inline QFont fontOf(const QObject* object)
{
    return object->property("font").value<QFont>();
}

inline QColor colorOf(const QObject* object)
{
    return object->property("color").value<QColor>();
}

inline double radiusOf(const QObject* object)
{
    return object->property("radius").toDouble();
}

/// The color with that opacity.
inline QColor withOpacity(QColor color, double opacity)
{
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

/// The border of a Rectangle.
struct Outline {
    double width;
    QColor color;
};

inline Outline outlineOf(const QObject* rectangle)
{
    auto* self = const_cast<QObject*>(rectangle);
    return {.width = QQmlProperty::read(self, QStringLiteral("border.width")).toDouble(),
            .color = QQmlProperty::read(self, QStringLiteral("border.color")).value<QColor>()};
}

/// The animations declared anywhere under the object.
inline QObjectList animationsOf(const QObject* object)
{
    QObjectList animations;
    for (auto* child : object->children()) {
        if (child->inherits("QQuickPropertyAnimation")) {
            animations.append(child);
        }
        animations.append(animationsOf(child));
    }
    if (const auto* item = qobject_cast<const QQuickItem*>(object)) {
        for (const auto* child : item->childItems()) {
            if (child->parent() != object) {
                animations.append(animationsOf(child));
            }
        }
    }
    return animations;
}

/// The item's rectangle in scene coordinates.
inline QRectF placeOf(const QQuickItem* item)
{
    return item->mapRectToScene({0, 0, item->width(), item->height()});
}

/// The first visible symbol below the item; null if there is none.
inline QQuickItem* symbolOn(QQuickItem* root)
{
    return firstVisibleOn(root, [](const QQuickItem* each) {
        return each->inherits("QQuickImage") && each->property("symbol").isValid();
    });
}

/// The visible shadow or glow of the item; null if there is none.
inline QQuickItem* shadowOf(const QQuickItem* item)
{
    for (auto* child : item->childItems()) {
        if (child->isVisible() && child->inherits("quelto::SoftShadow")) {
            return child;
        }
    }
    return nullptr;
}

/// The nearest Rectangle around the item; null if there is none.
inline QQuickItem* enclosingRectangle(const QQuickItem* item)
{
    auto* rectangle = item->parentItem();
    while (rectangle != nullptr && !rectangle->inherits("QQuickRectangle")) {
        rectangle = rectangle->parentItem();
    }
    return rectangle;
}

} // namespace quelto::test
