// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/library/CardSlots.h"
#include "ui/screens/library/ClipCommands.h"
#include "ui/screens/library/DaySlots.h"
#include "ui/shared/SharedForQml.h"

/// Gives QML what the library's cards need. Each instance is set before the first file is loaded.
namespace quelto {

class ThumbnailCache;

struct ClipCommandsForQml : SharedForQml<ClipCommands> {
    Q_GADGET
    QML_FOREIGN(quelto::ClipCommands)
    QML_NAMED_ELEMENT(ClipCommands)
    QML_SINGLETON
};

struct CardSlotsForQml {
    Q_GADGET
    QML_FOREIGN(quelto::CardSlots)
    QML_NAMED_ELEMENT(CardSlots)
    QML_UNCREATABLE("A LibraryModel has them")
};

struct DaySlotsForQml {
    Q_GADGET
    QML_FOREIGN(quelto::DaySlots)
    QML_NAMED_ELEMENT(DaySlots)
    QML_UNCREATABLE("A LibraryModel has them")
};

/// Where pictures come from; without an instance cards keep to their placeholders.
struct ThumbnailsForQml {
    static inline ThumbnailCache* instance = nullptr;
};

} // namespace quelto
