// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/LanguageSwitcher.h"

#include "base/language/L10n.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace quelto {

QtTexts::QtTexts()
{
    for (const auto language : AllLanguages) {
        // A failed load leaves the texts empty, which means English.
        std::ignore = m_texts[static_cast<std::size_t>(language)].load(
            QLocale(localeIdOf(language)), QStringLiteral("qtbase"), QStringLiteral("_"),
            QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    }
}

QString QtTexts::translate(const char* context, const char* sourceText, const char* disambiguation, int n) const
{
    return m_texts[static_cast<std::size_t>(L10n::current())].translate(context, sourceText, disambiguation, n);
}

LanguageSwitcher::LanguageSwitcher(const QString& language)
{
    L10n::use(language);
    QCoreApplication::installTranslator(&m_qtTexts);
}

} // namespace quelto
