// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace quelto {

/// The program whose window has the focus.
struct FrontApplicationInfo {
    /// Its display name: that of its desktop entry, else what its window calls itself.
    QString name;
    /// The desktop itself or the file manager has the focus: nothing is being played.
    bool isDesktop = false;
    bool isThisProgram = false;
};

/// Thread: main.
class FrontApplication {
public:
    virtual ~FrontApplication() = default;

    virtual std::optional<FrontApplicationInfo> current() const = 0;
};

} // namespace quelto
