// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/theme/Theme.h"

#include <QtQml/qqml.h>

class QJSEngine;
class QQmlEngine;

namespace quelto {

/// Registers the Theme that the composition root owns as a QML singleton.
struct ThemeForQml {
    Q_GADGET
    QML_FOREIGN(quelto::Theme)
    QML_NAMED_ELEMENT(Theme)
    QML_SINGLETON

public:
    /// Set before the first QML file is loaded.
    static inline Theme* instance = nullptr;
    static Theme* create(QQmlEngine* engine, QJSEngine* scripts);
};

} // namespace quelto
