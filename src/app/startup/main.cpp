// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/bus/SessionBusService.h"
#include "app/startup/ApplicationController.h"
#include "app/startup/CommandLine.h"
#include "app/startup/LanguageSwitcher.h"
#include "app/startup/Renderer.h"
#include "app/startup/StartupProblem.h"
#include "app/startup/TerminationSignals.h"
#include "base/language/L10n.h"
#include "base/language/T.h"
#include "base/memory/FreeMemory.h"
#include "platform/ActivationToken.h"

#include <QApplication>
#include <QIcon>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

Q_IMPORT_QML_PLUGIN(Quelto_ThemePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_IconsPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ClipPagePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_LibraryPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_MatchPagePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_MatchesPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_PlayerPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ReviewPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_SettingsPagePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_SharedPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ShellPlugin)

namespace {

constexpr std::chrono::seconds StartupTime{2};
/// Limits the wait for threads that read from a disk that hangs. Longer than the time the trash may take.
constexpr std::chrono::seconds ExitTimeout{10};
constexpr std::chrono::milliseconds QuitCheckInterval{200};

/// Qt calls exit() from the event loop when the display server goes away, while all threads run; static objects would
/// be destroyed under them. This handler lets the running save finish and then ends the process at once.
class AbruptExit {
public:
    explicit AbruptExit(quelto::ApplicationController& controller)
    {
        running = &controller;
        comeFirst();
        // Objects that Qt and the watchers register during start-up would otherwise be destroyed first.
        QObject::connect(controller.window(), &QQuickWindow::frameSwapped, &m_context, &comeFirst,
                         Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
        QTimer::singleShot(StartupTime, &m_context, &comeFirst);
    }
    ~AbruptExit() { running = nullptr; }
    AbruptExit(const AbruptExit&) = delete;
    AbruptExit& operator=(const AbruptExit&) = delete;

private:
    /// Exit handlers run in the reverse order of their registration.
    static void comeFirst()
    {
        std::atexit([] {
            if (running != nullptr) {
                running->finishWriting();
                std::_Exit(EXIT_FAILURE);
            }
        });
    }

    static inline quelto::ApplicationController* running = nullptr;
    QObject m_context;
};

/// Ends the process after a time limit: one that never ends would block the next start.
void endEvenIfAThreadHangs(int result)
{
    std::thread([result] {
        std::this_thread::sleep_for(ExitTimeout);
        std::_Exit(result);
    }).detach();
}

/// The exit code if the command line asks for more than to run.
std::optional<int> answerOnTerminal(int& argc, char* argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    quelto::L10n::use(quelto::storedLanguage(quelto::AppSettings::defaultPath()));
    const auto answer = quelto::answerCommandLine(arguments, [&] {
        const QCoreApplication forTheBus(argc, argv);
        return quelto::requestClip();
    });
    if (!answer) {
        return std::nullopt;
    }
    std::fputs(qUtf8Printable(answer->text), answer->isError() ? stderr : stdout);
    return answer->exitCode;
}

/// Tells the user of a number in the settings file that ends the program, and then lets it.
void endIfASettingIsOutOfRange()
{
    const auto path = quelto::AppSettings::defaultPath();
    if (const auto setting = quelto::findOutOfRangeSetting(path)) {
        const quelto::LanguageSwitcher language(quelto::storedLanguage(path));
        quelto::show(quelto::startupProblem(*setting));
        const quelto::AppSettings ends(path);
    }
}

/// Raises the window of a Quelto that is already running. Returns the exit code then, and nothing if this process is
/// the only one. Waits for one that is quitting. token: allows the other one to raise its window.
std::optional<int> joinRunningInstance(const QByteArray& token)
{
    using quelto::RunningInstance;
    while (!quelto::claimBusName()) {
        switch (quelto::raiseRunningInstance(token)) {
        case RunningInstance::raised:
            return EXIT_SUCCESS;
        case RunningInstance::quitting:
            std::this_thread::sleep_for(QuitCheckInterval);
            break;
        case RunningInstance::unresponsive:
            if (quelto::claimBusName()) {
                // It ended instead of answering.
                return std::nullopt;
            }
            const quelto::LanguageSwitcher language(quelto::storedLanguage(quelto::AppSettings::defaultPath()));
            const auto text = quelto::T("Quelto zaten çalışıyor ama yanıt vermiyor. Onu sonlandırıp yeniden deneyin.");
            std::fputs(qPrintable(text + u'\n'), stderr);
            return EXIT_FAILURE;
        }
    }
    return std::nullopt;
}

/// Whether QApplication can be created; it ends the program otherwise.
bool hasDisplay()
{
    return std::ranges::any_of(std::array{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"},
                               [](const char* name) { return !qEnvironmentVariableIsEmpty(name); });
}

} // namespace

int main(int argc, char* argv[])
{
    quelto::limitMemoryPools();
    // Writing to a closed socket must not end the program.
    std::signal(SIGPIPE, SIG_IGN);
    if (const auto exitCode = answerOnTerminal(argc, argv)) {
        return *exitCode;
    }
    if (!hasDisplay()) {
        const QCoreApplication withoutWindows(argc, argv);
        endIfASettingIsOutOfRange();
    }
    const auto token = quelto::activationToken::present();
    QApplication application(argc, argv);
    // The constructor takes the locale of the user. libmpv reads and writes numbers in that of C.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName(QStringLiteral("Quelto"));
    QApplication::setApplicationVersion(QStringLiteral(QUELTO_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("app.quelto.Quelto"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/app.quelto.Quelto.svg")));
    QApplication::setQuitOnLastWindowClosed(false);

    if (const auto exitCode = joinRunningInstance(token)) {
        return *exitCode;
    }

    endIfASettingIsOutOfRange();

    quelto::chooseRenderer();
    quelto::ApplicationController controller;
    const quelto::TerminationSignals signals([&controller] { controller.systemQuits(); });
    controller.applicationDidFinishLaunching();
    const AbruptExit abruptExit(controller);
    const int result = QApplication::exec();
    // Before the process may be ended early.
    if (!controller.finishWriting()) {
        std::fputs("quelto: a clip was not finished, because its disk does not respond\n", stderr);
        std::_Exit(EXIT_FAILURE);
    }
    endEvenIfAThreadHangs(result);
    return result;
}
