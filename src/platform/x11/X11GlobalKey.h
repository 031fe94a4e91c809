// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/GlobalKey.h"
#include "platform/x11/X11Connection.h"

#include <QObject>

#include <memory>
#include <optional>

class QSocketNotifier;

namespace quelto {

/// The shortcut as a passive grab on every root window, over a connection of its own.
///
/// A change of layout, of the modifier map or of the keyboard makes it grab anew. When the server is away, nothing
/// fires.
class X11GlobalKey final : public QObject, public GlobalKey {
    Q_OBJECT

public:
    explicit X11GlobalKey(const QString& displayName = {});
    ~X11GlobalKey() override;

    void grab(std::uint32_t keyCode, std::uint32_t modifiers) override;
    void release() override;

private:
    struct Combination {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
    };

    void listen();
    void readEvents();
    /// False for the repeats of a held key.
    bool notePress(const xcb_generic_event_t& event);
    void grabNow();
    void ungrab();

    std::optional<X11Connection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::uint8_t m_keyboardEvent = 0;
    std::optional<Combination> m_combination;
    /// The server's time of the last press, while there was no release. A change of keyboard does not clear it: two
    /// keyboards in turn are enough for one.
    std::optional<std::uint32_t> m_heldSince;
};

} // namespace quelto
