// SPDX-License-Identifier: GPL-3.0-or-later
// Measures typing in the search field of a library with many clips: "bench_library_typing FOLDER", where the folder
// holds the clips. Prints one JSON object. Units: milliseconds of the main thread's CPU time without drawing, from a
// key press until the cards show its result; "shown" is the same in real time.
#include "benchmarks/library_screen/LibraryWindow.h"
#include "ui/screens/library/LibraryModel.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>

#include <cstdio>

namespace quelto::benchmarks {
namespace {

double mainThreadMs()
{
    return cpuSeconds(CLOCK_THREAD_CPUTIME_ID) * 1000;
}

struct Times {
    double mainMs = 0;
    double shownMs = 0;
};

class Typist {
public:
    explicit Typist(LibraryWindow& screen)
        : m_screen(screen)
        , m_model(*screen.window().findChild<LibraryModel*>())
    {
        auto& window = screen.window();
        QObject::connect(&m_model, &LibraryModel::clipsChanged, &window, [this] {
            m_isShown = true;
            // The cards may be the same as before.
            m_screen.window().update();
        });
        QObject::connect(
            &window, &QQuickWindow::beforeSynchronizing, &window, [this] { m_drawingSince = mainThreadMs(); },
            Qt::DirectConnection);
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &window,
            [this] {
                m_drawingMs += mainThreadMs() - m_drawingSince;
                m_isDrawn = m_isShown;
            },
            Qt::DirectConnection);
    }

    const LibraryModel& model() const { return m_model; }

    /// Runs the action and waits until its result is in the cards and drawn.
    Times measure(const std::function<void()>& action)
    {
        m_isShown = false;
        m_isDrawn = false;
        m_drawingMs = 0;
        QElapsedTimer clock;
        clock.start();
        const auto start = mainThreadMs();
        action();
        while (!m_isDrawn) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        const Times times{.mainMs = mainThreadMs() - start - m_drawingMs,
                          .shownMs = static_cast<double>(clock.nsecsElapsed()) / 1e6};
        wait(200);
        return times;
    }

    void press(int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {})
    {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, modifiers, text);
            QCoreApplication::sendEvent(&m_screen.window(), &event);
        }
    }

    void type(QChar letter) { press(letter.toUpper().unicode(), {}, letter); }

private:
    LibraryWindow& m_screen;
    LibraryModel& m_model;
    bool m_isShown = false;
    bool m_isDrawn = false;
    double m_drawingSince = 0;
    double m_drawingMs = 0;
};

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void print(const char* name, const std::vector<Times>& all)
{
    std::vector<double> main;
    std::vector<double> shown;
    for (const auto& times : all) {
        main.push_back(times.mainMs);
        shown.push_back(times.shownMs);
    }
    std::printf("\"%s\": {\"median\": %.2f, \"worst\": %.2f, \"shown\": %.2f, \"worst shown\": %.2f}, ", name,
                median(main), std::ranges::max(main), median(shown), std::ranges::max(shown));
}

int bench(const QString& folder)
{
    LibraryWindow screen;
    screen.show(folder);
    Typist typist(screen);
    typist.press(Qt::Key_F, Qt::ControlModifier);
    wait(200);
    constexpr int Backspaces = 10;
    const auto letters = QStringLiteral("solo kill (ahri");
    std::vector<Times> keys;
    const auto key = [&](const std::function<void()>& press) { keys.push_back(typist.measure(press)); };
    for (const auto letter : letters) {
        key([&] { typist.type(letter); });
    }
    for (int i = 0; i < Backspaces; ++i) {
        key([&] { typist.press(Qt::Key_Backspace); });
    }
    typist.press(Qt::Key_A, Qt::ControlModifier);
    key([&] { typist.press(Qt::Key_Delete); });
    const auto clips = typist.model().count();
    std::vector<Times> newClips(5);
    const auto added = QDir(folder).filePath(QStringLiteral("Dota 2 - 2026-11-01 20.15.07.mp4"));
    for (auto& times : newClips) {
        times = typist.measure([&] {
            if (!QFile::remove(added)) {
                QFile(added).open(QIODevice::WriteOnly);
            }
            screen.library().reload();
        });
    }
    QFile::remove(added);
    std::printf("{");
    print("keys", keys);
    print("new clip", newClips);
    std::printf("\"clips\": %d}\n", clips);
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
