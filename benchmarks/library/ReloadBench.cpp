// SPDX-License-Identifier: GPL-3.0-or-later
// Measures a reload of the library: the time from the request to the new list, and the main-thread time in it.
//
//   bench_library_reload make FOLDER COUNT    fills a folder with empty clips with names like the recorder's
//   bench_library_reload run FOLDER           reloads it with a warm cache and prints medians in milliseconds, as JSON
#include "base/tasks/MainQueue.h"
#include "base/tasks/SerialQueue.h"
#include "library/clips/ClipLibrary.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <array>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace quelto;
using Clock = std::chrono::steady_clock;

// Even: the extra clip is added and removed in turn, so the folder ends up unchanged.
constexpr int RunCount = 16;

class NoTrash final : public Trash {
public:
    void moveToTrash(const QStringList& /*paths*/, std::function<void()> /*done*/) override { }
};

/// The main queue; measures the run time of its tasks.
class TimedMainQueue final : public TaskQueue {
public:
    void post(Task task) override
    {
        m_queue.post([this, task = std::move(task)] {
            const auto start = Clock::now();
            task();
            busy += Clock::now() - start;
        });
    }
    void postAfter(HostDuration delay, Task task) override { m_queue.postAfter(delay, std::move(task)); }

    Clock::duration busy{};

private:
    MainQueue m_queue;
};

double milliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void makeClips(const QString& path, int count)
{
    constexpr std::array Games{"Dota 2", "League of Legends", "World of Warcraft", "Masaüstü"};
    constexpr std::array Suffixes{"", " [EFSANE 95] RAMPAGE (Zeus)", " [BASIT 15] Solo Kill (Ahri)", " (Discord)"};
    const QDateTime first(QDate(2024, 1, 1), QTime(0, 0));
    QDir().mkpath(path);
    for (int i = 0; i < count; ++i) {
        const auto date = first.addSecs(600LL * i);
        const auto kind = static_cast<std::size_t>(i) % Games.size();
        const auto name =
            QStringLiteral("%1/%2 - %3%4.mp4")
                .arg(path, QString::fromUtf8(Games[kind]), date.toString(QStringLiteral("yyyy-MM-dd HH.mm.ss")),
                     QString::fromUtf8(Suffixes[kind]));
        const int file = ::open(QFile::encodeName(name).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        const timespec time{.tv_sec = date.toSecsSinceEpoch(), .tv_nsec = 0};
        const std::array times{time, time};
        ::futimens(file, times.data());
        ::close(file);
    }
}

/// Reloads the library repeatedly; calls `prepare` before each reload.
void measure(const char* what, ClipLibrary& library, TimedMainQueue& main, const std::function<void()>& prepare)
{
    std::vector<double> total;
    std::vector<double> busy;
    for (int i = 0; i < RunCount; ++i) {
        prepare();
        bool isDone = false;
        main.busy = {};
        const auto start = Clock::now();
        library.reload([&isDone] { isDone = true; });
        while (!isDone) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        total.push_back(milliseconds(Clock::now() - start));
        busy.push_back(milliseconds(main.busy));
    }
    std::printf(R"("%s": %.2f, "%s main": %.2f, )", what, median(total), what, median(busy));
}

int run(const QString& folder)
{
    const QTemporaryDir configuration;
    AppSettings settings(configuration.filePath(QStringLiteral("Quelto.conf")));
    settings.setSaveFolder(folder);
    NoTrash trash;
    TimedMainQueue main;
    SerialQueue work(QStringLiteral("quelto.library"));
    const auto launched = Clock::now();
    ClipLibrary library({.settings = settings, .trash = trash, .main = main, .work = work});
    while (!library.isLoaded()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    std::printf(R"({"first": %.2f, )", milliseconds(Clock::now() - launched));
    measure("unchanged", library, main, [] {});
    const auto extra = QDir(folder).filePath(QStringLiteral("Dota 2 - 2026-11-01 20.15.07.mp4"));
    measure("one change", library, main, [&] {
        if (!QFile::remove(extra)) {
            QFile(extra).open(QIODevice::WriteOnly);
        }
    });
    QFile::remove(extra);
    const auto start = Clock::now();
    const auto games = library.games();
    std::printf(R"("games": %.2f, "clips": %lld})"
                "\n",
                milliseconds(Clock::now() - start), static_cast<long long>(library.clips().size()));
    return games.isEmpty() ? 1 : 0;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const QCoreApplication application(argumentCount, arguments);
    const auto words = QCoreApplication::arguments();
    if (words.size() == 4 && words[1] == u"make") {
        makeClips(words[2], words[3].toInt());
        return 0;
    }
    if (words.size() == 3 && words[1] == u"run") {
        return run(words[2]);
    }
    std::fputs("usage: bench_library_reload make FOLDER COUNT | run FOLDER\n", stderr);
    return 64;
}
