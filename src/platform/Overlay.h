// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quelto {

struct OverlayPicture;

/// Shows pictures above the windows of all programs, full-screen ones included. They take neither the focus nor pointer
/// input.
///
/// Thread: main; never blocks.
/// Errors: none. What cannot be shown is lost.
class Overlay {
public:
    virtual ~Overlay() = default;

    /// Whether this session can show pictures. False for a moment after the start.
    virtual bool isAvailable() const = 0;
    /// Replaces the picture that is shown.
    virtual void show(const OverlayPicture& picture) = 0;
};

} // namespace quelto
