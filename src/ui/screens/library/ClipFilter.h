// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/language/Language.h"
#include "library/naming/Clip.h"
#include "library/naming/ClipGame.h"

#include <QList>
#include <QString>

#include <optional>

namespace quelto {

/// The user's filter for clips.
struct ClipFilter {
    /// Unset for all games.
    std::optional<ClipGame> game = std::nullopt;
    /// "all", "epic", "medium", "basic", or "manual" for clips without a tier.
    QString tier = QStringLiteral("all");
    /// Matched against title and game, ignoring case; empty for all clips.
    QString search = {};

    bool operator==(const ClipFilter&) const = default;
};

/// A list of clips with cached search keys, which are computed once instead of on every keystroke.
class SearchableClips {
public:
    explicit SearchableClips(QList<Clip> clips = {});

    const QList<Clip>& clips() const { return m_clips; }
    /// The indexes in clips() of the clips that match, in ascending order.
    QList<qsizetype> matching(const ClipFilter& filter);

private:
    struct SearchKeys {
        QString title;
        QString game;
    };

    void updateSearchKeys();

    // Shared with the library: copying it costs much, so nothing may detach it.
    const QList<Clip> m_clips;
    /// One for each clip; empty until the first search.
    QList<SearchKeys> m_searchKeys;
    /// The language whose case rules the keys follow.
    Language m_language = Language::tr;
};

/// The valid values of ClipFilter::tier, in display order.
const QStringList& tierFilters();
/// The translated label of a tier filter.
QString tierFilterLabel(const QString& tierFilter);

} // namespace quelto
