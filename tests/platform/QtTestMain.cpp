// SPDX-License-Identifier: GPL-3.0-or-later
// Runs GoogleTest inside a Qt application: with widgets or a GUI for test programs that link them, else without.
#if defined(QT_WIDGETS_LIB)
#include <QApplication>
using Application = QApplication;
#elif defined(QT_GUI_LIB)
#include <QGuiApplication>
using Application = QGuiApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

#include <gtest/gtest.h>

int main(int argumentCount, char** arguments)
{
    testing::InitGoogleTest(&argumentCount, arguments);
    const Application application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
