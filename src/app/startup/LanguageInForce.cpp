// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/LanguageInForce.h"

#include "base/language/L10n.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace quelto {

LanguageInForce::LanguageInForce(const AppSettings& settings)
{
    L10n::use(settings.language());
    loadQtTexts();
    QCoreApplication::installTranslator(&m_qtTexts);
    QObject::connect(&settings, &AppSettings::languageChanged, &m_context, [this] { loadQtTexts(); });
}

void LanguageInForce::loadQtTexts()
{
    // False leaves it empty, which is English.
    std::ignore = m_qtTexts.load(L10n::locale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                                 QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace quelto
