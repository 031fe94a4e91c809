// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/ui/SeenInWindow.h"

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

/// The colour, thinned to that opacity.
inline QColor thinned(QColor color, double opacity)
{
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

/// One outline of a Rectangle.
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

/// Where the item lies in its window.
inline QRectF placeOf(const QQuickItem* item)
{
    return item->mapRectToScene({0, 0, item->width(), item->height()});
}

/// The visible label with that text on the item; null if there is none.
inline QQuickItem* labelOn(QQuickItem* root, const QString& text)
{
    return firstVisibleOn(root, [&](const QQuickItem* each) {
        return each->inherits("QQuickText") && each->property("text").toString() == text;
    });
}

/// The visible symbol on the item; null if there is none.
inline QQuickItem* symbolOn(QQuickItem* root)
{
    return firstVisibleOn(root, [](const QQuickItem* each) {
        return each->inherits("QQuickImage") && each->property("symbol").isValid();
    });
}

/// The visible shadow or glow of the item itself; null if it has none.
inline QQuickItem* shadowOf(const QQuickItem* box)
{
    for (auto* child : box->childItems()) {
        if (child->isVisible() && child->inherits("quelto::SoftShadow")) {
            return child;
        }
    }
    return nullptr;
}

/// The nearest box that the item stands in; null if there is none.
inline QQuickItem* boxAround(const QQuickItem* item)
{
    auto* box = item->parentItem();
    while (box != nullptr && !box->inherits("QQuickRectangle")) {
        box = box->parentItem();
    }
    return box;
}

} // namespace quelto::test
