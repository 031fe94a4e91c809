// SPDX-License-Identifier: GPL-3.0-or-later
// What the library's screen costs with many clips: "bench_library_screen FOLDER". The folder holds the clips. Prints
// one JSON object: frames a second and the longest waits for one while the screen is flung and while it is dragged from
// one end to the other, and the memory that the program takes.
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
// Units: pixels a second, as a strong flick of a finger.
constexpr qreal FlingSpeed = 5000;

class NoTrash final : public Trash {
public:
    void recycle(const QStringList& /*paths*/, std::function<void()> done) override { done(); }
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

/// Units: MiB, of what this process alone has written, in memory or swapped out.
double memory()
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
    double hundredthMs = 0;
    double worstMs = 0;
    double cpuPerSecond = 0;
    double pixels = 0;
};

/// Calls the step before each frame for the time of a run.
Figures run(QQuickWindow& window, QQuickItem& cards, const std::function<void(double seconds)>& step)
{
    std::vector<double> gaps;
    QElapsedTimer since;
    QElapsedTimer clock;
    const auto before = cpuSeconds();
    const auto top = cards.property("contentY").toReal();
    clock.start();
    since.start();
    QEventLoop loop;
    const auto connection = QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, [&] {
        gaps.push_back(static_cast<double>(since.nsecsElapsed()) / 1e6);
        since.restart();
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
    std::ranges::sort(gaps);
    return {.framesPerSecond = static_cast<double>(gaps.size()) / seconds,
            .medianMs = gaps.at(gaps.size() / 2),
            .hundredthMs = gaps.at(gaps.size() * 99 / 100),
            .worstMs = gaps.back(),
            .cpuPerSecond = (cpuSeconds() - before) / seconds,
            .pixels = cards.property("contentY").toReal() - top};
}

void print(const char* name, const Figures& figures)
{
    std::printf("\"%s\": {\"fps\": %.1f, \"median\": %.2f, \"hundredth\": %.2f, \"worst\": %.2f, \"cpu\": %.2f, "
                "\"pixels\": %.0f}, ",
                name, figures.framesPerSecond, figures.medianMs, figures.hundredthMs, figures.worstMs,
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
    ClipLibrary library(
        {.settings = settings, .trash = trash, .files = files, .pasteboard = pasteboard, .main = main, .work = work});
    ThumbnailCache thumbnails(main);
    Navigation navigation(main);
    Theme theme(settings);
    ClipCommands commands({.library = library, .files = files, .settings = settings, .navigation = navigation});
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
    const auto empty = memory();
    settings.setSaveFolder(folder);
    while (cards->property("contentHeight").toReal() < 1000) {
        wait(50);
    }
    wait(2000);
    const auto clips = library.clips().size();
    const auto filled = memory();
    const auto end = cards->property("contentHeight").toReal() - cards->height();
    const auto flung = run(*window, *cards, [&](double /*seconds*/) {
        if (cards->property("verticalVelocity").toReal() < FlingSpeed * 0.5) {
            QMetaObject::invokeMethod(cards, "flick", Q_ARG(qreal, 0), Q_ARG(qreal, -FlingSpeed));
        }
    });
    QMetaObject::invokeMethod(cards, "cancelFlick");
    const auto dragged = run(*window, *cards, [&](double seconds) {
        const auto part = seconds / std::chrono::duration<double>(RunTime).count();
        cards->setProperty("contentY", std::min(1.0, part) * end);
    });
    wait(1000);
    const auto after = memory();
    std::printf("{");
    print("flung", flung);
    print("dragged", dragged);
    std::printf("\"clips\": %lld, \"empty\": %.1f, \"filled\": %.1f, \"after\": %.1f}\n", static_cast<long long>(clips),
                empty, filled, after);
    return 0;
}

} // namespace
} // namespace quelto

int main(int argc, char* argv[])
{
    // As on a machine without a GPU.
    qputenv("QT_QUICK_BACKEND", "software");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication application(argc, argv);
    return argc == 2 ? quelto::bench(QString::fromLocal8Bit(argv[1])) : 2;
}
