// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/shared/SharedForQml.h"
#include "ui/shell/LibraryOverview.h"
#include "ui/shell/QuitQuestion.h"
#include "ui/shell/SaveFailure.h"
#include "ui/shell/WindowCommands.h"
#include "updates/UpdateChecker.h"

/// Registers the objects that only the window shell uses in QML. Each instance is set before the first file loads.
namespace quelto {

struct WindowCommandsForQml : SharedForQml<WindowCommands> {
    Q_GADGET
    QML_FOREIGN(quelto::WindowCommands)
    QML_NAMED_ELEMENT(WindowCommands)
    QML_SINGLETON
};

struct LibraryOverviewForQml : SharedForQml<LibraryOverview> {
    Q_GADGET
    QML_FOREIGN(quelto::LibraryOverview)
    QML_NAMED_ELEMENT(LibraryOverview)
    QML_SINGLETON
};

struct GameListForQml {
    Q_GADGET
    QML_FOREIGN(quelto::GameList)
    QML_ANONYMOUS
};

struct SaveFailureForQml : SharedForQml<SaveFailure> {
    Q_GADGET
    QML_FOREIGN(quelto::SaveFailure)
    QML_NAMED_ELEMENT(SaveFailure)
    QML_SINGLETON
};

struct QuitQuestionForQml : SharedForQml<QuitQuestion> {
    Q_GADGET
    QML_FOREIGN(quelto::QuitQuestion)
    QML_NAMED_ELEMENT(QuitQuestion)
    QML_SINGLETON
};

struct UpdateCheckerForQml : SharedForQml<UpdateChecker> {
    Q_GADGET
    QML_FOREIGN(quelto::UpdateChecker)
    QML_NAMED_ELEMENT(UpdateChecker)
    QML_SINGLETON
};

} // namespace quelto
