// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/Renderer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace quelto {
namespace {

struct Devices {
    const char* description;
    QStringList names;
    bool isCard;
};

void PrintTo(const Devices& devices, std::ostream* stream)
{
    *stream << devices.description;
}

class GraphicsCardTest : public testing::TestWithParam<Devices> { };

TEST_P(GraphicsCardTest, IsDetectedByItsDeviceFiles)
{
    const QTemporaryDir folder;
    for (const auto& name : GetParam().names) {
        const QFileInfo file(folder.filePath(name));
        QDir().mkpath(file.path());
        QFile(file.filePath()).open(QIODevice::WriteOnly);
    }
    EXPECT_EQ(hasGraphicsCard(folder.path()), GetParam().isCard);
}

INSTANTIATE_TEST_SUITE_P(
    GraphicsCard, GraphicsCardTest,
    testing::Values(Devices{"nothing", {}, false},
                    Devices{"a screen without a card", {QStringLiteral("dri/card0")}, false},
                    Devices{"a card", {QStringLiteral("dri/card0"), QStringLiteral("dri/renderD128")}, true},
                    Devices{"NVIDIA's driver alone", {QStringLiteral("nvidiactl"), QStringLiteral("nvidia0")}, true},
                    Devices{"NVIDIA's control without a card", {QStringLiteral("nvidiactl")}, false}));

TEST(GraphicsCard, IsADeviceFile)
{
    const QTemporaryDir folder;
    QDir(folder.path()).mkdir(QStringLiteral("dri"));
    // Only root can create device files; a link to one does the same.
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), folder.filePath(QStringLiteral("dri/renderD128"))));
    EXPECT_TRUE(hasGraphicsCard(folder.path()));
}

TEST(GraphicsCard, IsMissingWithoutADeviceFolder)
{
    EXPECT_FALSE(hasGraphicsCard(QStringLiteral("/no such folder")));
}

} // namespace
} // namespace quelto
