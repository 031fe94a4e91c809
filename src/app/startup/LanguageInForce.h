// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/settings/AppSettings.h"

#include <QObject>
#include <QTranslator>

namespace quelto {

/// What Qt itself says, the names of keys beside menu entries and the buttons of its own dialogs, in the language of
/// the moment. In English where Qt's translations are not installed.
///
/// Thread: main. Before the window and the tray menu follow the language, so that both find the right words.
class QtTexts {
public:
    QtTexts() = default;
    QtTexts(const QtTexts&) = delete;
    QtTexts& operator=(const QtTexts&) = delete;

    void follow(const AppSettings& settings);

private:
    void load();

    QTranslator m_translator;
    /// Ends the connections.
    QObject m_context;
};

} // namespace quelto
