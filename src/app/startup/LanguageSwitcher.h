// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/language/Language.h"

#include <QTranslator>

namespace quelto {

/// Qt's own texts in the current language: key names beside menu entries, buttons of its dialogs. English where Qt's
/// translations are not installed.
///
/// They are all loaded at once, because bindings in QML ask for texts in a new language before any connected slot could
/// load them.
///
/// Thread: any.
class QtTexts : public QTranslator {
    Q_OBJECT

public:
    QtTexts();

    QString translate(const char* context, const char* sourceText, const char* disambiguation, int n) const override;
    bool isEmpty() const override { return false; }

private:
    std::array<QTranslator, AllLanguages.size()> m_texts;
};

/// Applies the language of the settings, also to Qt's own texts.
///
/// Thread: main. Created before any object with texts.
class LanguageSwitcher {
public:
    explicit LanguageSwitcher(const QString& language);
    LanguageSwitcher(const LanguageSwitcher&) = delete;
    LanguageSwitcher& operator=(const LanguageSwitcher&) = delete;

private:
    QtTexts m_qtTexts;
};

} // namespace quelto
