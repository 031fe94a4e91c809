// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/MediaDuration.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(MediaDuration, FilesWithoutMediaHaveNoDuration)
{
    const QTemporaryDir folder;
    EXPECT_FALSE(mediaDuration(folder.filePath(QStringLiteral("none.mp4"))));
    EXPECT_FALSE(mediaDuration(folder.path()));
    EXPECT_FALSE(mediaDuration(QString()));
    const auto path = folder.filePath(QStringLiteral("text.mp4"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(100000, 'x'));
    file.close();
    EXPECT_FALSE(mediaDuration(path));
}

} // namespace
} // namespace quelto
