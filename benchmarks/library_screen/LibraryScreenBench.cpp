// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the library screen with many clips: "bench_library_screen FOLDER", where the folder holds the clips. Prints
// one JSON object: frame rate and frame times during a fling and during a drag from one end to the other, and the
// memory of the process.
#include "benchmarks/library_screen/LibraryWindow.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>

#include <cstdio>

namespace quelto::benchmarks {
namespace {

constexpr std::chrono::seconds RunTime{6};
// A strong flick. Units: pixels per second.
constexpr qreal FlingSpeed = 5000;

/// Private dirty memory of the process, including swap. Units: MiB.
double privateMemory()
{
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    qint64 kilobytes = 0;
    if (file.open(QIODevice::ReadOnly)) {
        for (const auto& line : file.readAll().split('\n')) {
            if (line.startsWith("Private_Dirty:") || line.startsWith("Swap:")) {
                kilobytes += line.simplified().split(' ').value(1).toLongLong();
            }
        }
    }
    return static_cast<double>(kilobytes) / 1024;
}

struct Figures {
    double framesPerSecond = 0;
    double medianMs = 0;
    double percentile99Ms = 0;
    double worstMs = 0;
    double cpuPerSecond = 0;
    double pixels = 0;
};

/// Renders frames for the run time; calls `step` before each frame.
Figures run(QQuickWindow& window, QQuickItem& cards, const std::function<void(double seconds)>& step)
{
    std::vector<double> frameTimes;
    QElapsedTimer sinceFrame;
    QElapsedTimer clock;
    const auto cpuBefore = cpuSeconds(CLOCK_PROCESS_CPUTIME_ID);
    const auto top = cards.property("contentY").toReal();
    clock.start();
    sinceFrame.start();
    QEventLoop loop;
    const auto connection = QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, [&] {
        frameTimes.push_back(static_cast<double>(sinceFrame.nsecsElapsed()) / 1e6);
        sinceFrame.restart();
        if (clock.elapsed() >= std::chrono::milliseconds(RunTime).count()) {
            loop.quit();
            return;
        }
        step(static_cast<double>(clock.elapsed()) / 1000);
        window.update();
    });
    step(0);
    window.update();
    loop.exec();
    QObject::disconnect(connection);
    const auto seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
    std::ranges::sort(frameTimes);
    return {.framesPerSecond = static_cast<double>(frameTimes.size()) / seconds,
            .medianMs = frameTimes.at(frameTimes.size() / 2),
            .percentile99Ms = frameTimes.at(frameTimes.size() * 99 / 100),
            .worstMs = frameTimes.back(),
            .cpuPerSecond = (cpuSeconds(CLOCK_PROCESS_CPUTIME_ID) - cpuBefore) / seconds,
            .pixels = cards.property("contentY").toReal() - top};
}

void print(const char* name, const Figures& figures)
{
    std::printf("\"%s\": {\"fps\": %.1f, \"median\": %.2f, \"percentile99\": %.2f, \"worst\": %.2f, \"cpu\": %.2f, "
                "\"pixels\": %.0f}, ",
                name, figures.framesPerSecond, figures.medianMs, figures.percentile99Ms, figures.worstMs,
                figures.cpuPerSecond, figures.pixels);
}

int bench(const QString& folder)
{
    LibraryWindow screen;
    auto& window = screen.window();
    auto& cards = screen.cards();
    const auto empty = privateMemory();
    screen.show(folder);
    const auto clips = screen.library().clips().size();
    const auto filled = privateMemory();
    const auto end = cards.property("contentHeight").toReal() - cards.height();
    const auto fling = run(window, cards, [&](double /*seconds*/) {
        if (cards.property("verticalVelocity").toReal() < FlingSpeed * 0.5) {
            QMetaObject::invokeMethod(&cards, "flick", Q_ARG(qreal, 0), Q_ARG(qreal, -FlingSpeed));
        }
    });
    QMetaObject::invokeMethod(&cards, "cancelFlick");
    const auto drag = run(window, cards, [&](double seconds) {
        const auto progress = seconds / std::chrono::duration<double>(RunTime).count();
        cards.setProperty("contentY", std::min(1.0, progress) * end);
    });
    wait(1000);
    const auto after = privateMemory();
    std::printf("{");
    print("fling", fling);
    print("drag", drag);
    std::printf("\"clips\": %lld, \"empty\": %.1f, \"filled\": %.1f, \"after\": %.1f}\n", static_cast<long long>(clips),
                empty, filled, after);
    return 0;
}

} // namespace
} // namespace quelto::benchmarks

int main(int argc, char* argv[])
{
    quelto::benchmarks::useOffscreenWindow();
    const QGuiApplication application(argc, argv);
    return argc == 2 ? quelto::benchmarks::bench(QString::fromLocal8Bit(argv[1])) : 2;
}
