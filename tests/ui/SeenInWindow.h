// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QDir>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace quelto::test {

/// Calls `visit` with every visible item below that one and itself, in the order in which they were made.
template <typename Visit> void visitVisible(QQuickItem* root, const Visit& visit)
{
    if (!root->isVisible()) {
        return;
    }
    visit(root);
    for (auto* child : root->childItems()) {
        visitVisible(child, visit);
    }
}

/// The first visible item that is wanted, below that one or itself; null if there is none.
template <typename Predicate> QQuickItem* firstVisibleOn(QQuickItem* root, const Predicate& isWanted)
{
    QQuickItem* found = nullptr;
    visitVisible(root, [&](QQuickItem* each) {
        if (found == nullptr && isWanted(each)) {
            found = each;
        }
    });
    return found;
}

/// Null if there is none.
template <typename Predicate> QQuickItem* firstVisible(const QQuickWindow* window, const Predicate& isWanted)
{
    return firstVisibleOn(window->contentItem(), isWanted);
}

/// The visible item that screen readers call by that name; null if there is none.
inline QQuickItem* itemNamed(const QQuickWindow* window, const QString& accessibleName)
{
    return firstVisible(window, [&](QQuickItem* each) {
        const auto* interface = QAccessible::queryAccessibleInterface(each);
        return interface != nullptr && interface->text(QAccessible::Name) == accessibleName;
    });
}

/// The visible label with that text; null if there is none.
inline QQuickItem* labelWith(const QQuickWindow* window, const QString& text)
{
    return firstVisible(window, [&](QQuickItem* each) {
        return each->inherits("QQuickText") && each->property("text").toString() == text;
    });
}

inline QPoint middleOf(const QQuickItem* item)
{
    return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
}

/// Draws the window when all that moves has come to rest, and keeps it as NAME.png in the folder of pictures; as
/// NAME@2x.png on a screen of twice the scale.
inline QImage keptPicture(QQuickWindow* window, const QString& name)
{
    QTest::qWait(400);
    auto image = window->grabWindow();
    const QDir pictures(QStringLiteral(QUELTO_PICTURES));
    pictures.mkpath(QStringLiteral("."));
    const auto scale = window->effectiveDevicePixelRatio();
    const auto mark = scale > 1 ? QStringLiteral("@%1x").arg(scale) : QString();
    image.save(pictures.filePath(name + mark + QStringLiteral(".png")));
    return image;
}

} // namespace quelto::test
