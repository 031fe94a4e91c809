// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/clips/ClipLibrary.h"
#include "tests/base/language/TimeZone.h"
#include "tests/base/tasks/ManualQueue.h"
#include "tests/library/clips/RecordingTrash.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto::test {

/// A time zone in which it is noon, so that a clip of some hours ago is of today whenever the tests run.
inline QByteArray noonTimeZone()
{
    return QString::asprintf("UTC%+d", QDateTime::currentDateTimeUtc().time().hour() - 12).toLatin1();
}

/// A temporary save folder and a library of it on manual queues, at noon.
class LibraryFixture : public testing::Test {
protected:
    LibraryFixture() { settings.setSaveFolder(folder.filePath(QStringLiteral("clips"))); }

    QString path(const char* name) const { return QDir(settings.saveFolder()).filePath(QString::fromUtf8(name)); }

    /// Creates a file of a few bytes with that age.
    QString makeFile(const char* name, int secondsAgo = 0) const
    {
        QDir().mkpath(settings.saveFolder());
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("clip");
        file.flush();
        EXPECT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addSecs(-secondsAgo), QFileDevice::FileModificationTime));
        return file.fileName();
    }

    ClipLibrary::Dependencies dependencies()
    {
        return {.settings = settings, .trash = trash, .main = libraryMain, .work = libraryWork};
    }

    TimeZone noon{noonTimeZone()};
    QTemporaryDir folder;
    int argumentCount = 0;
    /// Created unless the test program has an application.
    std::unique_ptr<QCoreApplication> application{
        QCoreApplication::instance() == nullptr ? new QCoreApplication(argumentCount, nullptr) : nullptr};
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
    RecordingTrash trash;
    /// Drives both queues of the library: posted tasks run when the test settles it.
    ManualTime libraryTime;
    ManualQueue libraryMain{libraryTime};
    ManualQueue libraryWork{libraryTime};
    ClipLibrary library{dependencies()};
};

} // namespace quelto::test
