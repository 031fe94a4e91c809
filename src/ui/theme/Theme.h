// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "ui/theme/Palette.h"

#include <QColor>
#include <QObject>
#include <QVariantList>

namespace quelto {

/// The colours of the chosen palette, by role, and those that every palette shares.
///
/// Thread: main.
class Theme : public QObject {
    Q_OBJECT
    Q_PROPERTY(QColor bg READ bg NOTIFY changed)
    Q_PROPERTY(QColor sidebar READ sidebar NOTIFY changed)
    Q_PROPERTY(QColor panel READ panel NOTIFY changed)
    Q_PROPERTY(QColor card READ card NOTIFY changed)
    Q_PROPERTY(QColor cardHover READ cardHover NOTIFY changed)
    Q_PROPERTY(QColor border READ border NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor accentDark READ accentDark NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor muted READ muted NOTIFY changed)
    Q_PROPERTY(QColor dim READ dim NOTIFY changed)
    Q_PROPERTY(QVariantList gradient READ gradient NOTIFY changed)
    Q_PROPERTY(QColor onAccent READ onAccent CONSTANT)
    Q_PROPERTY(QColor live READ live CONSTANT)
    Q_PROPERTY(QColor good READ good CONSTANT)
    Q_PROPERTY(QColor gold READ gold CONSTANT)
    Q_PROPERTY(QColor violet READ violet CONSTANT)
    Q_PROPERTY(QColor onGold READ onGold CONSTANT)
    Q_PROPERTY(QColor hud READ hud CONSTANT)
    Q_PROPERTY(QColor shadow READ shadow CONSTANT)
    Q_PROPERTY(QColor discord READ discord CONSTANT)

public:
    explicit Theme(const AppSettings& settings, QObject* parent = nullptr);

    QColor bg() const { return m_palette.bg; }
    QColor sidebar() const { return m_palette.sidebar; }
    QColor panel() const { return m_palette.panel; }
    QColor card() const { return m_palette.card; }
    QColor cardHover() const { return m_palette.cardHover; }
    QColor border() const { return m_palette.border; }
    QColor accent() const { return m_palette.accent; }
    QColor accentDark() const { return m_palette.accentDark; }
    QColor text() const { return m_palette.text; }
    QColor muted() const { return m_palette.muted; }
    QColor dim() const { return m_palette.dim; }
    QVariantList gradient() const;
    /// What stands on the accent.
    static QColor onAccent() { return Qt::white; }
    /// Recording, and what went wrong.
    static QColor live() { return {0xFF, 0x3B, 0x3B}; }
    /// Success.
    static QColor good() { return {0x33, 0xD1, 0x7A}; }
    /// The best moments.
    static QColor gold() { return {0xFF, 0xC5, 0x3D}; }
    /// What stands on gold.
    static QColor onGold() { return Qt::black; }
    /// The ground of the on-screen notice.
    static QColor hud() { return {0x16, 0x16, 0x1C, 245}; }
    /// Shadows, and veils over pictures; thinned by whoever uses it.
    static QColor shadow() { return Qt::black; }
    /// The chat program's own colour, on hints that lead there.
    static QColor discord() { return {0x58, 0x65, 0xF2}; }
    /// The plain ones.
    static QColor violet() { return {0x8B, 0x7C, 0xFF}; }

Q_SIGNALS:
    void changed();

private:
    Palette m_palette;
};

} // namespace quelto
