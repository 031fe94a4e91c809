// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/DisplayChoices.h"

#include "base/language/T.h"
#include "ui/screens/settings/SettingsOptions.h"
#include "ui/screens/settings/SettingsPageForQml.h"

namespace quelto {

DisplayChoices::DisplayChoices(QObject* parent)
    : DisplayChoices(SettingsPageForQml::instance.value().settings,
                     *SettingsPageForQml::instance.value().platform.displays, parent)
{
}

DisplayChoices::DisplayChoices(AppSettings& settings, Displays& displays, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_displays(displays)
{
    connect(&m_watch, &DisplayWatch::changed, this, &DisplayChoices::refresh);
    connect(&settings, &AppSettings::displayIDChanged, this, &DisplayChoices::selectedChanged);
    refresh();
}

void DisplayChoices::refresh()
{
    QVariantList choices{choiceFor(T("Ana ekran"), 0U)};
    for (const auto& display : m_displays.all()) {
        choices.append(choiceFor(display.name, display.id));
    }
    if (m_choices != choices) {
        m_choices = choices;
        Q_EMIT choicesChanged();
    }
}

} // namespace quelto
