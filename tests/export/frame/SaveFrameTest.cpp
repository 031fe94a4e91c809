// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/frame/SaveFrame.h"

#include "base/files/FileName.h"
#include "export/errors/ExportError.h"
#include "tests/base/faults/FileFaults.h"
#include "tests/export/operations/ExportFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

namespace quelto {
namespace {

using namespace test;

class SaveFrameTest : public ExportTest {
protected:
    QString folder = [this] {
        auto path = clips.path(QStringLiteral("folder"));
        QDir().mkpath(path);
        return path;
    }();

    QString addClip(const QString& name = QStringLiteral("X.mp4"))
    {
        auto path = folder + u'/' + name;
        EXPECT_TRUE(QFile::copy(makeClip(clips, QStringLiteral("made.mp4"), {.seconds = 0.5}), path));
        return path;
    }
    QStringList names() const { return filesIn(folder); }

    /// The reason of a failure; empty after success.
    static QString reasonFor(const QString& clip)
    {
        try {
            saveFrame(clip, 0.2);
            return {};
        } catch (...) {
            return ExportError::fromCurrentException().reason();
        }
    }
};

TEST_F(SaveFrameTest, WritesTheShownFrameBesideTheClip)
{
    const auto clip = addClip();
    const auto source = stateOf(clip);
    const auto saved = saveFrame(clip, 0.2);
    EXPECT_EQ(saved.path, folder + QStringLiteral("/X 0m00.200s.png"));
    EXPECT_EQ(names(), (QStringList{QStringLiteral("X 0m00.200s.png"), QStringLiteral("X.mp4")}));
    EXPECT_EQ(QImage(saved.path, "PNG").convertToFormat(saved.image.format()), saved.image);
    EXPECT_EQ(numbersOf(readCounter(saved.path)), std::vector{12});
    EXPECT_EQ(saved.image.size(), QSize(320, 180));
    EXPECT_EQ(stateOf(clip), source);
}

TEST_F(SaveFrameTest, NeverReplacesAFile)
{
    const auto clip = addClip();
    const auto first = stateOf(saveFrame(clip, 0.2).path);
    EXPECT_EQ(saveFrame(clip, 0.2).path, folder + QStringLiteral("/X 0m00.200s 2.png"));
    EXPECT_EQ(saveFrame(clip, 0.2).path, folder + QStringLiteral("/X 0m00.200s 3.png"));
    EXPECT_EQ(stateOf(folder + QStringLiteral("/X 0m00.200s.png")), first);
}

TEST_F(SaveFrameTest, LongNameOfTheClipIsShortened)
{
    const auto clip = addClip(QString(251, u'x') + QStringLiteral(".mp4"));
    for (int i = 0; i < 2; ++i) {
        const auto name = QFileInfo(saveFrame(clip, 0.2).path).fileName();
        EXPECT_EQ(name.size(), 255);
        EXPECT_TRUE(name.endsWith(i == 0 ? QStringLiteral("x 0m00.200s.png") : QStringLiteral("x 0m00.200s 2.png")));
    }
}

/// Encrypted and network file systems may take fewer bytes than others.
TEST_F(SaveFrameTest, NameIsShortenedToTheClipsLengthIfTheFileSystemTakesNoLongerOne)
{
    const auto clip = addClip(QString(100, u'x') + QStringLiteral(".mp4"));
    FileFaults faults(folder);
    faults.use({"renameat2 1 " + QByteArray::number(ENAMETOOLONG) + " *"});
    const auto name = QFileInfo(saveFrame(clip, 0.2).path).fileName();
    EXPECT_EQ(name, QString(90, u'x') + QStringLiteral(" 0m00.200s.png"));
}

TEST_F(SaveFrameTest, WorksWithNamesThatAreNotValidUtf8)
{
    const auto clip = decodeFileName(QFile::encodeName(folder) + "/B\xfcy.mp4");
    ASSERT_EQ(::rename(QFile::encodeName(addClip()).constData(), encodeFileName(clip).constData()), 0);
    EXPECT_EQ(encodeFileName(saveFrame(clip, 0.2).path), QFile::encodeName(folder) + "/B\xfcy 0m00.200s.png");
}

TEST_F(SaveFrameTest, MissingAndUnreadableClipsAreReported)
{
    EXPECT_EQ(reasonFor(folder + QStringLiteral("/X.mp4")),
              QStringLiteral("Klip bulunamadı. Silinmiş veya taşınmış olabilir."));
    const auto noMovie = clips.write(QStringLiteral("folder/no.mp4"), QByteArray(5000, 'x'));
    EXPECT_EQ(reasonFor(noMovie), QStringLiteral("okuma hatası"));
    EXPECT_EQ(reasonFor(folder), QStringLiteral("okuma hatası"));
    EXPECT_EQ(names(), QStringList{QStringLiteral("no.mp4")});
}

TEST_F(SaveFrameTest, FullDiskAndReadOnlyFolderAreReported)
{
    const auto clip = addClip();
    FileFaults faults(folder);
    faults.use({"write 0 " + QByteArray::number(ENOSPC) + " *.part"});
    EXPECT_EQ(reasonFor(clip), QStringLiteral("Diskte yer kalmadı. Yer açın veya başka bir kayıt klasörü seçin."));
    faults.use({"create 0 " + QByteArray::number(EROFS) + " *.part"});
    EXPECT_EQ(reasonFor(clip), QStringLiteral("Kayıt klasörü salt okunur. Başka bir kayıt klasörü seçin."));
    EXPECT_EQ(names(), QStringList{QStringLiteral("X.mp4")});
    faults.use({});
    EXPECT_EQ(reasonFor(clip), QString());
}

TEST_F(SaveFrameTest, AnyFailedFileCallLeavesAWholePictureOrNone)
{
    const auto clip = addClip();
    const auto source = stateOf(clip);
    FileFaults faults(folder);
    faults.use({});
    const auto picture = saveFrame(clip, 0.2);
    const auto calls = faults.calls();
    ASSERT_GT(calls.size(), 8);
    QFile::remove(picture.path);
    for (const auto& call : calls) {
        SCOPED_TRACE(call.name.toStdString() + ' ' + std::to_string(call.number) + " on " + call.path.toStdString());
        faults.use({faultRule(call.name, call.number, EIO)});
        const auto reason = reasonFor(clip);
        faults.use({});
        EXPECT_EQ(stateOf(clip), source);
        // A file that cannot be deleted stays until the next one is written.
        if (call.name != "unlinkat") {
            const auto left = names();
            EXPECT_EQ(left.size(), reason.isEmpty() ? 2 : 1) << left.join(u' ').toStdString();
        }
        EXPECT_EQ(QFile::exists(picture.path), reason.isEmpty());
        if (reason.isEmpty()) {
            EXPECT_FALSE(QImage(picture.path, "PNG").isNull());
        }
        QFile::remove(picture.path);
    }
}

TEST_F(SaveFrameTest, StopRequestLeavesNothing)
{
    const auto clip = addClip();
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(saveFrame(clip, 0.2, stop.get_token()), ExportStopped);
    EXPECT_EQ(names(), QStringList{QStringLiteral("X.mp4")});
}

} // namespace
} // namespace quelto
