// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"

#include <QObject>
#include <QTranslator>

namespace quelto {

/// Applies the language of the settings, also to Qt's own texts: key names beside menu entries, buttons of its dialogs.
/// Qt's texts are English where its translations are not installed.
///
/// Thread: main. Created before any object with texts.
class LanguageSwitcher {
public:
    explicit LanguageSwitcher(const AppSettings& settings);
    LanguageSwitcher(const LanguageSwitcher&) = delete;
    LanguageSwitcher& operator=(const LanguageSwitcher&) = delete;

private:
    void loadQtTexts();

    QTranslator m_qtTexts;
    /// Its destruction ends the connections.
    QObject m_context;
};

} // namespace quelto
