// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/L10n.h"
#include "base/language/T.h"
#include "export/operations/VideoTools.h"
#include "library/naming/ClipName.h"
#include "tests/base/disk/SmallDisk.h"
#include "tests/base/faults/FileFaultRules.h"
#include "tests/base/faults/FileFaults.h"
#include "tests/export/operations/ExportFixture.h"
#include "tests/media/probe/Probe.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>

namespace quelto {
namespace {

using namespace test;

/// Larger than 97 % of a megabyte. Units: bytes.
constexpr qint64 LargeClip = 975'000;

struct Operation {
    const char* name;
    QString (*run)(const QString& clip, const ExportControl& control);
    /// The reason that it gives for a file that is not a movie.
    const char* unreadable;
};

void PrintTo(const Operation& operation, std::ostream* out)
{
    *out << operation.name;
}

const Operation Trim{"Trim",
                     [](const QString& clip, const ExportControl& control) {
                         return Exporter::trim(clip, {.start = 0.1, .end = 0.9}, control);
                     },
                     "Dışa aktarma başarısız: oturum oluşturulamadı"};
/// Nothing is below a limit of -1, so the clip is transcoded whatever its size is, in three passes if it is small.
const Operation Shrink{"Shrink",
                       [](const QString& clip, const ExportControl& control) {
                           const int limitMB = QFileInfo(clip).size() > LargeClip ? 1 : -1;
                           return Exporter::compressForDiscord(clip, limitMB, control);
                       },
                       "Klipte video bulunamadı."};
const Operation Aspect{"Aspect",
                       [](const QString& clip, const ExportControl& control) {
                           return VideoTools::exportAspect(clip, AspectRatio::square, FillMode::blur, control);
                       },
                       "Dışa aktarma başarısız: okuma hatası"};

class ExportFailureTest : public ExportTest, public testing::WithParamInterface<Operation> {
protected:
    static Attempt exportOf(
        const QString& clip, const std::stop_token& stop = {},
        const std::function<void(double)>& onProgress = [](double) {})
    {
        return attempt([&](const ExportControl& control) { return GetParam().run(clip, control); }, stop, onProgress);
    }

    /// Copies a clip into a folder of its own and makes it so large that it is shrunk in one pass.
    QString clipIn(const QString& folder, const QString& name = QStringLiteral("X.mp4"),
                   const CounterClip& clip = {.muxing = QStringLiteral("-movflags faststart")})
    {
        QDir().mkpath(folder);
        const auto path = folder + u'/' + name;
        QFile::copy(makeClip(clips, QStringLiteral("made.mp4"), clip), path);
        return padded(path, LargeClip + 1);
    }

    QString folder() const { return clips.path(QStringLiteral("folder")); }

    /// Requires the message in each language, that nothing is left behind and that the clip is untouched.
    static void expectFailure(const QString& clip, const char* message)
    {
        const auto folder = QFileInfo(clip).path();
        const auto before = filesIn(folder);
        const auto source = QFileInfo(clip).isFile() ? stateOf(clip) : FileState();
        const auto result = exportOf(clip);
        EXPECT_EQ(result.message.toStdString(), message);
        EXPECT_FALSE(result.hasSucceeded());
        EXPECT_EQ(filesIn(folder), before);
        EXPECT_EQ(QFileInfo(clip).isFile() ? stateOf(clip) : FileState(), source);
        L10n::use(QStringLiteral("de"));
        const auto german = exportOf(clip).message;
        EXPECT_NE(german, QString());
        EXPECT_NE(german, result.message);
        L10n::use(QStringLiteral("tr"));
    }

    /// Exports while something happens to the clip after the first frames.
    static Attempt exportDuring(const QString& clip, const std::function<void()>& change)
    {
        bool isChanged = false;
        return exportOf(clip, {}, [&](double done) {
            if (done < 1 && !std::exchange(isChanged, true)) {
                change();
            }
        });
    }
};

INSTANTIATE_TEST_SUITE_P(All, ExportFailureTest, testing::Values(Trim, Shrink, Aspect),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(ExportFailureTest, FullDiskIsReportedAndTheNextExportSucceeds)
{
    const SmallDisk disk(1200 * 1024);
    if (!disk.isMounted()) {
        GTEST_SKIP() << "only root may mount a small disk";
    }
    const auto clip = clipIn(disk.path());
    QFile ballast(disk.path() + QStringLiteral("/ballast"));
    ASSERT_TRUE(ballast.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    const auto room = 1200 * 1024 - QFileInfo(clip).size() - 8 * 1024;
    ASSERT_EQ(ballast.write(QByteArray(room, 'x')), room);
    expectFailure(clip, "Dışa aktarma başarısız: Diskte yer kalmadı. Yer açın veya başka bir kayıt klasörü seçin.");
    ASSERT_TRUE(ballast.resize(0));
    EXPECT_TRUE(exportOf(clip).hasSucceeded());
}

TEST_P(ExportFailureTest, ReadOnlyFolderIsReported)
{
    SmallDisk disk(1200 * 1024);
    if (!disk.isMounted()) {
        GTEST_SKIP() << "only root may mount a small disk";
    }
    const auto clip = clipIn(disk.path());
    ASSERT_TRUE(disk.makeReadOnly());
    expectFailure(clip, "Dışa aktarma başarısız: Kayıt klasörü salt okunur. Başka bir kayıt klasörü seçin.");
}

TEST_P(ExportFailureTest, RemovedFolderIsReported)
{
    const auto clip = clipIn(folder());
    const auto result = exportDuring(clip, [&] { QDir(folder()).removeRecursively(); });
    EXPECT_EQ(result.message.toStdString(), "Dışa aktarma başarısız: Klip dışa aktarılırken silindi.");
    EXPECT_FALSE(QFileInfo::exists(folder()));
}

TEST_P(ExportFailureTest, TooLongNameIsReported)
{
    const auto clip = clipIn(folder(), QString(250, u'x') + QStringLiteral(".mp4"));
    expectFailure(clip, "Dışa aktarma başarısız: Klibin adı çok uzun. Önce yeniden adlandırın.");
}

/// The number of a second copy makes its name longer.
TEST_P(ExportFailureTest, TooLongNameOfASecondCopyIsReported)
{
    const auto shortClip = clipIn(folder());
    const auto copy = QFileInfo(exportOf(shortClip).path).fileName();
    QString title(u'X');
    while (hasRoomForSidecar(title + copy)) {
        title += u'x';
    }
    const auto clip = QFileInfo(shortClip).path() + u'/' + title + QStringLiteral(".mp4");
    ASSERT_TRUE(QFile::rename(shortClip, clip));
    const auto first = exportOf(clip);
    ASSERT_TRUE(first.hasSucceeded()) << first.message.toStdString();
    EXPECT_FALSE(hasRoomForSidecar(u'X' + QFileInfo(first.path).fileName()));
    const auto before = filesIn(folder());
    EXPECT_EQ(exportOf(clip).message.toStdString(),
              "Dışa aktarma başarısız: Klibin adı çok uzun. Önce yeniden adlandırın.");
    EXPECT_EQ(filesIn(folder()), before);
}

TEST_P(ExportFailureTest, DeletedClipIsReported)
{
    const auto clip = clipIn(folder());
    const auto result = exportDuring(clip, [&] { QFile::remove(clip); });
    EXPECT_EQ(result.message.toStdString(), "Dışa aktarma başarısız: Klip dışa aktarılırken silindi.");
    EXPECT_EQ(filesIn(folder()), QStringList{});
}

TEST_P(ExportFailureTest, ChangedClipIsReported)
{
    const auto changed = "Dışa aktarma başarısız: Klip dışa aktarılırken değişti. Yeniden deneyin.";
    const auto clip = clipIn(folder());
    const auto appended = exportDuring(clip, [&] {
        QFile file(clip);
        EXPECT_TRUE(file.open(QIODevice::Append));
        file.write("more");
    });
    EXPECT_EQ(appended.message.toStdString(), changed);
    const auto truncated = exportDuring(clip, [&] { QFile::resize(clip, 2000); });
    EXPECT_EQ(truncated.message.toStdString(), changed);
    EXPECT_EQ(filesIn(folder()), QStringList{QStringLiteral("X.mp4")});
    EXPECT_EQ(QFileInfo(clip).size(), 2000);
}

TEST_P(ExportFailureTest, RenamedClipIsExportedAllTheSame)
{
    const auto clip = clipIn(folder());
    const auto moved = folder() + QStringLiteral("/Y.mp4");
    const auto result = exportDuring(clip, [&] { QFile::rename(clip, moved); });
    EXPECT_TRUE(result.hasSucceeded()) << result.message.toStdString();
    EXPECT_EQ(filesIn(folder()).size(), 2);
    expectValidExport(result.path);
}

TEST_P(ExportFailureTest, FileThatIsNotAMovieIsReported)
{
    expectFailure(clips.write(QStringLiteral("X.mp4"), QByteArray(1'200'000, 'x')), GetParam().unreadable);
    expectFailure(clips.write(QStringLiteral("X.mp4"), {}), GetParam().unreadable);
    const auto pipe = clips.path(QStringLiteral("pipe.mp4"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    expectFailure(pipe, GetParam().unreadable);
    QDir().mkpath(folder());
    expectFailure(folder(), GetParam().unreadable);
}

TEST_P(ExportFailureTest, MissingClipIsReported)
{
    expectFailure(clips.path(QStringLiteral("X.mp4")),
                  "Dışa aktarma başarısız: Klip bulunamadı. Silinmiş veya taşınmış olabilir.");
    expectFailure(clips.path(QStringLiteral("none/X.mp4")),
                  "Dışa aktarma başarısız: Klip bulunamadı. Silinmiş veya taşınmış olabilir.");
}

TEST_P(ExportFailureTest, ClipThatWasCutOffIsReported)
{
    const auto clip = clipIn(folder());
    const auto size = QFileInfo(clips.path(QStringLiteral("made.mp4"))).size();
    ASSERT_TRUE(QFile::resize(clip, size * 60 / 100));
    if (GetParam().run == Trim.run) {
        const auto late = attempt(
            [&](const ExportControl& control) { return Exporter::trim(clip, {.start = 0.5, .end = 1.9}, control); });
        EXPECT_EQ(late.message.toStdString(), "Dışa aktarma başarısız: okuma hatası");
        EXPECT_EQ(filesIn(folder()), QStringList{QStringLiteral("X.mp4")});
        const auto early = attempt(
            [&](const ExportControl& control) { return Exporter::trim(clip, {.start = 0.1, .end = 0.4}, control); });
        EXPECT_EQ(early.message.toStdString(), "");
        EXPECT_EQ(readCounter(early.path).size(), 18U);
    } else {
        expectFailure(clip, "Dışa aktarma başarısız: okuma hatası");
    }
}

TEST_P(ExportFailureTest, StopRequestEndsTheExport)
{
    const auto clip = clipIn(folder());
    const auto source = stateOf(clip);
    std::stop_source stop;
    double last = 0;
    const auto result = exportOf(clip, stop.get_token(), [&](double done) {
        last = done;
        stop.request_stop();
    });
    EXPECT_TRUE(result.isStopped);
    EXPECT_LT(last, 1);
    EXPECT_EQ(filesIn(folder()), QStringList{QStringLiteral("X.mp4")});
    EXPECT_EQ(stateOf(clip), source);
}

TEST_P(ExportFailureTest, ExportThatIsStoppedBeforeItStartsIsNoFailure)
{
    const auto clip = clipIn(folder());
    std::stop_source stop;
    stop.request_stop();
    const auto result = exportOf(clip, stop.get_token());
    EXPECT_TRUE(result.isStopped) << result.message.toStdString();
    EXPECT_EQ(filesIn(folder()), QStringList{QStringLiteral("X.mp4")});
}

/// Lets every file call in the folder of a small clip fail.
class ExportFaultTest : public ExportFailureTest {
protected:
    struct Outcome {
        Attempt result;
        QList<FileCall> calls;
    };

    Outcome exportWith(const QList<QByteArray>& rules)
    {
        faults.use(rules);
        Outcome outcome{.result = exportOf(clip), .calls = faults.calls()};
        faults.use({});
        return outcome;
    }

    QString clip = clipIn(folder(), QStringLiteral("X.mp4"), {.size = QSize(64, 36), .seconds = 0.3});
    FileFaults faults{folder()};
};

INSTANTIATE_TEST_SUITE_P(All, ExportFaultTest, testing::Values(Trim, Shrink, Aspect),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(ExportFaultTest, FailedFileCallIsReportedOrHarmless)
{
    const auto source = stateOf(clip);
    const auto usual = exportWith({});
    ASSERT_TRUE(usual.result.hasSucceeded());
    QFile::remove(usual.result.path);
    ASSERT_GT(usual.calls.size(), 8);
    for (const auto& call : usual.calls) {
        // The reads of the source are many; see ReadErrorInTheMiddleIsReported.
        if (call.name == "pread" && call.path == "X.mp4") {
            continue;
        }
        for (const int error : {EIO, ENOSPC}) {
            SCOPED_TRACE(call.name.toStdString() + ' ' + std::to_string(call.number) + ' ' + std::to_string(error) +
                         " on " + call.path.toStdString());
            const auto outcome = exportWith({faultRule(call.name, call.number, error)});
            EXPECT_EQ(stateOf(clip), source);
            auto left = filesIn(folder());
            left.removeAll(QStringLiteral("X.mp4"));
            // The size of a clip that cannot be read counts as 0, which needs no shrinking.
            const bool isNew = outcome.result.hasSucceeded() && outcome.result.path != clip;
            if (outcome.result.hasSucceeded()) {
                EXPECT_EQ(decodingErrors(outcome.result.path).toStdString(), "");
            } else {
                EXPECT_NE(outcome.result.message, QString());
                EXPECT_FALSE(outcome.result.isStopped);
            }
            // A file that cannot be deleted stays until the next export.
            if (call.name != "unlinkat") {
                EXPECT_EQ(left.size(), isNew ? 1 : 0) << left.join(u' ').toStdString();
            }
            for (const auto& name : left) {
                QFile::remove(folder() + u'/' + name);
            }
        }
    }
}

TEST_P(ExportFailureTest, ReadErrorInTheMiddleIsReported)
{
    // More than the buffers of the readers hold.
    const auto noisy = clipIn(folder(), QStringLiteral("X.mp4"),
                              {.seconds = 1,
                               .filter = QStringLiteral("noise=alls=60:allf=t"),
                               .encoding = QStringLiteral("-c:v libx264 -preset ultrafast -g 10 -qp 10"),
                               .audio = {},
                               .muxing = QStringLiteral("-movflags faststart")});
    const auto source = stateOf(noisy);
    FileFaults faults(folder());
    // In the last pass. An aspect export has one, and may report its progress only at its start and end.
    const bool hasOnePass = GetParam().run == Aspect.run;
    const auto result = exportOf(noisy, {}, [&](double done) {
        if (hasOnePass || done >= 0.5) {
            faults.use({"pread 0 " + QByteArray::number(EIO) + " X.mp4"});
        }
    });
    EXPECT_EQ(result.message.toStdString(), "Dışa aktarma başarısız: okuma hatası");
    EXPECT_EQ(filesIn(folder()), QStringList{QStringLiteral("X.mp4")});
    EXPECT_EQ(stateOf(noisy), source);
}

TEST_P(ExportFaultTest, InterruptedFileCallIsRepeated)
{
    const auto usual = exportWith({});
    ASSERT_TRUE(usual.result.hasSucceeded());
    for (const auto& call : usual.calls) {
        // The system never interrupts the first, and the reads of the source are many.
        if (call.name == "fstat" || (call.name == "pread" && call.path == "X.mp4")) {
            continue;
        }
        SCOPED_TRACE(call.name.toStdString() + ' ' + std::to_string(call.number) + " on " + call.path.toStdString());
        EXPECT_EQ(exportWith({faultRule(call.name, call.number, EINTR)}).result.message.toStdString(), "");
    }
}

} // namespace
} // namespace quelto
