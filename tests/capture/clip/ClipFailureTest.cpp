// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/ClipWriter.h"
#include "capture/clip/RecorderError.h"

#include "tests/base/disk/NtfsDisk.h"
#include "tests/base/disk/SmallDisk.h"
#include "tests/base/faults/FileFaults.h"
#include "tests/capture/clip/SnapshotMaker.h"
#include "tests/media/probe/Probe.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <optional>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::pictures;
using test::PictureStart;
using test::sound;
using test::tone;

ReplaySnapshot someSnapshot()
{
    return {.video = pictures(3),
            .audio = sound({.seconds = 3, .value = tone(400, 0.2)}),
            .mic = sound({.seconds = 3, .value = tone(700, 0.2)}),
            .chat = {}};
}

ClipRequest requestInto(const QString& folder, ReplaySnapshot snapshot = someSnapshot())
{
    return {.snapshot = std::move(snapshot),
            .endTime = PictureStart + 3s,
            .seconds = 3,
            .folder = folder,
            .game = QStringLiteral("Game"),
            .suffix = std::nullopt};
}

/// The message that the user sees; empty if the clip was saved.
QString messageOf(const ClipRequest& request)
{
    try {
        ClipWriter::write(request);
    } catch (const RecorderError& error) {
        return error.message();
    }
    return {};
}

QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden);
}

TEST(ClipFailure, MissingKeyFrameIsAnEmptyBuffer)
{
    const QTemporaryDir folder;
    EXPECT_EQ(messageOf(requestInto(folder.path(), {})), QStringLiteral("Tamponda henüz görüntü yok."));
    auto snapshot = someSnapshot();
    snapshot.video.removeIf([](const EncodedFramePtr& sample) { return sample->isKeyframe(); });
    EXPECT_EQ(messageOf(requestInto(folder.path(), snapshot)), QStringLiteral("Tamponda henüz görüntü yok."));
    EXPECT_EQ(filesIn(folder.path()), QStringList{});
}

TEST(ClipFailure, FullDiskLeavesNoFileAndTheNextSaveSucceeds)
{
    const test::SmallDisk disk(600 * 1024);
    if (!disk.isMounted()) {
        GTEST_SKIP() << "only root may mount a small disk";
    }
    QFile ballast(disk.path() + QStringLiteral("/ballast"));
    ASSERT_TRUE(ballast.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    ASSERT_EQ(ballast.write(QByteArray(550 * 1024, 'x')), 550 * 1024);
    const auto request = requestInto(disk.path());
    EXPECT_EQ(messageOf(request),
              QStringLiteral("Klip yazılamadı: Diskte yer kalmadı. Yer açın veya başka bir kayıt klasörü seçin."));
    EXPECT_EQ(filesIn(disk.path()), QStringList{QStringLiteral("ballast")});

    ASSERT_TRUE(ballast.resize(0));
    EXPECT_EQ(messageOf(request), QString());
    EXPECT_EQ(filesIn(disk.path()).size(), 2);
}

TEST(ClipFailure, ReportsAReadOnlyFolder)
{
    test::SmallDisk disk(600 * 1024);
    if (!disk.isMounted() || !disk.makeReadOnly()) {
        GTEST_SKIP() << "only root may mount a small disk";
    }
    EXPECT_EQ(messageOf(requestInto(disk.path())),
              QStringLiteral("Klip yazılamadı: Kayıt klasörü salt okunur. Başka bir kayıt klasörü seçin."));
    EXPECT_EQ(messageOf(requestInto(disk.path() + QStringLiteral("/deeper"))),
              QStringLiteral("Klip yazılamadı: Kayıt klasörü salt okunur. Başka bir kayıt klasörü seçin."));
}

TEST(ClipFailure, ReportsAFileInPlaceOfTheFolder)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("Quelto")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const auto expected = QStringLiteral("Klip yazılamadı: Kayıt klasörünün yolunda bir dosya duruyor. Başka bir kayıt "
                                         "klasörü seçin.");
    EXPECT_EQ(messageOf(requestInto(file.fileName())), expected);
    EXPECT_EQ(messageOf(requestInto(file.fileName() + QStringLiteral("/deeper"))), expected);
}

TEST(ClipFailure, ReportsAnInvalidFolderName)
{
    const QTemporaryDir folder;
    EXPECT_EQ(messageOf(requestInto(folder.filePath(QString(400, u'x')))),
              QStringLiteral("Klip yazılamadı: Klibin yolu çok uzun. Yolu daha kısa bir kayıt klasörü seçin."));
    EXPECT_NE(messageOf(requestInto(QString())), QString());
}

TEST(ClipFailure, CreatesADeletedFolderAgain)
{
    const QTemporaryDir parent;
    const auto folder = parent.filePath(QStringLiteral("Quelto"));
    EXPECT_EQ(messageOf(requestInto(folder)), QString());
    ASSERT_TRUE(QDir(folder).removeRecursively());
    EXPECT_EQ(messageOf(requestInto(folder)), QString());
    EXPECT_EQ(filesIn(folder).size(), 1);
}

TEST(ClipFailure, InterruptedFileCallsAreRepeated)
{
    const QTemporaryDir parent;
    const auto folder = parent.filePath(QStringLiteral("Quelto"));
    test::FileFaults faults(folder);
    const auto request = requestInto(folder, {.video = pictures(3), .audio = {}, .mic = {}, .chat = {}});
    ASSERT_EQ(messageOf(request), QString());
    const auto calls = faults.calls();
    ASSERT_GT(calls.size(), 10);
    for (const auto& call : calls) {
        ASSERT_TRUE(QDir(folder).removeRecursively());
        faults.use({test::faultRule(call.name, call.number, EINTR)});
        EXPECT_EQ(messageOf(request), QString()) << call.name.toStdString() << ' ' << call.number;
        EXPECT_EQ(filesIn(folder).size(), 1);
    }
}

ClipRequest requestWithRejectedName(const QString& folder)
{
    auto request = requestInto(folder, {.video = pictures(3), .audio = {}, .mic = {}, .chat = {}});
    request.game = QStringLiteral("What? \"Game\" <2>|*. ");
    request.suffix = QStringLiteral("[ORTA 45] Who? .");
    return request;
}

/// How a file system reports that it rejects a name: the error of a call for names that match a pattern.
struct Rejection {
    const char* fileSystem;
    QList<QByteArray> rules;
};

class ClipNameRejection : public testing::TestWithParam<Rejection> { };

TEST_P(ClipNameRejection, GivesTheClipAPortableName)
{
    const QTemporaryDir folder;
    std::optional<test::FileFaults> faults(std::in_place, folder.path());
    faults->use(GetParam().rules);
    const auto request = requestWithRejectedName(folder.path());
    const auto path = ClipWriter::write(request).path;
    // Qt starts programs on a stack that is too small for calls that are made to fail.
    faults.reset();
    const auto name = QFileInfo(path).fileName();
    EXPECT_TRUE(name.startsWith(QStringLiteral("What- -Game- -2---.  - "))) << name.toStdString();
    EXPECT_TRUE(name.endsWith(QStringLiteral(" [ORTA 45] Who- ..mp4"))) << name.toStdString();
    EXPECT_EQ(filesIn(folder.path()), QStringList{name});
    EXPECT_EQ(test::decodingErrors(path), "");
}

QByteArray rejecting(const char* call, int error)
{
    return QByteArray(call) + " 0 " + QByteArray::number(error) + " *[?*\"<>|]*";
}

INSTANTIATE_TEST_SUITE_P(
    FileSystems, ClipNameRejection,
    testing::Values(
        Rejection{"Vfat", {rejecting("renameat2", EINVAL), rejecting("linkat", EPERM), rejecting("create", EINVAL)}},
        Rejection{"Ntfs3g", {test::faultRule("renameat2", 0, EINVAL), rejecting("linkat", EINVAL)}},
        Rejection{"FuseExfat",
                  {test::faultRule("renameat2", 0, EINVAL), test::faultRule("linkat", 0, EPERM),
                   rejecting("create", ENOENT)}}),
    [](const auto& each) { return std::string(each.param.fileSystem); });

TEST(ClipFailure, NamesThatNtfsRejectsBecomePortable)
{
    const test::NtfsDisk disk;
    if (!disk.isMounted()) {
        GTEST_SKIP() << "cannot mount NTFS, which requires root, FUSE and the package ntfs-3g";
    }
    const auto request = requestWithRejectedName(disk.path());
    EXPECT_EQ(messageOf(request), QString());
    EXPECT_EQ(messageOf(request), QString());
    EXPECT_EQ(QDir(disk.path()).entryList({QStringLiteral("What- *.mp4")}, QDir::Files).size(), 2);
    EXPECT_EQ(filesIn(disk.path()).size(), 2);
}

TEST(ClipFailure, NameThatTheFileSystemAcceptsIsKept)
{
    const QTemporaryDir folder;
    EXPECT_TRUE(ClipWriter::write(requestWithRejectedName(folder.path()))
                    .path.startsWith(folder.filePath(QStringLiteral("What? \"Game\" <2>|*.  - "))));
}

TEST(ClipFailure, ImplausibleTimestampsAreAnError)
{
    const QTemporaryDir folder;
    for (const auto first : {HostTime::min(), PictureStart - 100h}) {
        auto request = requestInto(folder.path());
        auto sample = std::make_shared<EncodedFrame>(*request.snapshot.video.front());
        sample->presentationTime = first;
        request.snapshot.video.front() = sample;
        request.seconds = std::numeric_limits<int>::max();
        EXPECT_TRUE(messageOf(request).startsWith(QStringLiteral("Klip yazılamadı: ")))
            << toSeconds(first.time_since_epoch());
    }
    EXPECT_EQ(filesIn(folder.path()), QStringList{});
}

TEST(ClipFailure, SkipsCorruptAudioAndSavesTheClip)
{
    const QTemporaryDir folder;
    auto snapshot = someSnapshot();
    const auto changed = [](const AudioBufferPtr& sample, auto change) {
        auto copy = std::make_shared<AudioBuffer>(*sample);
        change(*copy);
        return copy;
    };
    auto& audio = snapshot.audio;
    audio[0] = changed(audio[0], [](AudioBuffer& sample) { sample.presentationTime = HostTime::min(); });
    audio[1] = changed(audio[1], [](AudioBuffer& sample) { sample.presentationTime = HostTime::max(); });
    audio[2] = changed(audio[2], [](AudioBuffer& sample) { sample.data.clear(); });
    audio[3] = changed(audio[3], [](AudioBuffer& sample) { sample.frames = -1; });
    audio[4] = changed(audio[4], [](AudioBuffer& sample) { sample.frames = std::numeric_limits<int>::max(); });
    audio[5] = changed(audio[5], [](AudioBuffer& sample) { sample.format.encoding = PcmEncoding::unknown; });
    audio[6] = changed(audio[6], [](AudioBuffer& sample) { sample.format.sampleRate = 0; });
    audio[7] = changed(audio[7], [](AudioBuffer& sample) { sample.format.channels = 0; });
    audio[8] = changed(audio[8],
                       [](AudioBuffer& sample) { std::fill(sample.data.begin(), sample.data.end(), std::byte{0xFF}); });
    const auto path = ClipWriter::write(requestInto(folder.path(), snapshot)).path;
    EXPECT_EQ(test::decodingErrors(path), "");
    EXPECT_EQ(test::streamsOf(path).size(), 5);
    EXPECT_NEAR(test::levelOf(test::decodeAudio(path, 1), 400, 0), 0.2, 0.02);
}

TEST(ClipFailure, SurvivesCorruptFrames)
{
    const QTemporaryDir folder;
    auto snapshot = someSnapshot();
    for (qsizetype i = 0; i < snapshot.video.size(); ++i) {
        auto copy = std::make_shared<EncodedFrame>(*snapshot.video[i]);
        switch (i % 4) {
        case 0:
            copy->data.clear();
            break;
        case 1:
            copy->data.resize(copy->data.size() / 2);
            break;
        case 2:
            copy->data.assign(100, std::byte{0});
            break;
        default:
            copy->presentationTime -= 50ms;
        }
        snapshot.video[i] = copy;
    }
    EXPECT_EQ(messageOf(requestInto(folder.path(), snapshot)), QString());

    for (auto& sample : snapshot.video) {
        auto copy = std::make_shared<EncodedFrame>(*sample);
        copy->data.clear();
        sample = copy;
    }
    EXPECT_TRUE(messageOf(requestInto(folder.path(), snapshot)).startsWith(QStringLiteral("Klip yazılamadı: ")));
    EXPECT_EQ(filesIn(folder.path()).size(), 1);
}

} // namespace
} // namespace quelto
