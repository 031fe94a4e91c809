// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/shared/SharedForQml.h"
#include "ui/shell/LibraryOverview.h"
#include "ui/shell/ShownMatch.h"
#include "ui/shell/WindowCommands.h"

/// Gives QML what only the window's frame shows.
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

struct ShownMatchForQml : SharedForQml<ShownMatch> {
    Q_GADGET
    QML_FOREIGN(quelto::ShownMatch)
    QML_NAMED_ELEMENT(ShownMatch)
    QML_SINGLETON
};

} // namespace quelto
