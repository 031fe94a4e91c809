// SPDX-License-Identifier: GPL-3.0-or-later
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// Runs the tests with two screens: a small one, and a large one at its right.
int main(int argc, char* argv[])
{
    const QTemporaryDir folder;
    QFile screens(folder.filePath(QStringLiteral("screens.json")));
    if (!screens.open(QIODevice::WriteOnly)) {
        return EXIT_FAILURE;
    }
    screens.write(R"({ "screens": [
        { "name": "small", "x": 0, "y": 0, "width": 960, "height": 540, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1 },
        { "name": "large", "x": 960, "y": 0, "width": 1920, "height": 1080, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1 }
    ] })");
    screens.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toUtf8());
    const QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
