// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/icons/Symbols.h"

#include "tests/ui/QmlFixture.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>

namespace quelto {
namespace {

using test::QmlFixture;

QImage drawing(const QString& symbol, int side = 240)
{
    return SymbolProvider().requestImage(symbol + QStringLiteral("/ffffff"), nullptr, {side, side});
}

/// The bounds of the painted pixels in units of the 24-unit grid, and the painted share of the grid.
struct Ink {
    QRectF bounds;
    double share = 0;
};

Ink inkOf(const QImage& image)
{
    QRect bounds;
    double ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto alpha = qAlpha(image.pixel(x, y));
            ink += alpha / 255.0;
            if (alpha > 127) {
                bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    const auto unit = image.width() / 24.0;
    return {.bounds = QRectF(bounds.x() / unit, bounds.y() / unit, bounds.width() / unit, bounds.height() / unit),
            .share = ink / (image.width() * image.height())};
}

class EverySymbol : public testing::TestWithParam<std::string> { };

TEST_P(EverySymbol, StaysInsideTheGridAndFillsIt)
{
    const auto ink = inkOf(drawing(QString::fromStdString(GetParam())));
    EXPECT_GE(ink.bounds.left(), 1.5);
    EXPECT_GE(ink.bounds.top(), 1.5);
    EXPECT_LE(ink.bounds.right(), 22.5);
    EXPECT_LE(ink.bounds.bottom(), 22.5);
    EXPECT_GE(std::max(ink.bounds.width(), ink.bounds.height()), 14);
    EXPECT_GT(ink.share, 0.05);
    EXPECT_LT(ink.share, 0.6);
}

TEST_P(EverySymbol, IsCentred)
{
    const auto middle = inkOf(drawing(QString::fromStdString(GetParam()))).bounds.center();
    EXPECT_NEAR(middle.x(), 12, 1.3);
    EXPECT_NEAR(middle.y(), 12, 1.3);
}

TEST_P(EverySymbol, HasADrawingOfItsOwn)
{
    for (const auto& other : symbolNames()) {
        if (other.toStdString() != GetParam()) {
            EXPECT_NE(drawing(other, 48), drawing(QString::fromStdString(GetParam()), 48)) << other.toStdString();
        }
    }
}

std::vector<std::string> parameters()
{
    std::vector<std::string> names;
    for (const auto& name : symbolNames()) {
        names.push_back(name.toStdString());
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Symbols, EverySymbol, testing::ValuesIn(parameters()), [](const auto& each) {
    auto name = each.param;
    std::erase(name, '.');
    return name;
});

TEST(Symbols, TakeTheRequestedColour)
{
    const auto image = SymbolProvider().requestImage(QStringLiteral("circle.fill/5865F2"), nullptr, {48, 48});
    EXPECT_EQ(image.pixelColor(24, 24), QColor(0x58, 0x65, 0xF2));
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
}

TEST(Symbols, HaveWiderLinesInHeavyWeights)
{
    // The upper end of one stroke of the cross, in a row that the other stroke does not reach.
    const auto strokeWidth = [](int weight) {
        const auto image =
            SymbolProvider().requestImage(QStringLiteral("xmark/ffffff/%1").arg(weight), nullptr, {240, 240});
        int width = 0;
        for (int x = 0; x < 120; ++x) {
            width += qAlpha(image.pixel(x, 80)) > 127 ? 1 : 0;
        }
        return width;
    };
    EXPECT_NEAR(strokeWidth(QFont::Black), 2 * strokeWidth(QFont::Normal), 2);
    EXPECT_EQ(strokeWidth(QFont::Medium), strokeWidth(QFont::Normal));
}

TEST_P(EverySymbol, StaysInsideTheGridInHeavyWeights)
{
    const auto image = SymbolProvider().requestImage(QString::fromStdString(GetParam()) + QStringLiteral("/ffffff/900"),
                                                     nullptr, {240, 240});
    const auto ink = inkOf(image);
    EXPECT_GE(ink.bounds.left(), 0.5);
    EXPECT_GE(ink.bounds.top(), 0.5);
    EXPECT_LE(ink.bounds.right(), 23.5);
    EXPECT_LE(ink.bounds.bottom(), 23.5);
}

TEST(Symbols, DrawWhitePartsAsHoles)
{
    const auto image = drawing(QStringLiteral("gearshape.fill"));
    EXPECT_EQ(qAlpha(image.pixel(120, 120)), 0);
    EXPECT_EQ(qAlpha(image.pixel(120, 60)), 255);
}

TEST(Symbols, AreEmptyForAnUnknownName)
{
    EXPECT_TRUE(drawing(QStringLiteral("no.such.symbol")).isNull());
    EXPECT_TRUE(symbolIcon(QStringLiteral("no.such.symbol"), Qt::white).isNull());
    EXPECT_FALSE(symbolIcon(QStringLiteral("trash"), Qt::white).isNull());
}

TEST(Symbols, CoverAllNamesInTheSources)
{
    const QRegularExpression line(QStringLiteral(R"((?:\b[sS]ymbol\w*\s*[:=]|symbolIcon\()(.*))"));
    // A string behind a comparison is not a symbol name.
    const QRegularExpression literal(QStringLiteral("(=== )?\"([^\"]*)\""));
    const QRegularExpression looksLikeASymbol(QStringLiteral(R"(^[a-zA-Z0-9.]+$)"));
    const auto known = symbolNames();
    int used = 0;
    QDirIterator files(QStringLiteral(QUELTO_SOURCES), {QStringLiteral("*.qml"), QStringLiteral("*.cpp")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        auto lines = line.globalMatch(QString::fromUtf8(file.readAll()));
        while (lines.hasNext()) {
            auto literals = literal.globalMatch(lines.next().captured(1));
            while (literals.hasNext()) {
                const auto found = literals.next();
                const auto name = found.captured(2);
                if (!found.captured(1).isEmpty() || !looksLikeASymbol.match(name).hasMatch()) {
                    continue;
                }
                EXPECT_TRUE(known.contains(name)) << file.fileName().toStdString() << ": " << name.toStdString();
                ++used;
            }
        }
    }
    EXPECT_GE(used, 15);
}

// As the drawings differ, each symbol has a file of its own.
TEST(Symbols, LeaveNoFileUnused)
{
    const QDir files(QStringLiteral(":/icons"));
    EXPECT_EQ(files.entryList({QStringLiteral("*.svg")}).size(), symbolNames().size());
}

class RecordingProvider final : public SymbolProvider {
public:
    explicit RecordingProvider(QList<QSize>& requests)
        : m_requests(requests)
    {
    }
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override
    {
        m_requests.append(requestedSize);
        return SymbolProvider::requestImage(id, size, requestedSize);
    }

private:
    QList<QSize>& m_requests;
};

/// Also run at a scale factor of 2.
class SymbolInALayout : public QmlFixture { };

TEST_F(SymbolInALayout, HasItsSideAndIsDrawnAtThePixelDensityOfTheScreen)
{
    QList<QSize> requests;
    engine->addImageProvider(QStringLiteral("symbols"), new RecordingProvider(requests));
    show(QStringLiteral("RowLayout { SymbolIcon { objectName: 'icon'; symbol: 'mic.fill'; side: 14 } }"));
    window->grabWindow();
    EXPECT_EQ(item(QStringLiteral("icon"))->size(), QSizeF(14, 14));
    EXPECT_EQ(requests, QList<QSize>{QSize(14, 14) * window->effectiveDevicePixelRatio()});
}

class SymbolSheet : public QmlFixture { };

TEST_F(SymbolSheet, DrawsAllSymbolsInThreePalettes)
{
    QStringList names;
    for (const auto& name : symbolNames()) {
        names.append(QStringLiteral("\"%1\"").arg(name));
    }
    for (const auto* palette : {"ember", "blurple", "ocean"}) {
        settings.setColorTheme(QLatin1String(palette));
        show(QStringLiteral(R"(
            Grid {
                x: 12; y: 12; columns: 8
                Repeater {
                    model: [%1]
                    Item {
                        required property string modelData
                        width: 150; height: 86
                        Row {
                            anchors.horizontalCenter: parent.horizontalCenter
                            spacing: 12
                            SymbolIcon { anchors.verticalCenter: parent.verticalCenter; side: 16; symbol: modelData; color: Theme.muted }
                            SymbolIcon { anchors.verticalCenter: parent.verticalCenter; side: 24; symbol: modelData; color: Theme.accent }
                            SymbolIcon { side: 48; symbol: modelData; color: Theme.text }
                        }
                        Text { y: 54; width: 142; horizontalAlignment: Text.AlignHCenter; text: modelData; elide: Text.ElideMiddle; color: Theme.muted; font.pixelSize: 10 }
                    }
                }
            })")
                 .arg(names.join(u',')),
             {1224, 720});
        EXPECT_GT(inkOf(picture(QStringLiteral("symbols-") + QLatin1String(palette))).share, 0);
        window->close();
    }
}

} // namespace
} // namespace quelto
