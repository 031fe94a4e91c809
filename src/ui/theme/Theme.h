// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "ui/theme/Palette.h"
#include "ui/theme/ThemeRoles.h"

#include <QColor>
#include <QObject>
#include <QVariantList>

namespace quelto {

/// The look by role: the colours of the chosen palette, the colours that all palettes share, and sizes and durations.
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
    Q_PROPERTY(QColor onGood READ onGood CONSTANT)
    Q_PROPERTY(QColor gold READ gold CONSTANT)
    Q_PROPERTY(QColor violet READ violet CONSTANT)
    Q_PROPERTY(QColor onGold READ onGold CONSTANT)
    Q_PROPERTY(QColor hud READ hud CONSTANT)
    Q_PROPERTY(QColor shadow READ shadow CONSTANT)
    Q_PROPERTY(QColor discord READ discord CONSTANT)
    Q_PROPERTY(double disabledOpacity READ disabledOpacity CONSTANT)
    Q_PROPERTY(quelto::FontSizeRoles fontSize READ fontSize CONSTANT)
    Q_PROPERTY(quelto::RadiusRoles radius READ radius CONSTANT)
    Q_PROPERTY(quelto::SpacingRoles spacing READ spacing CONSTANT)
    Q_PROPERTY(quelto::DurationRoles duration READ duration CONSTANT)

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
    /// Text and symbols on the accent colour.
    static QColor onAccent() { return Qt::white; }
    /// Recording, errors and destructive actions.
    static QColor live() { return {0xFF, 0x3B, 0x3B}; }
    /// Success.
    static QColor good() { return {0x33, 0xD1, 0x7A}; }
    /// Text and symbols on the colour of success.
    static QColor onGood() { return Qt::black; }
    /// The tier "epic".
    static QColor gold() { return {0xFF, 0xC5, 0x3D}; }
    /// Text and symbols on gold.
    static QColor onGold() { return Qt::black; }
    /// Background of the HUD.
    static QColor hud() { return {0x16, 0x16, 0x1C, 245}; }
    /// Shadows, and overlays on pictures; the component that uses it sets the opacity.
    static QColor shadow() { return Qt::black; }
    /// Discord's own colour, for the hint on dragging clips there.
    static QColor discord() { return {0x58, 0x65, 0xF2}; }
    /// The tier "basic".
    static QColor violet() { return {0x8B, 0x7C, 0xFF}; }
    /// Of a control that is disabled.
    static double disabledOpacity() { return 0.45; }
    static FontSizeRoles fontSize() { return {}; }
    static RadiusRoles radius() { return {}; }
    static SpacingRoles spacing() { return {}; }
    static DurationRoles duration() { return {}; }

Q_SIGNALS:
    void changed();

private:
    Palette m_palette;
};

} // namespace quelto
