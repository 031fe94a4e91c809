// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/queue/ExportControl.h"
#include "export/rules/AspectRatio.h"
#include "export/rules/FillMode.h"

#include <QString>

#include <optional>

namespace quelto {

/// Makes videos of another shape from clips.
///
/// Thread: any; blocks for the whole time. Errors: ExportError, ExportStopped, std::bad_alloc. No file is left behind
/// then.
class VideoTools {
public:
    enum class Transitions {
        none,
        /// Each clip fades in from black and silence and out again.
        fade,
    };

    struct Rendering {
        /// Back to back in this order. Those without video are left out.
        QStringList clips;
        AspectRatio aspect = AspectRatio::wide;
        FillMode fill = FillMode::blur;
        Transitions transitions = Transitions::none;
        /// On a card over the first seconds.
        std::optional<QString> title;
        /// The path of the new file, which replaces one that has it.
        QString output;
    };

    /// A copy in another shape beside the clip. Returns its path.
    static QString exportAspect(const QString& clip, AspectRatio aspect, FillMode fill, const ExportControl& control);
    /// Progress is reported at most every 0.3 seconds.
    static void render(const Rendering& rendering, const ExportControl& control);
};

} // namespace quelto
