// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/OutOfRangeSetting.h"

#include <QString>

namespace quelto {

/// What the user must know before the program ends.
struct StartupProblem {
    QString title;
    QString text;
};

StartupProblem startupProblem(const OutOfRangeSetting& setting);

/// Tells the user, who may have started the program without a terminal: in a dialog, and returns when it is closed. As
/// a desktop notification if the application has no screen to show a dialog on.
///
/// Thread: main; needs an application object.
void show(const StartupProblem& problem);

} // namespace quelto
