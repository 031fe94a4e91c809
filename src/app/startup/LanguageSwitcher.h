// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"

#include <QObject>
#include <QTranslator>

namespace quelto {

/// Puts the language of the settings in force, also for what Qt itself says: the names of keys beside menu entries, the
/// buttons of its own dialogs. These are in English where Qt's translations are not installed.
///
/// Thread: main. Made before anything that has texts.
class LanguageSwitcher {
public:
    explicit LanguageSwitcher(const AppSettings& settings);
    LanguageSwitcher(const LanguageSwitcher&) = delete;
    LanguageSwitcher& operator=(const LanguageSwitcher&) = delete;

private:
    void loadQtTexts();

    QTranslator m_qtTexts;
    /// Ends the connections.
    QObject m_context;
};

} // namespace quelto
