// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/rules/AspectRatio.h"

#include <QSize>
#include <QSizeF>

namespace quelto {

/// The canvas for a source of any shape. Only its height counts, limited to 360 to 1080 lines. Both sides are even.
QSize outputSize(QSizeF source, AspectRatio aspect);

/// The canvas of a whole export, by the first clip. A single clip that already is 16:9 keeps its resolution, except for
/// an odd line or column.
QSize canvasFor(QSizeF source, AspectRatio aspect, qsizetype clipCount);

} // namespace quelto
