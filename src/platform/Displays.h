// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QSize>
#include <QString>

#include <cstdint>

namespace quelto {

/// A screen that can be recorded. Ids are never 0: in the settings 0 stands for "the main display".
struct DisplayInfo {
    std::uint32_t id = 0;
    QString name;
    QSize pixelSize;
    bool isMain = false;

    bool operator==(const DisplayInfo&) const = default;
};

/// The screens of the present session.
///
/// Thread: any.
class Displays {
public:
    virtual ~Displays() = default;

    /// Asks the display system anew on each call. Empty where there is none.
    virtual QList<DisplayInfo> all() const = 0;
};

} // namespace quelto
