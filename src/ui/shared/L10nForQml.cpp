// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shared/L10nForQml.h"

#include "base/language/Isolate.h"
#include "base/language/T.h"

namespace quelto {

namespace {

QStringList toStrings(const QVariantList& arguments)
{
    QStringList texts;
    for (const auto& argument : arguments) {
        texts.append(argument.toString());
    }
    return texts;
}

} // namespace

QString L10nForQml::T(const QString& key, const QVariantList& arguments)
{
    return translated(key.toUtf8().constData(), toStrings(arguments));
}

QString L10nForQml::isolated(const QString& text)
{
    return quelto::isolated(text);
}

QString L10nForQml::TOnDesktop(const QString& key, const QVariantList& arguments)
{
    return translatedForDesktop(key.toUtf8().constData(), toStrings(arguments));
}

} // namespace quelto
