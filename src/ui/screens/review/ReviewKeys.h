// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/review/ReviewProgress.h"

#include <optional>

namespace quelto {

/// The answer that a key gives: D and X delete, K keeps, in upper and lower case.
///
/// On a keyboard layout of another script, the keys at the places of these letters on a Latin layout count.
///
/// text: what the key types. scanCode: the X11 code of the key; 0 if unknown.
std::optional<ReviewProgress::Answer> reviewAnswer(const QString& text, quint32 scanCode);

} // namespace quelto
