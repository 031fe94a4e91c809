// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/Symbols.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace quelto {

namespace {

// The grid that every icon is drawn on.
constexpr int GridSide = 24;
constexpr std::array IconSides{16, 22, 24, 32, 48};

struct SymbolRow {
    const char* symbol;
    const char* file;
};

// The icons are named for what they show, the symbols for what they mean.
constexpr std::array Symbols{
    SymbolRow{"bolt.fill", "bolt-filled"},
    SymbolRow{"checkmark", "checkmark"},
    SymbolRow{"exclamationmark.circle", "circle-exclamation"},
    SymbolRow{"exclamationmark.triangle.fill", "triangle-exclamation-filled"},
    SymbolRow{"flame.fill", "flame-filled"},
    SymbolRow{"folder.fill", "folder-filled"},
    SymbolRow{"mic.fill", "microphone-filled"},
    SymbolRow{"mic.slash.fill", "microphone-slashed"},
    SymbolRow{"magnifyingglass", "lens"},
    SymbolRow{"play.fill", "triangle-right-filled"},
    SymbolRow{"progress", "arc"},
    SymbolRow{"record.circle", "circle-dot"},
    SymbolRow{"record.circle.fill", "circle-dot-filled"},
    SymbolRow{"scissors", "scissors"},
    SymbolRow{"star.fill", "star-filled"},
    SymbolRow{"xmark", "cross"},
};

QImage drawn(const QString& symbol, const QColor& color, QSize size)
{
    const auto* row =
        std::ranges::find_if(Symbols, [&](const SymbolRow& each) { return symbol == QLatin1String(each.symbol); });
    if (row == Symbols.end()) {
        return {};
    }
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(row->file)));
    QPainter painter(&image);
    renderer.render(&painter);
    // The drawings are black on nothing; only their shape counts.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

} // namespace

QIcon symbolIcon(const QString& symbol, const QColor& color)
{
    QIcon icon;
    for (const int side : IconSides) {
        if (const auto image = drawn(symbol, color, {side, side}); !image.isNull()) {
            icon.addPixmap(QPixmap::fromImage(image));
        }
    }
    return icon;
}

SymbolProvider::SymbolProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage SymbolProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const auto symbol = id.section(u'/', 0, 0);
    const QColor color(u'#' + id.section(u'/', 1, 1));
    auto image = drawn(symbol, color, requestedSize.isValid() ? requestedSize : QSize(GridSide, GridSide));
    if (size != nullptr) {
        *size = image.size();
    }
    return image;
}

} // namespace quelto
