// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <csignal>
#include <cstring>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quelto::test {

ChildProcess::ChildProcess(const QStringList& command, const Environment& changes, int passedDescriptor)
{
    std::vector<QByteArray> words;
    for (const auto& word : command) {
        words.push_back(word.toUtf8());
    }
    for (auto** entry = environ; *entry; ++entry) {
        const QByteArray name(*entry, static_cast<qsizetype>(std::strcspn(*entry, "=")));
        if (!changes.contains(name)) {
            words.emplace_back(*entry);
        }
    }
    for (const auto& [name, value] : changes) {
        words.push_back(name + '=' + value);
    }
    std::vector<char*> arguments;
    std::vector<char*> environment;
    for (std::size_t index = 0; index < words.size(); ++index) {
        (index < static_cast<std::size_t>(command.size()) ? arguments : environment).push_back(words[index].data());
    }
    arguments.push_back(nullptr);
    environment.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    if (passedDescriptor >= 0) {
        posix_spawn_file_actions_adddup2(&actions, passedDescriptor, ChildDescriptor);
    }
    const int error = posix_spawnp(&m_process, arguments[0], &actions, nullptr, arguments.data(), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throw std::system_error(error, std::system_category());
    }
}

ChildProcess::~ChildProcess()
{
    end(SIGTERM);
}

void ChildProcess::end(int signal)
{
    if (m_process > 0) {
        ::kill(m_process, signal);
        wait();
    }
}

int ChildProcess::wait()
{
    int status = 0;
    waitpid(std::exchange(m_process, 0), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TestServer::TestServer(const QString& size, const QStringList& extraArguments)
{
    int descriptors[2];
    if (pipe2(descriptors, O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::system_category());
    }
    m_process = std::make_unique<ChildProcess>(QStringList{QStringLiteral("Xvfb"), QStringLiteral("-displayfd"),
                                                           QString::number(ChildProcess::ChildDescriptor),
                                                           QStringLiteral("-screen"), QStringLiteral("0"),
                                                           size + QStringLiteral("x24"), QStringLiteral("-nolisten"),
                                                           QStringLiteral("tcp"), QStringLiteral("-noreset")} +
                                                   extraArguments,
                                               ChildProcess::Environment{}, descriptors[1]);
    close(descriptors[1]);
    QFile output;
    output.open(descriptors[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    const auto number = output.readLine().trimmed();
    if (number.isEmpty()) {
        throw std::runtime_error("the X server did not start");
    }
    m_name = QStringLiteral(":") + QString::fromLatin1(number);
}

void TestServer::kill()
{
    m_process->end(SIGKILL);
}

bool TestServer::run(const QString& program, const QStringList& arguments) const
{
    return ChildProcess(QStringList{program} + arguments, {{"DISPLAY", m_name.toUtf8()}}).wait() == 0;
}

Painter::Painter(const QString& displayName)
    : m_connection(X11Connection::tryOpen(displayName).value())
    , m_graphics(xcb_generate_id(m_connection.get()))
{
    const std::uint32_t includeInferiors = XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS;
    xcb_create_gc(server(), m_graphics, m_connection.root(), XCB_GC_SUBWINDOW_MODE, &includeInferiors);
}

void Painter::fill(const QRect& area, std::uint32_t rgb)
{
    xcb_change_gc(server(), m_graphics, XCB_GC_FOREGROUND, &rgb);
    const xcb_rectangle_t rectangle{.x = static_cast<std::int16_t>(area.x()),
                                    .y = static_cast<std::int16_t>(area.y()),
                                    .width = static_cast<std::uint16_t>(area.width()),
                                    .height = static_cast<std::uint16_t>(area.height())};
    xcb_poly_fill_rectangle(server(), m_connection.root(), m_graphics, 1, &rectangle);
    xcb_flush(server());
}

void Painter::warpPointer(QPoint position)
{
    xcb_warp_pointer(server(), XCB_NONE, m_connection.root(), 0, 0, 0, 0, static_cast<std::int16_t>(position.x()),
                     static_cast<std::int16_t>(position.y()));
    xcb_flush(server());
}

bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds timeout)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > timeout.count()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(2);
    }
    return true;
}

} // namespace quelto::test
