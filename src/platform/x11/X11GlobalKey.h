// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/GlobalKey.h"
#include "platform/x11/X11Connection.h"

#include <QObject>

#include <memory>
#include <optional>

class QSocketNotifier;

namespace quelto {

/// A passive key grab on every root window, over a separate connection.
///
/// Grabs again when the layout, the modifier map or the keyboard changes. Never fires once the server is gone.
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

    void selectEvents();
    void readEvents();
    /// False if the event is an auto-repeat of a held key.
    bool registerPress(const xcb_generic_event_t& event);
    void applyGrab();
    void ungrabAll();

    std::optional<X11Connection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::uint8_t m_keyboardEvent = 0;
    std::optional<Combination> m_combination;
    /// The server time of the last press, until the release. A keyboard change does not reset it, because using two
    /// keyboards in turn causes one.
    std::optional<std::uint32_t> m_lastPressTime;
};

} // namespace quelto
