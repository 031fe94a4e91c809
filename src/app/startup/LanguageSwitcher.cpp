// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/LanguageSwitcher.h"

#include "base/language/L10n.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace quelto {

LanguageSwitcher::LanguageSwitcher(const AppSettings& settings)
{
    L10n::use(settings.language());
    loadQtTexts();
    QCoreApplication::installTranslator(&m_qtTexts);
    QObject::connect(&settings, &AppSettings::languageChanged, &m_context, [this] { loadQtTexts(); });
}

void LanguageSwitcher::loadQtTexts()
{
    // A failed load leaves the translator empty, which means English.
    std::ignore = m_qtTexts.load(L10n::locale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                                 QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace quelto
