// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// A choice for a ThemedDropDown.
QVariantMap choiceFor(const QString& text, const QVariant& value);

/// What the settings offer, in the order in which it is shown, and the texts for it. Texts are translated at the call.
///
/// Thread: main.
class SettingsOptions : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    Q_INVOKABLE static QVariantList clipLengths();
    /// In seconds below a minute, and in minutes with at most one decimal from there on. Units: seconds.
    Q_INVOKABLE static QString clipLengthLabel(int seconds);
    /// The names of presets in the settings, and their texts.
    Q_INVOKABLE static QStringList resolutions();
    Q_INVOKABLE static QString resolutionLabel(const QString& resolution);
    Q_INVOKABLE static QStringList qualities();
    Q_INVOKABLE static QString qualityLabel(const QString& quality);
    Q_INVOKABLE static QVariantList fpsOptions();
    Q_INVOKABLE static QStringList codecs();
    Q_INVOKABLE static QString codecLabel(const QString& codec);
    /// Units: decimal megabytes.
    Q_INVOKABLE static QVariantList discordLimits();
    /// For a ThemedDropDown: the system's language, then each language by its own name.
    Q_INVOKABLE static QVariantList languages();
    /// The colours by the names of their roles, with `id` and `name`.
    Q_INVOKABLE static QVariantList palettes();
    /// The id of the palette that is shown for that value of the setting.
    Q_INVOKABLE static QString paletteInForce(const QString& colorTheme);
};

} // namespace quelto
