// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace quelto {

/// The keys in a desktop's own description of a shortcut, by the names of hotKeyWords() and in their order. Understands
/// "Alt+Shift+C" in English and in the language of Qt's own texts, "<Alt><Shift>c", and both after other words. Any
/// other description is the only word; an empty one has no words.
QStringList boundKeyWords(const QString& description);

} // namespace quelto
