// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// Why a file could not be written, from a system error code: for common causes a sentence that says what to do,
/// otherwise the system's own text.
QString writeFailureText(int code);

} // namespace quelto
