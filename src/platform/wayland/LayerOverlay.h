// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Overlay.h"
#include "platform/OverlayPicture.h"

#include <QString>

#include <atomic>
#include <mutex>
#include <optional>
#include <thread>

namespace quelto {

/// Shows pictures by the compositor's layer shell, on a connection and a thread of its own. Qt's windows have no such
/// place, and need a library for it that is not installed everywhere.
class LayerOverlay final : public Overlay {
public:
    /// An empty name means $WAYLAND_DISPLAY.
    explicit LayerOverlay(const QString& displayName = {});
    ~LayerOverlay() override;
    LayerOverlay(const LayerOverlay&) = delete;
    LayerOverlay& operator=(const LayerOverlay&) = delete;

    bool isAvailable() const override { return m_isAvailable; }
    void show(const OverlayPicture& picture) override;

private:
    void run(const QString& displayName);

    std::atomic<bool> m_isAvailable = false;
    std::mutex m_lock;
    std::optional<OverlayPicture> m_next;
    bool m_isEnding = false;
    /// Wakes the thread.
    int m_wakeDescriptor;
    std::thread m_thread;
};

} // namespace quelto
