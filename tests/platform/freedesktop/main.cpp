// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argumentCount, char** arguments)
{
    testing::InitGoogleTest(&argumentCount, arguments);
    const QCoreApplication application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
