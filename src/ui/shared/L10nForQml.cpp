// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shared/L10nForQml.h"

#include "app/language/T.h"

namespace quelto {

QString L10nForQml::T(const QString& key, const QVariantList& arguments)
{
    QStringList texts;
    for (const auto& argument : arguments) {
        texts.append(argument.toString());
    }
    return translated(key.toUtf8().constData(), texts);
}

} // namespace quelto
