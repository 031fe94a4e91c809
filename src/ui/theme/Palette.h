// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QList>
#include <QString>

namespace quelto {

/// A colour theme: eleven colours by role, and a backdrop.
struct Palette {
    /// The key in the settings.
    QString id;
    /// Shown to the user, in the current language.
    QString name;
    QColor bg;
    QColor sidebar;
    QColor panel;
    QColor card;
    QColor cardHover;
    QColor border;
    QColor accent;
    QColor accentDark;
    QColor text;
    QColor muted;
    QColor dim;
    /// Backdrop from top to bottom, evenly spaced; empty for a plain bg.
    QList<QColor> gradient;

    /// Built on each call, so that the names follow the language. The first palette is the default.
    static QList<Palette> all();
    /// The palette with that id; the default palette for an unknown id.
    static Palette find(const QString& id);
};

} // namespace quelto
