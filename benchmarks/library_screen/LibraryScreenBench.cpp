// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the library screen with many clips: "bench_library_screen FOLDER", where the folder holds the clips. Prints
// one JSON object: frame rate and frame times during a fling and during a drag from one end to the other, and the
// memory of the process.
#include "base/tasks/MainQueue.h"
#include "base/tasks/SerialQueue.h"
#include "library/thumbnails/ThumbnailCache.h"
#include "ui/icons/Symbols.h"
#include "ui/screens/library/ClipCommands.h"
#include "ui/screens/library/LibraryForQml.h"
#include "ui/theme/ThemeForQml.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>

#include <cstdio>
#include <ctime>

Q_IMPORT_QML_PLUGIN(Quelto_ThemePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_IconsPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_SharedPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_LibraryPlugin)

namespace quelto {
namespace {

constexpr std::chrono::seconds RunTime{6};
// A strong flick. Units: pixels per second.
constexpr qreal FlingSpeed = 5000;

class NoTrash final : public Trash {
public:
    void moveToTrash(const QStringList& /*paths*/, std::function<void()> done) override { done(); }
};

class NoFileManager final : public FileManager {
public:
    void reveal(const QString& /*path*/) override { }
    void openFolder(const QString& /*path*/) override { }
};

class NoPasteboard final : public Pasteboard {
public:
    void setFile(const QString& /*path*/) override { }
};

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

double cpuSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
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
    const auto cpuBefore = cpuSeconds();
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
            .cpuPerSecond = (cpuSeconds() - cpuBefore) / seconds,
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
    const QTemporaryDir temporary;
    AppSettings settings(temporary.filePath(QStringLiteral("Quelto.conf")));
    settings.setSaveFolder(temporary.filePath(QStringLiteral("empty")));
    MainQueue main;
    NoTrash trash;
    NoFileManager files;
    NoPasteboard pasteboard;
    SerialQueue work(QStringLiteral("quelto.library"));
    ClipLibrary library({.settings = settings, .trash = trash, .main = main, .work = work});
    ThumbnailCache thumbnails(main);
    Navigation navigation(main);
    Theme theme(settings);
    ClipCommands commands(
        {.library = library, .files = files, .pasteboard = pasteboard, .settings = settings, .navigation = navigation});
    NavigationForQml::instance = &navigation;
    ThemeForQml::instance = &theme;
    AppSettingsForQml::instance = &settings;
    ClipLibraryForQml::instance = &library;
    ClipCommandsForQml::instance = &commands;
    ThumbnailsForQml::instance = &thumbnails;
    QQmlApplicationEngine engine;
    engine.addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
    engine.addImportPath(QStringLiteral("qrc:/"));
    engine.loadData("import QtQuick\nimport Quelto.Library\nimport Quelto.Theme\nWindow { visible: true; width: 1000; "
                    "height: 780; color: Theme.bg; LibraryView { anchors.fill: parent } }");
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
    auto* cards = window == nullptr ? nullptr : window->findChild<QQuickItem*>(QStringLiteral("cards"));
    if (cards == nullptr) {
        return 1;
    }
    wait(1000);
    const auto empty = privateMemory();
    settings.setSaveFolder(folder);
    while (cards->property("contentHeight").toReal() < 1000) {
        wait(50);
    }
    wait(2000);
    const auto clips = library.clips().size();
    const auto filled = privateMemory();
    const auto end = cards->property("contentHeight").toReal() - cards->height();
    const auto fling = run(*window, *cards, [&](double /*seconds*/) {
        if (cards->property("verticalVelocity").toReal() < FlingSpeed * 0.5) {
            QMetaObject::invokeMethod(cards, "flick", Q_ARG(qreal, 0), Q_ARG(qreal, -FlingSpeed));
        }
    });
    QMetaObject::invokeMethod(cards, "cancelFlick");
    const auto drag = run(*window, *cards, [&](double seconds) {
        const auto progress = seconds / std::chrono::duration<double>(RunTime).count();
        cards->setProperty("contentY", std::min(1.0, progress) * end);
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
} // namespace quelto

int main(int argc, char* argv[])
{
    // Qt's software renderer, as on a machine without a GPU.
    qputenv("QT_QUICK_BACKEND", "software");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication application(argc, argv);
    return argc == 2 ? quelto::bench(QString::fromLocal8Bit(argv[1])) : 2;
}
