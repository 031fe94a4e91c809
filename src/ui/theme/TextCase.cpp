// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/TextCase.h"

#include "base/language/L10n.h"

namespace quelto {

QString TextCase::upper(const QString& text)
{
    return L10n::upperCased(text);
}

} // namespace quelto
