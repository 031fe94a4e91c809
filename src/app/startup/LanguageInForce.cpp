// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/QtTexts.h"

#include "app/language/L10n.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace quelto {

void QtTexts::follow(const AppSettings& settings)
{
    load();
    QCoreApplication::installTranslator(&m_translator);
    QObject::connect(&settings, &AppSettings::languageChanged, &m_context, [this] { load(); });
}

void QtTexts::load()
{
    // False leaves it empty, which is English.
    std::ignore = m_translator.load(L10n::locale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                                    QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace quelto
