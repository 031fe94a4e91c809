// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/KeyNames.h"

#include <QKeySequence>

namespace quelto {

QString KeyNames::of(const QString& shortcut)
{
    return QKeySequence::fromString(shortcut, QKeySequence::PortableText).toString(QKeySequence::NativeText);
}

} // namespace quelto
