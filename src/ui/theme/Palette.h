// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QList>
#include <QString>

namespace quelto {

/// One colour theme: eleven colours by role, and a backdrop.
struct Palette {
    /// The key in the settings.
    QString id;
    /// For the user, in the language of the moment.
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

    /// Built anew on each call, so that the names follow the language. The first one is the default.
    static QList<Palette> all();
    /// The palette of that id; the default one for an unknown id.
    static Palette find(const QString& id);
};

} // namespace quelto
