// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFile>

#include <gtest/gtest.h>

namespace quelto::test {

inline QByteArray readFixture(const QString& name)
{
    QFile file(QStringLiteral(LEAGUE_FIXTURES "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

} // namespace quelto::test
