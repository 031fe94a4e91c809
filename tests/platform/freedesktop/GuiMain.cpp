// SPDX-License-Identifier: GPL-3.0-or-later
#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argumentCount, char** arguments)
{
    testing::InitGoogleTest(&argumentCount, arguments);
    const QGuiApplication application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
