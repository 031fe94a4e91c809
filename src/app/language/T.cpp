// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/language/T.h"

namespace quelto {

QString translated(const char* key, const QStringList& arguments)
{
    auto text = QString::fromUtf8(key);
    // One argument after the other, each on the result of the one before: a text put in for {0} may itself hold {1}.
    int index = 0;
    for (const auto& argument : arguments) {
        text.replace(u'{' + QString::number(index++) + u'}', argument);
    }
    return text;
}

} // namespace quelto
