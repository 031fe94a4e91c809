// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QIcon>
#include <QQuickImageProvider>
#include <QString>
#include <QStringList>

namespace quelto {

/// All symbol names, in alphabetical order.
QStringList symbolNames();

/// The symbol as an icon in one colour, for the parts that the desktop draws. An unknown name gives an empty icon.
QIcon symbolIcon(const QString& symbol, const QColor& color);

/// Draws symbols for QML from the source "image://symbols/NAME/RRGGBB/WEIGHT", in the requested size. The weight is
/// that of a font; from bold on the lines are twice as wide.
class SymbolProvider : public QQuickImageProvider {
public:
    SymbolProvider();

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace quelto
