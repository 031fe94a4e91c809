// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>
#include <vector>

namespace quelto::pipewire {

ChildProcess::ChildProcess(const QString& program, const QStringList& arguments)
{
    std::vector<QByteArray> words = {program.toUtf8()};
    for (const QString& argument : arguments) {
        words.push_back(argument.toUtf8());
    }
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (QByteArray& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);

    std::array<int, 2> input = {};
    std::array<int, 2> output = {};
    if (pipe2(input.data(), O_CLOEXEC) != 0 || pipe2(output.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("cannot create a pipe");
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    const int error = posix_spawnp(&m_pid, words[0].constData(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(input[0]);
    close(output[1]);
    m_input = input[1];
    m_output = output[0];
    if (error != 0) {
        close(m_input);
        close(m_output);
        throw std::runtime_error("cannot start " + words[0].toStdString());
    }
}

ChildProcess::~ChildProcess()
{
    // First, because a process that blocks on a full pipe would never exit.
    close(m_output);
    wait();
}

QByteArray ChildProcess::readAvailable()
{
    QByteArray text;
    pollfd poller = {.fd = m_output, .events = POLLIN, .revents = 0};
    std::array<char, 4096> part = {};
    while (poll(&poller, 1, 0) > 0) {
        const ssize_t count = read(m_output, part.data(), part.size());
        if (count <= 0) {
            break;
        }
        text.append(part.data(), count);
    }
    return text;
}

QByteArray ChildProcess::readAll()
{
    QByteArray text;
    std::array<char, 4096> part = {};
    for (ssize_t count = 0; (count = read(m_output, part.data(), part.size())) > 0;) {
        text.append(part.data(), count);
    }
    return text;
}

void ChildProcess::terminate()
{
    if (m_pid >= 0) {
        kill(m_pid, SIGTERM);
    }
}

int ChildProcess::wait()
{
    if (m_pid >= 0) {
        close(m_input);
        waitpid(m_pid, &m_status, 0);
        m_pid = -1;
    }
    return WIFEXITED(m_status) ? WEXITSTATUS(m_status) : 128 + WTERMSIG(m_status);
}

} // namespace quelto::pipewire
