// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/clip/ClipWriter.h"

#include "tests/capture/clip/SnapshotMaker.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fstream>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::PictureStart;

constexpr int ClipSeconds = 300;

/// A field of /proc/self/status. Units: MiB.
double statusField(const std::string& name)
{
    std::ifstream file("/proc/self/status");
    std::string word;
    while (file >> word && word != name + ":") { }
    double kibibytes = 0;
    file >> kibibytes;
    return kibibytes / 1024;
}

void forgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << 5;
}

template <typename Sample>
QList<std::shared_ptr<const Sample>> repeated(const QList<std::shared_ptr<const Sample>>& second, int times)
{
    QList<std::shared_ptr<const Sample>> all;
    for (int i = 0; i < times; ++i) {
        for (const auto& sample : second) {
            auto copy = std::make_shared<Sample>(*sample);
            copy->presentationTime += i * HostDuration(1s);
            all.append(std::move(copy));
        }
    }
    return all;
}

/// A full buffer of the longest clip, with sound from the system and the microphone.
ReplaySnapshot longSnapshot()
{
    const auto noise = [](double second) { return 0.4 * std::sin(second * second * 9e6); };
    return {.video = repeated(test::pictures(1), ClipSeconds),
            .audio = repeated(test::sound({.value = noise}), ClipSeconds),
            .mic = repeated(test::sound({.value = test::tone(300, 0.1)}), ClipSeconds),
            .chat = {}};
}

class ClipMemoryTest : public testing::Test {
protected:
    ReplaySnapshot m_snapshot = longSnapshot();
    QTemporaryDir m_folder;

    void write(int seconds) const
    {
        ClipWriter::write({.snapshot = m_snapshot,
                           .endTime = PictureStart + std::chrono::seconds(ClipSeconds),
                           .seconds = seconds,
                           .folder = m_folder.path(),
                           .game = QStringLiteral("Game"),
                           .suffix = std::nullopt});
    }
};

TEST_F(ClipMemoryTest, TheLongestClipTakesLittleMemoryAndGivesItBack)
{
    write(1);
    const auto before = statusField("VmRSS");
    forgetPeak();
    write(ClipSeconds);
    RecordProperty("peak_mib", std::to_string(statusField("VmHWM") - before));
    EXPECT_LE(statusField("VmHWM"), before + 16);
    EXPECT_LE(statusField("VmRSS"), before * 1.05);
}

TEST_F(ClipMemoryTest, ManyClipsTakeNoMoreMemoryThanOne)
{
    write(5);
    const auto before = statusField("VmRSS");
    for (int i = 0; i < 75; ++i) {
        write(5);
    }
    EXPECT_LE(statusField("VmRSS"), before + 8);
}

} // namespace
} // namespace quelto
