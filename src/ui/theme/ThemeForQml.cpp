// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/ThemeForQml.h"

#include <QJSEngine>

namespace quelto {

Theme* ThemeForQml::create(QQmlEngine* /*engine*/, QJSEngine* /*scripts*/)
{
    // The composition root owns the theme.
    QJSEngine::setObjectOwnership(instance, QJSEngine::CppOwnership);
    return instance;
}

} // namespace quelto
