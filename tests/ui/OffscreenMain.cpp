// SPDX-License-Identifier: GPL-3.0-or-later
#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char* argv[])
{
    // Draws without a display and without a GPU, so pictures are the same on every machine.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
