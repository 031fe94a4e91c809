// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// The text for drawing in a left-to-right layout: a part in a right-to-left script, such as the Arabic name of a game,
/// is isolated, so that it does not change the alignment of the text or the order of the words around it. Only for
/// drawing: the result contains invisible characters. A text without such a part is returned as it is.
QString isolated(const QString& text);

} // namespace quelto
