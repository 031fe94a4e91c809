// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFile>

#include <gtest/gtest.h>

namespace quelto {

inline QByteArray readFixture(const QString& name)
{
    QFile file(QStringLiteral(QUELTO_WOW_FIXTURES "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

} // namespace quelto
