// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/matches/MatchNotification.h"

#include "base/language/T.h"
#include "library/naming/Clip.h"

namespace quelto {

MatchNotification notificationOf(const MatchSession& session)
{
    const auto files = session.clipFiles();
    const auto epics =
        std::ranges::count_if(files, [](const QString& path) { return Clip(path).autoTier == ClipTier::epic; });
    const auto dot = QStringLiteral(" • ");
    auto line = T("{0} klip", files.size());
    if (epics > 0) {
        line += dot + T("{0} Efsane", static_cast<qlonglong>(epics));
    }
    line += dot + T("incelemek için tıkla");
    return {.id = session.id,
            .title = T("Maç bitti • {0}", session.name()),
            .line = line,
            .body = line + QStringLiteral(" — ") + T("özeti görmek için tıkla"),
            .tier = epics > 0 ? ClipTier::epic : ClipTier::medium};
}

} // namespace quelto
