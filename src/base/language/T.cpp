// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/T.h"

#include "base/language/L10n.h"
#include "base/language/Translations.h"

namespace quelto {

namespace {

std::optional<QString> tryTranslation(const Translations::Table& table, const char* key, Language language)
{
    const auto row = table.constFind(QByteArray::fromRawData(key, static_cast<qsizetype>(qstrlen(key))));
    if (row == table.constEnd()) {
        return std::nullopt;
    }
    const auto text = row->constFind(language);
    return text == row->constEnd() ? std::nullopt : std::optional(*text);
}

QString withArguments(QString text, const QStringList& arguments)
{
    // In sequence, each on the previous result: the replacement of {0} may itself contain {1}.
    int index = 0;
    for (const auto& argument : arguments) {
        text.replace(u'{' + QString::number(index++) + u'}', argument);
    }
    return text;
}

} // namespace

QString translated(const char* key, const QStringList& arguments)
{
    const auto language = L10n::current();
    const auto text = language == Language::tr ? std::nullopt : tryTranslation(Translations::table(), key, language);
    return withArguments(text ? *text : QString::fromUtf8(key), arguments);
}

QString translatedForDesktop(const char* key, const QStringList& arguments)
{
    const auto text = tryTranslation(Translations::desktopTable(), key, L10n::current());
    return text ? withArguments(*text, arguments) : translated(key, arguments);
}

} // namespace quelto
