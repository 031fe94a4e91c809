// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace quelto {

/// What the program prints and its exit code, if its command line asks for more than to run.
struct CommandLineAnswer {
    QString text;
    int exitCode = 0;

    bool isError() const { return exitCode != 0; }
    bool operator==(const CommandLineAnswer&) const = default;
};

/// Answers the options of Quelto itself, and rejects what is neither one of them nor one of Qt; nothing if the program
/// is to run. `arguments` are those behind the program's name. `saveClip` asks the running Quelto for a clip and
/// returns a sentence if that fails. Needs neither an application object nor a display.
std::optional<CommandLineAnswer> answerCommandLine(const QStringList& arguments,
                                                   const std::function<std::optional<QString>()>& saveClip);

} // namespace quelto
