// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
