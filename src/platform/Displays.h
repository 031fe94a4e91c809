// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QSize>
#include <QString>

#include <cstdint>
#include <functional>

namespace quelto {

/// A display that can be recorded.
struct DisplayInfo {
    /// Never 0, which means "the main display" in the settings.
    std::uint32_t id = 0;
    QString name;
    QSize pixelSize;
    bool isMain = false;

    bool operator==(const DisplayInfo&) const = default;
};

/// How a choice in a dialog of the desktop ends. Called from the event loop, at most one and once. If the user cancels,
/// none is called.
struct DisplayChoiceEvents {
    std::function<void()> onChosen;
    /// The desktop did not let the user choose. error: a sentence for the user.
    std::function<void(const QString& error)> onFailed;
};

/// The displays of the desktop session.
///
/// Thread: any.
class Displays {
public:
    virtual ~Displays() = default;

    /// Queries the display system on each call. Empty if there is none.
    virtual QList<DisplayInfo> all() const = 0;

    /// Whether the user chooses in a dialog of the desktop. Then there is one display, whose name says so, and the
    /// display of the settings has no effect.
    virtual bool areChosenByTheDesktop() const { return false; }
    /// Shows that dialog. A recording goes on meanwhile, and recordings use the display that was chosen last until
    /// there is another one. A second call replaces the first. Thread: main.
    virtual void chooseAgain(const DisplayChoiceEvents& events) { events.onChosen(); }
};

} // namespace quelto
