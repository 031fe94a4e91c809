// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QIcon>
#include <QQuickImageProvider>
#include <QString>
#include <QStringList>

namespace quelto {

/// Every symbol that has a drawing, in alphabetical order.
QStringList symbolNames();

/// The icon of that symbol name in one colour, for what the desktop draws. An unknown name gives an empty icon.
QIcon symbolIcon(const QString& symbol, const QColor& color);

/// Draws symbols for QML: the source "image://symbols/NAME/RRGGBB" in the size asked for.
class SymbolProvider : public QQuickImageProvider {
public:
    SymbolProvider();

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace quelto
