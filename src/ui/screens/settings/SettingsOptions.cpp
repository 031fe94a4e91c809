// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/SettingsOptions.h"

#include "base/language/Language.h"
#include "base/language/T.h"
#include "base/settings/AppSettings.h"
#include "ui/theme/Palette.h"

namespace quelto {

namespace {

constexpr int SecondsPerMinute = 60;
constexpr int SecondsPerTenthOfAMinute = 6;

template <typename Values> QVariantList listOf(const Values& values)
{
    return QVariantList(values.begin(), values.end());
}

template <typename Presets> QStringList rawValuesOf(const Presets& presets)
{
    QStringList names;
    for (const auto preset : presets) {
        names.append(rawValueOf(preset));
    }
    return names;
}

QVariantMap mapOf(const Palette& palette)
{
    return {{QStringLiteral("id"), palette.id},       {QStringLiteral("name"), palette.name},
            {QStringLiteral("bg"), palette.bg},       {QStringLiteral("sidebar"), palette.sidebar},
            {QStringLiteral("panel"), palette.panel}, {QStringLiteral("accent"), palette.accent},
            {QStringLiteral("muted"), palette.muted}, {QStringLiteral("gradient"), listOf(palette.gradient)}};
}

} // namespace

QVariantMap choiceFor(const QString& text, const QVariant& value)
{
    return {{QStringLiteral("text"), text}, {QStringLiteral("value"), value}};
}

QVariantList SettingsOptions::clipLengths()
{
    return listOf(AppSettings::clipLengths);
}

QString SettingsOptions::clipLengthLabel(int seconds)
{
    if (seconds < SecondsPerMinute) {
        return T("{0} sn", seconds);
    }
    const auto minutes = QString::number(seconds / SecondsPerMinute);
    const auto rest = seconds % SecondsPerMinute;
    return T("{0} dk", rest == 0 ? minutes : minutes + u'.' + QString::number(rest / SecondsPerTenthOfAMinute));
}

QStringList SettingsOptions::resolutions()
{
    return rawValuesOf(AllResolutionPresets);
}

QString SettingsOptions::resolutionLabel(const QString& resolution)
{
    return labelOf(presetFromRawValue<ResolutionPreset>(resolution));
}

QStringList SettingsOptions::qualities()
{
    return rawValuesOf(AllQualityPresets);
}

QString SettingsOptions::qualityLabel(const QString& quality)
{
    return labelOf(presetFromRawValue<QualityPreset>(quality));
}

QVariantList SettingsOptions::fpsOptions()
{
    return listOf(AppSettings::fpsOptions);
}

QStringList SettingsOptions::codecs()
{
    return rawValuesOf(AllVideoCodecs);
}

QString SettingsOptions::codecLabel(const QString& codec)
{
    return labelOf(presetFromRawValue<VideoCodec>(codec));
}

QVariantList SettingsOptions::discordLimits()
{
    return listOf(AppSettings::discordLimits);
}

QVariantList SettingsOptions::languages()
{
    QVariantList choices{choiceFor(T("Sistem dili"), QStringLiteral("system"))};
    for (const auto language : AllLanguages) {
        choices.append(choiceFor(nativeNameOf(language), rawValueOf(language)));
    }
    return choices;
}

QVariantList SettingsOptions::palettes()
{
    QVariantList palettes;
    for (const auto& palette : Palette::all()) {
        palettes.append(mapOf(palette));
    }
    return palettes;
}

QString SettingsOptions::paletteInForce(const QString& colorTheme)
{
    return Palette::find(colorTheme).id;
}

} // namespace quelto
