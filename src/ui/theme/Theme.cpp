// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/Theme.h"

namespace quelto {

Theme::Theme(const AppSettings& settings, QObject* parent)
    : QObject(parent)
    , m_palette(Palette::find(settings.colorTheme()))
{
    connect(&settings, &AppSettings::colorThemeChanged, this, [this, &settings] {
        m_palette = Palette::find(settings.colorTheme());
        Q_EMIT changed();
    });
}

QVariantList Theme::gradient() const
{
    return {m_palette.gradient.cbegin(), m_palette.gradient.cend()};
}

} // namespace quelto
