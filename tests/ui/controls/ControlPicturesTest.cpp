// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/QmlFixture.h"

#include <QDir>

#include <set>

namespace quelto {
namespace {

QDir drawings()
{
    return QDir(QStringLiteral(QUELTO_DRAWINGS));
}

std::set<QRgb> colorsIn(const QImage& image)
{
    std::set<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            colors.insert(image.pixel(x, y));
        }
    }
    return colors;
}

class ControlPictures : public test::QmlFixture, public testing::WithParamInterface<std::string> { };

TEST_P(ControlPictures, DifferFromPaletteToPalette)
{
    const auto name = QString::fromStdString(GetParam());
    QImage previous;
    for (const auto* palette : {"ember", "blurple", "ocean"}) {
        settings.setColorTheme(QLatin1String(palette));
        showFile(drawings().filePath(name + QStringLiteral(".qml")));
        if (auto* target = window->findChild<QQuickItem*>(QStringLiteral("focus"))) {
            target->forceActiveFocus(Qt::TabFocusReason);
        }
        const auto image = picture(QStringLiteral("control-%1-%2").arg(name, QLatin1String(palette)));
        // Antialiased edges alone have more colours than this.
        EXPECT_GT(colorsIn(image).size(), 8U) << palette;
        EXPECT_NE(image, previous) << palette;
        previous = image;
        window->close();
    }
}

std::vector<std::string> drawingNames()
{
    std::vector<std::string> names;
    for (const auto& file : drawings().entryInfoList({QStringLiteral("*.qml")}, QDir::Files, QDir::Name)) {
        names.push_back(file.completeBaseName().toStdString());
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Drawings, ControlPictures, testing::ValuesIn(drawingNames()), [](const auto& each) {
    auto name = each.param;
    std::erase(name, '-');
    return name;
});

} // namespace
} // namespace quelto
