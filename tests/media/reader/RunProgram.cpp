// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/reader/RunProgram.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <system_error>

namespace quelto::test {

int runProgram(std::vector<QByteArray> command, const QByteArray& output, const QByteArray& errors)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (auto& argument : command) {
        arguments.push_back(argument.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    constexpr int Mode = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.constData(), Mode, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.constData(), Mode, 0600);
    pid_t child = 0;
    const int error = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (error != 0 || waitpid(child, &status, 0) < 0) {
        throw std::system_error(error != 0 ? error : errno, std::system_category());
    }
    return status;
}

} // namespace quelto::test
