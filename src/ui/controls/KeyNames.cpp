// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/KeyNames.h"

#include "base/keys/HotKeyText.h"

#include <QKeySequence>

namespace quelto {

QString KeyNames::of(const QString& shortcut)
{
    return QKeySequence::fromString(shortcut, QKeySequence::PortableText).toString(QKeySequence::NativeText);
}

QString KeyNames::ofHotKey(quint32 modifiers, const QString& keyName)
{
    return hotKeyDisplay(modifiers, keyName);
}

} // namespace quelto
