// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/DisplayChoices.h"

#include "base/language/T.h"
#include "ui/screens/settings/SettingsOptions.h"
#include "ui/screens/settings/SettingsPageForQml.h"
#include "ui/shared/SharedForQml.h"

#include <QPointer>

namespace quelto {

DisplayChoices::DisplayChoices(QObject* parent)
    : DisplayChoices(SettingsPageForQml::instance.value().settings,
                     *SettingsPageForQml::instance.value().platform.displays, RecorderForQml::instance, parent)
{
}

DisplayChoices::DisplayChoices(AppSettings& settings, Displays& displays, Recorder* recorder, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_displays(displays)
    , m_recorder(recorder)
{
    connect(&m_watch, &DisplayWatch::changed, this, &DisplayChoices::refresh);
    connect(&settings, &AppSettings::displayIDChanged, this, &DisplayChoices::selectedChanged);
    refresh();
}

void DisplayChoices::chooseAgain()
{
    setError({});
    // The page, and this object with it, may be gone when the user has answered.
    m_displays.chooseAgain({.onChosen =
                                [recorder = m_recorder] {
                                    if (recorder != nullptr && recorder->stateKind() != CaptureState::Idle) {
                                        recorder->restart();
                                    }
                                },
                            .onFailed =
                                [self = QPointer(this)](const QString& error) {
                                    if (self) {
                                        self->setError(error);
                                    }
                                }});
}

void DisplayChoices::setError(const QString& error)
{
    if (std::exchange(m_error, error) != error) {
        Q_EMIT errorChanged();
    }
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
