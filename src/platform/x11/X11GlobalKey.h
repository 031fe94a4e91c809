// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/GlobalKey.h"
#include "platform/x11/HeldKeys.h"
#include "platform/x11/KeyboardMap.h"
#include "platform/x11/X11Platform.h"

#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

class QSocketNotifier;

namespace quelto {

/// A passive key grab on every root window, over a separate connection.
///
/// Grabs again when the layout, the modifier map or the keyboard changes, and from time to time while another program
/// holds the combination. If the layout takes the modifiers for itself, it watches the held keys in place of a grab;
/// then the focused window receives the press, too. Never fires once the server is gone.
class X11GlobalKey final : public QObject, public GlobalKey {
    Q_OBJECT

public:
    explicit X11GlobalKey(const QString& displayName = {}, X11Session session = X11Session::native);
    ~X11GlobalKey() override;

    void grab(std::uint32_t keyCode, std::uint32_t modifiers) override;
    void release() override;
    State state() const override { return m_state; }
    QString characters(std::uint32_t keyCode) override;
    std::uint32_t heldModifiers() override;

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
    /// Waiting for a reply may have queued events, for which the socket does not become readable again.
    void readEventsSoon();
    std::optional<KeyboardMap> tryReadKeyboard();
    /// False if the event is an auto-repeat of a held key.
    bool registerPress(const xcb_generic_event_t& event);
    /// Grabs the combination on the present keyboard, and ends the grabs that it no longer needs.
    void updateGrabs();
    void readKeyboard();
    std::vector<Grab> neededGrabs() const;
    /// Sends the grabs to the server again. They are taken if another program holds one of them.
    void requestGrabs();
    /// Whether the held keys are those of the combination, with this key as the last one.
    bool completesCombination(xcb_keycode_t key) const;
    State currentState() const;
    void updateState();

    const X11Session m_session;
    std::optional<X11Connection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::uint8_t m_keyboardEvent = 0;
    std::optional<Combination> m_combination;
    /// While there is a combination that the keyboard has.
    std::optional<KeyboardMap> m_keyboard;
    KeyPath m_path;
    std::vector<Grab> m_grabs;
    bool m_isTaken = false;
    QTimer m_retry;
    std::unique_ptr<HeldKeys> m_heldKeys;
    State m_state = State::Released;
    /// The server time of the last press, until the release. A keyboard change does not reset it, because using two
    /// keyboards in turn causes one.
    std::optional<std::uint32_t> m_lastPressTime;
};

} // namespace quelto
