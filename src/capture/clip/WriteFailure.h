// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace quelto {

/// The system's reason why a file could not be written, as a sentence that tells the user what to do where the reason
/// is a common one, else in the system's own words.
QString writeFailureText(int code);

} // namespace quelto
