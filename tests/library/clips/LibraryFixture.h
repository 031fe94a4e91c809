// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/clips/ClipLibrary.h"
#include "tests/base/tasks/ManualQueue.h"
#include "tests/library/clips/RecordingTrash.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto::test {

/// While it lives it is noon, by a time zone of its own: a clip of some hours ago is of today at whatever hour the
/// tests run.
class Noon {
public:
    Noon()
        : m_zone(qgetenv("TZ"))
        , m_hadZone(qEnvironmentVariableIsSet("TZ"))
    {
        // West of Greenwich is positive here.
        const int hoursWest = QDateTime::currentDateTimeUtc().time().hour() - 12;
        qputenv("TZ", QString::asprintf("UTC%+d", hoursWest).toLatin1());
    }
    ~Noon()
    {
        if (m_hadZone) {
            qputenv("TZ", m_zone);
        } else {
            qunsetenv("TZ");
        }
    }
    Noon(const Noon&) = delete;
    Noon& operator=(const Noon&) = delete;

private:
    QByteArray m_zone;
    bool m_hadZone;
};

/// A save folder of its own and the library that shows it. It is noon.
class LibraryFixture : public testing::Test {
protected:
    LibraryFixture() { settings.setSaveFolder(folder.filePath(QStringLiteral("clips"))); }

    QString path(const char* name) const { return QDir(settings.saveFolder()).filePath(QString::fromUtf8(name)); }

    /// A file of a few bytes, that old.
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

    ClipLibrary::Dependencies parts()
    {
        return {.settings = settings, .trash = trash, .main = libraryMain, .work = libraryWork};
    }

    Noon noon;
    QTemporaryDir folder;
    int argumentCount = 0;
    /// Unless the program has one of its own.
    std::unique_ptr<QCoreApplication> application{
        QCoreApplication::instance() == nullptr ? new QCoreApplication(argumentCount, nullptr) : nullptr};
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
    RecordingTrash trash;
    /// The library's own: what it posts runs when the test settles it.
    ManualTime libraryTime;
    ManualQueue libraryMain{libraryTime};
    ManualQueue libraryWork{libraryTime};
    ClipLibrary library{parts()};
};

} // namespace quelto::test
