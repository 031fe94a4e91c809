// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/AtomicFile.h"

#include "tests/base/faults/FileFaultRules.h"
#include "tests/base/faults/FileFaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <system_error>

namespace quelto {
namespace {

using test::faultRule;
using test::FileCall;

const QString Name = QStringLiteral("a.mp4");
const QString Abandoned = QStringLiteral(".quelto-1-0.part");
// Large enough that writeback starts while it is written.
const QByteArray Content(5 << 20, 'x');

class AtomicFileFaults : public testing::Test {
protected:
    struct Outcome {
        /// 0 for success.
        int error = 0;
        QList<FileCall> calls;
        qsizetype faults = 0;
        QStringList files;
        bool isWhole = false;
    };

    QTemporaryDir folder;
    test::FileFaults faults{folder.path()};

    /// Writes and publishes a file, in a folder that also has an abandoned file.
    Outcome writeWith(const QList<QByteArray>& rules)
    {
        QFile::remove(folder.filePath(Name));
        EXPECT_TRUE(QFile(folder.filePath(Abandoned)).open(QIODevice::WriteOnly));
        Outcome outcome;
        faults.use(rules);
        try {
            writeFile();
        } catch (const std::system_error& error) {
            outcome.error = error.code().value();
        }
        outcome.calls = faults.calls();
        outcome.faults = std::ranges::count_if(outcome.calls, &FileCall::fault);
        faults.use({});
        QFile file(folder.filePath(Name));
        outcome.isWhole = file.open(QIODevice::ReadOnly) && file.readAll() == Content;
        outcome.files = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
        return outcome;
    }

    QList<FileCall> usualCalls() { return writeWith({}).calls; }

private:
    void writeFile()
    {
        const auto bytes = std::as_bytes(std::span(Content));
        AtomicFile file(folder.path());
        file.write(bytes);
        file.seek(0);
        file.write(bytes.first(1000));
        file.flush();
        EXPECT_TRUE(file.tryPublish(Name));
    }
};

TEST_F(AtomicFileFaults, RepeatsEveryInterruptedCall)
{
    const auto calls = usualCalls();
    ASSERT_GT(calls.size(), 10);
    for (const auto& call : calls) {
        SCOPED_TRACE(call.name.toStdString() + ' ' + std::to_string(call.number));
        const auto outcome = writeWith({faultRule(call.name, call.number, EINTR)});
        EXPECT_EQ(outcome.error, 0);
        EXPECT_EQ(outcome.faults, 1);
        EXPECT_TRUE(outcome.isWhole);
    }
    // An interrupted sweep leaves its files to the next one.
    EXPECT_EQ(writeWith({}).files, QStringList{Name});
}

TEST_F(AtomicFileFaults, RepeatsInterruptedCallsWithoutAtomicRename)
{
    const auto noRename = faultRule("renameat2", 0, EINVAL);
    const auto noLink = faultRule("linkat", 0, EPERM);
    for (const auto& rules : {QList{noRename}, QList{noRename, noLink}}) {
        for (const auto& call : writeWith(rules).calls) {
            SCOPED_TRACE(call.name.toStdString() + ' ' + std::to_string(call.number));
            const auto outcome = writeWith(QList{faultRule(call.name, call.number, EINTR)} + rules);
            EXPECT_EQ(outcome.error, 0);
            EXPECT_TRUE(outcome.isWhole);
        }
    }
    EXPECT_EQ(writeWith({}).files, QStringList{Name});
}

TEST_F(AtomicFileFaults, ContinuesAfterAShortWrite)
{
    for (const int number : {1, 2}) {
        const auto outcome = writeWith({faultRule("write", number, test::ShortWrite)});
        EXPECT_EQ(outcome.error, 0);
        EXPECT_EQ(outcome.faults, 1);
        EXPECT_TRUE(outcome.isWhole);
    }
}

TEST_F(AtomicFileFaults, FailedCallIsReportedOrHarmless)
{
    for (const auto& call : usualCalls()) {
        for (const int error : {ENOSPC, EIO, EACCES}) {
            SCOPED_TRACE(call.name.toStdString() + ' ' + std::to_string(call.number));
            const auto outcome = writeWith({faultRule(call.name, call.number, error)});
            EXPECT_EQ(outcome.faults, 1);
            EXPECT_EQ(outcome.error, outcome.isWhole ? 0 : error);
            EXPECT_EQ(outcome.files.contains(Name), outcome.isWhole) << "a part of a file is under its name";
            EXPECT_EQ(writeWith({}).files, QStringList{Name}) << "a later write removes what is left";
        }
    }
}

TEST_F(AtomicFileFaults, FileCallThatDataDependsOnIsReported)
{
    for (const char* call : {"open", "create", "write", "lseek", "fdatasync", "renameat2"}) {
        EXPECT_EQ(writeWith({faultRule(call, 1, EIO)}).error, EIO) << call;
    }
    // The first call only starts writeback, the second one waits for it.
    EXPECT_EQ(writeWith({faultRule("sync_file_range", 2, EIO)}).error, EIO);
}

} // namespace
} // namespace quelto
