// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/language/Language.h"
#include "library/naming/Clip.h"

#include <QList>
#include <QString>

#include <optional>

namespace quelto {

/// Which clips the user wants to see.
struct ClipFilter {
    /// Without one: of every game.
    std::optional<QString> game = std::nullopt;
    /// "all", "epic", "medium", "basic", or "manual" for clips without a tier.
    QString tier = QStringLiteral("all");
    /// Looked for in title and game, whatever the case; empty for everything.
    QString search = {};

    bool operator==(const ClipFilter&) const = default;
};

/// Clips together with what a search compares, which is made once and not on every keystroke.
class FilterableClips {
public:
    FilterableClips() = default;
    explicit FilterableClips(QList<Clip> clips);

    const QList<Clip>& clips() const { return m_clips; }
    /// The places in clips() of those that pass, in their order.
    QList<qsizetype> passing(const ClipFilter& filter);

private:
    struct Words {
        QString title;
        QString game;
    };

    void makeWords();

    QList<Clip> m_clips;
    /// Of every clip, or empty while nobody searches.
    QList<Words> m_words;
    Language m_language = Language::tr;
};

/// The values that a filter's tier can have, in the order in which they are offered.
const QStringList& tierFilters();
/// The word for the user.
QString tierFilterLabel(const QString& tierFilter);

} // namespace quelto
