// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

/// The program with which the user chooses and sets up microphones on this desktop.
///
/// Thread: main; never blocks.
/// Errors: none. A program that does not start is ignored.
class SoundSettings {
public:
    virtual ~SoundSettings() = default;

    /// Whether a program is installed.
    virtual bool isAvailable() const = 0;
    virtual void open() = 0;
};

} // namespace quelto
