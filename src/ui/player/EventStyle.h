// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/theme/Theme.h"

#include <QColor>
#include <QString>

namespace quelto {

/// How the timeline shows an event of a sidecar, by the event's key. A key that Quelto does not know gets a grey dot
/// and stands for itself.
class EventStyle {
public:
    /// The name of a symbol.
    static QString icon(const QString& name);
    static QColor color(const QString& name, const Theme& theme);
    /// In the current language.
    static QString title(const QString& name);
};

} // namespace quelto
