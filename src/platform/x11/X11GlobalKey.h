// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/GlobalKey.h"
#include "platform/x11/X11Connection.h"

#include <QObject>

#include <memory>
#include <optional>
#include <vector>

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

    /// A key with one state of the modifiers and locks.
    struct Grab {
        xcb_keycode_t key;
        std::uint16_t modifiers;

        bool operator==(const Grab&) const = default;
    };

    void selectEvents();
    void readEvents();
    /// False if the event is an auto-repeat of a held key.
    bool registerPress(const xcb_generic_event_t& event);
    /// Grabs the combination on the present keyboard, and ends the grabs that it no longer needs.
    void updateGrabs();
    std::vector<Grab> neededGrabs() const;

    std::optional<X11Connection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::uint8_t m_keyboardEvent = 0;
    std::optional<Combination> m_combination;
    std::vector<Grab> m_grabs;
    /// The server time of the last press, until the release. A keyboard change does not reset it, because using two
    /// keyboards in turn causes one.
    std::optional<std::uint32_t> m_lastPressTime;
};

} // namespace quelto
