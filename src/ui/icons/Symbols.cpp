// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/icons/Symbols.h"

#include <QFile>
#include <QFont>
#include <QPainter>
#include <QSvgRenderer>

namespace quelto {

namespace {

// The view box of every SVG file.
constexpr int GridSide = 24;
constexpr std::array IconSides{16, 22, 24, 32, 48};
// The width of lines in the files, and in heavy symbols. Units: the grid's.
const QByteArray FileStroke = "stroke-width=\"2\"";
const QByteArray HeavyStroke = "stroke-width=\"4\"";

struct SymbolRow {
    const char* symbol;
    const char* file;
};

// The only list of icons. A file is named for what its drawing shows.
constexpr std::array Symbols{
    SymbolRow{"arrow.down.circle.fill", "circle-arrow-down-filled"},
    SymbolRow{"arrow.up.left.and.arrow.down.right", "arrows-apart"},
    SymbolRow{"bolt.fill", "bolt-filled"},
    SymbolRow{"building.columns.fill", "building-with-columns-filled"},
    SymbolRow{"checkmark", "checkmark"},
    SymbolRow{"checkmark.circle.fill", "circle-checkmark-filled"},
    SymbolRow{"checkmark.seal.fill", "seal-checkmark-filled"},
    SymbolRow{"chevron.down", "chevron-down"},
    SymbolRow{"chevron.left", "chevron-left"},
    SymbolRow{"chevron.right", "chevron-right"},
    SymbolRow{"circle", "circle"},
    SymbolRow{"circle.fill", "circle-filled"},
    SymbolRow{"crown.fill", "crown-filled"},
    SymbolRow{"drop.fill", "drop-filled"},
    SymbolRow{"ellipsis", "three-dots"},
    SymbolRow{"exclamationmark.circle", "circle-exclamation"},
    SymbolRow{"exclamationmark.triangle.fill", "triangle-exclamation-filled"},
    SymbolRow{"externaldrive", "drive"},
    SymbolRow{"face.smiling.inverse", "circle-smile-filled"},
    SymbolRow{"film", "film"},
    SymbolRow{"film.stack", "film-stack"},
    SymbolRow{"flag.checkered", "flag-checkered"},
    SymbolRow{"flag.fill", "flag-filled"},
    SymbolRow{"flame", "flame"},
    SymbolRow{"flame.fill", "flame-filled"},
    SymbolRow{"folder", "folder"},
    SymbolRow{"folder.fill", "folder-filled"},
    SymbolRow{"gamecontroller.fill", "gamepad-filled"},
    SymbolRow{"gearshape.fill", "gear-filled"},
    SymbolRow{"gobackward.5", "arrow-counterclockwise-5"},
    SymbolRow{"goforward.5", "arrow-clockwise-5"},
    SymbolRow{"hand.draw.fill", "hand-drawing-line-filled"},
    SymbolRow{"hand.raised.fill", "hand-filled"},
    SymbolRow{"keyboard", "keyboard"},
    SymbolRow{"line.3.horizontal", "three-lines"},
    SymbolRow{"line.3.horizontal.decrease", "three-lines-shrinking"},
    SymbolRow{"magnifyingglass", "magnifying-glass"},
    SymbolRow{"mic.fill", "microphone-filled"},
    SymbolRow{"mic.slash.fill", "microphone-slashed"},
    SymbolRow{"paintpalette.fill", "palette-filled"},
    SymbolRow{"paperplane.fill", "paper-plane-filled"},
    SymbolRow{"pause.fill", "two-bars-filled"},
    SymbolRow{"pencil", "pencil"},
    SymbolRow{"play.fill", "triangle-right-filled"},
    SymbolRow{"play.rectangle.on.rectangle.fill", "two-frames-triangle-right-filled"},
    SymbolRow{"progress", "arc"},
    SymbolRow{"record.circle", "circle-dot"},
    SymbolRow{"record.circle.fill", "circle-dot-filled"},
    SymbolRow{"scissors", "scissors"},
    SymbolRow{"scope", "crosshair"},
    SymbolRow{"shield.checkered", "shield-checkered"},
    SymbolRow{"shield.lefthalf.filled", "shield-half-filled"},
    SymbolRow{"slider.horizontal.3", "three-sliders"},
    SymbolRow{"sparkles", "sparkles"},
    SymbolRow{"speaker.slash.fill", "speaker-slashed"},
    SymbolRow{"speaker.wave.2.fill", "speaker-waves-filled"},
    SymbolRow{"square.grid.2x2.fill", "four-squares-filled"},
    SymbolRow{"star.fill", "star-filled"},
    SymbolRow{"trash", "trash-can"},
    SymbolRow{"trophy.fill", "trophy-filled"},
    SymbolRow{"xmark", "cross"},
    SymbolRow{"xmark.circle.fill", "circle-cross-filled"},
};

/// Makes white parts transparent: the files draw in black on a transparent background, and cut holes with white.
void cutOutWhite(QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            // Premultiplied: the colour channels are 0 where it is black, and equal to alpha where it is white.
            line[x] = qRgba(0, 0, 0, qAlpha(line[x]) - qRed(line[x]));
        }
    }
}

QByteArray svgOf(const char* file, QFont::Weight weight)
{
    QFile svg(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(file)));
    std::ignore = svg.open(QIODevice::ReadOnly);
    auto text = svg.readAll();
    return weight >= QFont::Bold ? text.replace(FileStroke, HeavyStroke) : text;
}

QImage drawn(const QString& symbol, const QColor& color, QSize size, QFont::Weight weight = QFont::Normal)
{
    const auto* row =
        std::ranges::find_if(Symbols, [&](const SymbolRow& each) { return symbol == QLatin1String(each.symbol); });
    if (row == Symbols.end()) {
        return {};
    }
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(svgOf(row->file, weight));
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    cutOutWhite(image);
    painter.begin(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

} // namespace

QStringList symbolNames()
{
    QStringList names;
    for (const auto& row : Symbols) {
        names.append(QLatin1String(row.symbol));
    }
    return names;
}

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
    const auto weight = static_cast<QFont::Weight>(id.section(u'/', 2, 2).toInt());
    auto image = drawn(symbol, color, requestedSize.isValid() ? requestedSize : QSize(GridSide, GridSide), weight);
    if (size != nullptr) {
        *size = image.size();
    }
    return image;
}

} // namespace quelto
