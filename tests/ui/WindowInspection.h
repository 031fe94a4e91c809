// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QDir>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace quelto::test {

/// Calls `visit` for the item and all visible items below it, in the order of creation.
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

/// The item or the first visible item below it for which the predicate holds; null if there is none.
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

/// The same for all items of the window.
template <typename Predicate> QQuickItem* firstVisible(const QQuickWindow* window, const Predicate& isWanted)
{
    return firstVisibleOn(window->contentItem(), isWanted);
}

/// The visible item with that accessible name; null if there is none.
inline QQuickItem* itemNamed(const QQuickWindow* window, const QString& accessibleName)
{
    return firstVisible(window, [&](QQuickItem* each) {
        const auto* interface = QAccessible::queryAccessibleInterface(each);
        return interface != nullptr && interface->text(QAccessible::Name) == accessibleName;
    });
}

/// The visible label with that text, the item itself or below it; null if there is none.
inline QQuickItem* labelOn(QQuickItem* root, const QString& text)
{
    return firstVisibleOn(root, [&](const QQuickItem* each) {
        return each->inherits("QQuickText") && each->property("text").toString() == text;
    });
}

/// The same for all items of the window.
inline QQuickItem* labelWith(const QQuickWindow* window, const QString& text)
{
    return labelOn(window->contentItem(), text);
}

/// Holds a key as X11 reports it: each repeat is a release and a press.
inline void holdKey(QWindow* window, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    const auto send = [&](bool isPress, bool isRepeat) {
        QTest::simulateEvent(window, isPress, key, modifiers, {}, isRepeat);
    };
    send(true, false);
    for (int i = 0; i < 15; ++i) {
        send(false, true);
        send(true, true);
    }
    send(false, false);
}

inline QPoint middleOf(const QQuickItem* item)
{
    return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
}

/// Renders the window when its animations have ended and saves it as NAME.png in the folder of pictures; as NAME@2x.png
/// at a scale factor of 2.
inline QImage savePicture(QQuickWindow* window, const QString& name)
{
    QTest::qWait(400);
    auto image = window->grabWindow();
    const QDir pictures(QStringLiteral(QUELTO_PICTURES));
    pictures.mkpath(QStringLiteral("."));
    const auto scale = window->effectiveDevicePixelRatio();
    const auto suffix = scale > 1 ? QStringLiteral("@%1x").arg(scale) : QString();
    image.save(pictures.filePath(name + suffix + QStringLiteral(".png")));
    return image;
}

} // namespace quelto::test
