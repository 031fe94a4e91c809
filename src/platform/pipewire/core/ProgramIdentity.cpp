// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/core/ProgramIdentity.h"

#include <algorithm>

namespace quelto::pipewire {

bool isApplicationRuntime(const QString& binary)
{
    // Distributions install several versions side by side, such as "electron25".
    const QString runtime = QStringLiteral("electron");
    return binary.startsWith(runtime, Qt::CaseInsensitive) &&
        std::ranges::all_of(binary.mid(runtime.size()), [](QChar character) { return character.isDigit(); });
}

} // namespace quelto::pipewire
