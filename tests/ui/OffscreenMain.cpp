// SPDX-License-Identifier: GPL-3.0-or-later
#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char* argv[])
{
    // Without display and GPU, rendering is the same on every machine.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationVersion(QStringLiteral("0.1.0"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
