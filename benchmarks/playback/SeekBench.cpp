// SPDX-License-Identifier: GPL-3.0-or-later
// Seeks in a clip of the test scene, paused, and prints the milliseconds from each request to the picture with the
// right counter, as a JSON list.
//
//   bench_seek CLIP WIDTHxHEIGHT SECONDS:COUNTER…
#include "base/tasks/BackgroundThreads.h"
#include "base/tasks/MainQueue.h"
#include "playback/mpv/MpvPlayer.h"
#include "playback/mpv/SoftwareVideo.h"

#include <QCoreApplication>
#include <QImage>
#include <QStringList>

#include <bit>
#include <chrono>
#include <clocale>
#include <cstdio>

namespace {

using namespace quelto;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds Timeout{20};
constexpr int Bits = 24;
/// White, black, the counter with the most significant bit first, parity.
constexpr int Cells = Bits + 3;

struct Target {
    double seconds = 0;
    int counter = 0;
};

/// The scene's counter, which is in the upper sixteenth of the picture; -1 if it cannot be read.
int counterOf(const QImage& picture)
{
    if (picture.isNull()) {
        return -1;
    }
    const auto level = [&](int cell) {
        return qGray(picture.pixel((2 * cell + 1) * picture.width() / (2 * Cells), picture.height() / 32));
    };
    const auto white = level(0);
    const auto black = level(1);
    constexpr int MinContrast = 100;
    if (white - black < MinContrast) {
        return -1;
    }
    unsigned bits = 0;
    for (int cell = 2; cell < Cells; ++cell) {
        bits = bits << 1U | (2 * level(cell) > white + black ? 1U : 0U);
    }
    return std::popcount(bits) % 2 == 0 ? static_cast<int>(bits >> 1U) : -1;
}

class SeekBench {
public:
    explicit SeekBench(QSize size) { m_video.setSize(size); }

    bool open(const QString& path)
    {
        m_player.open(path);
        return waitFor(
            [this] { return m_player.frames().nextAfter(0).has_value() && counterOf(m_video.picture()) >= 0; });
    }

    /// Milliseconds; nothing if the picture does not come.
    std::optional<double> seek(const Target& target)
    {
        bool hasEnded = false;
        const auto connection = QObject::connect(&m_player, &Player::changed, [&] { hasEnded = true; });
        const auto start = Clock::now();
        m_player.seek(target.seconds);
        const auto isShown = waitFor([&] { return counterOf(m_video.picture()) == target.counter; });
        const std::chrono::duration<double, std::milli> time = Clock::now() - start;
        // The next seek would wait for the end of this one.
        const auto isDone = isShown && waitFor([&] { return hasEnded; });
        QObject::disconnect(connection);
        return isDone ? std::optional(time.count()) : std::nullopt;
    }

private:
    /// Looks after each event of the player or the output.
    template <typename Condition> static bool waitFor(const Condition& isTrue)
    {
        const auto deadline = Clock::now() + Timeout;
        while (!isTrue()) {
            if (Clock::now() > deadline) {
                return false;
            }
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return true;
    }

    MainQueue m_main;
    BackgroundThreads m_work{QStringLiteral("work"), 1};
    MpvPlayer m_player{{.main = m_main, .work = [this](Task task) { m_work.post(std::move(task)); }}};
    SoftwareVideo m_video{m_player.handle(),
                          {.onReady = [this] { m_main.post([this] { m_player.setOutputReady(); }); },
                           .onPicture = [this] { m_main.post([] {}); }}};
};

QSize sizeOf(const QString& text)
{
    return {text.section(u'x', 0, 0).toInt(), text.section(u'x', 1, 1).toInt()};
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    // libmpv requires it, and the constructor of the application takes the user's.
    std::setlocale(LC_NUMERIC, "C");
    const auto words = QCoreApplication::arguments();
    constexpr qsizetype FirstTarget = 3;
    if (words.size() <= FirstTarget || sizeOf(words[2]).isEmpty()) {
        std::fputs("usage: bench_seek CLIP WIDTHxHEIGHT SECONDS:COUNTER…\n", stderr);
        return 64;
    }
    SeekBench bench(sizeOf(words[2]));
    if (!bench.open(words[1])) {
        std::fputs("the clip shows no counter\n", stderr);
        return 1;
    }
    const auto* separator = "[";
    for (const auto& word : words.sliced(FirstTarget)) {
        const auto time =
            bench.seek({.seconds = word.section(u':', 0, 0).toDouble(), .counter = word.section(u':', 1, 1).toInt()});
        if (!time) {
            std::fprintf(stderr, "no picture for %s\n", qPrintable(word));
            return 1;
        }
        std::printf("%s%.2f", separator, *time);
        separator = ", ";
    }
    std::printf("]\n");
    return 0;
}
