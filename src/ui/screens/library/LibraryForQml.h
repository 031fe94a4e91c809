// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/library/ClipArranger.h"
#include "ui/screens/library/ClipCommands.h"
#include "ui/screens/library/VisibleCards.h"
#include "ui/screens/library/VisibleDays.h"
#include "ui/shared/SharedForQml.h"

/// Registers the types and objects of the library screen for QML. Each instance is set before the first file loads.
namespace quelto {

class ThumbnailCache;

struct ClipCommandsForQml : SharedForQml<ClipCommands> {
    Q_GADGET
    QML_FOREIGN(quelto::ClipCommands)
    QML_NAMED_ELEMENT(ClipCommands)
    QML_SINGLETON
};

struct VisibleCardsForQml {
    Q_GADGET
    QML_FOREIGN(quelto::VisibleCards)
    QML_NAMED_ELEMENT(VisibleCards)
    QML_UNCREATABLE("Owned by CardGridModel")
};

struct VisibleDaysForQml {
    Q_GADGET
    QML_FOREIGN(quelto::VisibleDays)
    QML_NAMED_ELEMENT(VisibleDays)
    QML_UNCREATABLE("Owned by CardGridModel")
};

/// The queues on which a large library is arranged. Without an instance, it is arranged on the main thread.
struct ArrangingQueuesForQml {
    static inline std::optional<ClipArranger::Queues> instance;
};

/// The source of thumbnails. Without an instance, cards show their placeholder.
struct ThumbnailsForQml {
    static inline ThumbnailCache* instance = nullptr;
};

} // namespace quelto
