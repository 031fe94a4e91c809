// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/X11GlobalKey.h"

#include <QMetaObject>
#include <QSocketNotifier>

// The C header has a field whose name is a C++ keyword.
#ifdef __clang__
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
#include <xkbcommon/xkbcommon-x11.h>

namespace quelto {

namespace {

constexpr std::uint16_t KeyboardEvents = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;

// Milliseconds of server time. A held key repeats faster than this. If a release event was missed, the next press after
// this time counts as new.
constexpr std::uint32_t MaxRepeatInterval = 2000;

// How soon after another program lets go of the combination it works.
constexpr std::chrono::seconds RetryPeriod{3};

} // namespace

X11GlobalKey::X11GlobalKey(const QString& displayName, X11Session session)
    : m_session(session)
    , m_connection(X11Connection::tryOpen(displayName))
{
    m_retry.setInterval(RetryPeriod);
    connect(&m_retry, &QTimer::timeout, this, [this] {
        requestGrabs();
        updateState();
    });
    if (m_connection) {
        selectEvents();
    }
}

X11GlobalKey::~X11GlobalKey() = default;

void X11GlobalKey::selectEvents()
{
    auto* server = m_connection->get();
    if (xkb_x11_setup_xkb_extension(server, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &m_keyboardEvent,
                                    nullptr) == 0) {
        m_connection.reset();
        return;
    }
    // Without release events between the repeats of a held key.
    const std::uint32_t detectable = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    replyTo(xcb_xkb_per_client_flags_reply, server,
            xcb_xkb_per_client_flags(server, XCB_XKB_ID_USE_CORE_KBD, detectable, detectable, 0, 0, 0));
    // 0xff: all details of a map change.
    xcb_xkb_select_events(server, XCB_XKB_ID_USE_CORE_KBD, KeyboardEvents, 0, KeyboardEvents, 0xff, 0xff, nullptr);
    xcb_flush(server);

    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(server), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11GlobalKey::readEvents);
}

void X11GlobalKey::grab(std::uint32_t keyCode, std::uint32_t modifiers)
{
    m_combination = {.keyCode = keyCode, .modifiers = modifiers};
    m_lastPressTime.reset();
    updateGrabs();
}

void X11GlobalKey::release()
{
    m_combination.reset();
    m_lastPressTime.reset();
    updateGrabs();
}

void X11GlobalKey::readEventsSoon()
{
    QMetaObject::invokeMethod(this, &X11GlobalKey::readEvents, Qt::QueuedConnection);
}

std::optional<KeyboardMap> X11GlobalKey::tryReadKeyboard()
{
    readEventsSoon();
    return m_connection ? KeyboardMap::tryRead(m_connection->get()) : std::nullopt;
}

QString X11GlobalKey::characters(std::uint32_t keyCode)
{
    const auto keyboard = tryReadKeyboard();
    return keyboard ? keyboard->characters(m_connection->get(), keyCode) : QString();
}

std::uint32_t X11GlobalKey::heldModifiers()
{
    const auto keyboard = tryReadKeyboard();
    return keyboard ? keyboard->storedModifiers(heldKeys(m_connection->get())) : 0;
}

void X11GlobalKey::readKeyboard()
{
    m_keyboard = m_combination ? tryReadKeyboard() : std::nullopt;
    if (m_keyboard &&
        (m_keyboard->keyCodes(m_combination->keyCode).empty() || !m_keyboard->modifiers(m_combination->modifiers))) {
        m_keyboard.reset();
    }
    m_path = m_keyboard ? m_keyboard->path(m_combination->keyCode, m_combination->modifiers) : KeyPath();
}

std::vector<X11GlobalKey::Grab> X11GlobalKey::neededGrabs() const
{
    std::vector<Grab> grabs;
    if (m_keyboard && m_path.keepsModifiers) {
        const auto modifiers = *m_keyboard->modifiers(m_combination->modifiers);
        for (const auto key : m_keyboard->keyCodes(m_combination->keyCode)) {
            for (const auto locks : m_keyboard->lockStates()) {
                grabs.push_back({.key = key, .modifiers = static_cast<std::uint16_t>(modifiers | locks)});
            }
        }
    }
    return grabs;
}

void X11GlobalKey::updateGrabs()
{
    if (!m_connection) {
        updateState();
        return;
    }
    auto* server = m_connection->get();
    readKeyboard();
    const auto previous = std::exchange(m_grabs, neededGrabs());
    // New grabs come first: a key that stays the same must not miss a press. The first press on another keyboard is one
    // of the events that lead here.
    requestGrabs();
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(server)); screens.rem > 0; xcb_screen_next(&screens)) {
        for (const auto& grab : previous) {
            if (std::ranges::find(m_grabs, grab) == m_grabs.end()) {
                xcb_ungrab_key(server, grab.key, screens.data->root, grab.modifiers);
            }
        }
    }
    xcb_flush(server);
    if (!m_keyboard || m_path.keepsModifiers) {
        m_heldKeys.reset();
    } else if (!m_heldKeys) {
        m_heldKeys = std::make_unique<HeldKeys>(*m_connection);
    }
    updateState();
}

void X11GlobalKey::requestGrabs()
{
    if (!m_connection) {
        return;
    }
    auto* server = m_connection->get();
    std::vector<xcb_void_cookie_t> requests;
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(server)); screens.rem > 0; xcb_screen_next(&screens)) {
        for (const auto& grab : m_grabs) {
            // Grabs that exist already are repeated, because they may have failed.
            requests.push_back(xcb_grab_key_checked(server, 0, screens.data->root, grab.modifiers, grab.key,
                                                    XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        }
    }
    readEventsSoon();
    m_isTaken = false;
    // One round trip: the first check waits for the answers to all requests.
    for (const auto request : requests) {
        const XcbPtr<xcb_generic_error_t> error(xcb_request_check(server, request));
        m_isTaken = m_isTaken || (error && error->error_code == XCB_ACCESS);
    }
    if (m_isTaken != m_retry.isActive()) {
        m_isTaken ? m_retry.start() : m_retry.stop();
    }
}

bool X11GlobalKey::completesCombination(xcb_keycode_t key) const
{
    const auto keys = m_keyboard->keyCodes(m_combination->keyCode);
    return std::ranges::count(keys, key) > 0 &&
        m_keyboard->storedModifiers(m_heldKeys->keys()) == m_combination->modifiers;
}

GlobalKey::State X11GlobalKey::currentState() const
{
    if (!m_combination) {
        return State::Released;
    }
    if (m_session == X11Session::underWayland) {
        return State::ReservedByDesktop;
    }
    if (!m_connection || !m_keyboard) {
        return State::Unavailable;
    }
    if (m_isTaken) {
        return State::Taken;
    }
    return m_path.switchesLayout ? State::SwitchesLayout : State::Held;
}

void X11GlobalKey::updateState()
{
    const auto state = currentState();
    if (std::exchange(m_state, state) != state && onStateChanged) {
        onStateChanged();
    }
}

bool X11GlobalKey::registerPress(const xcb_generic_event_t& event)
{
    const auto time = static_cast<const xcb_key_press_event_t*>(static_cast<const void*>(&event))->time;
    // Server time wraps around; the unsigned difference is still correct.
    const bool isRepeat = m_lastPressTime && time - *m_lastPressTime < MaxRepeatInterval;
    m_lastPressTime = time;
    return !isRepeat;
}

void X11GlobalKey::readEvents()
{
    if (!m_connection) {
        return;
    }
    auto* server = m_connection->get();
    int presses = 0;
    bool hasKeyboardChanged = false;
    while (const auto event = XcbPtr<xcb_generic_event_t>(xcb_poll_for_event(server))) {
        const auto type = event->response_type & 0x7f;
        const auto pressed = m_heldKeys ? m_heldKeys->pressedKey(*event) : std::nullopt;
        if (pressed) {
            presses += completesCombination(*pressed) ? 1 : 0;
        } else if (type == XCB_KEY_PRESS) {
            presses += registerPress(*event) ? 1 : 0;
        } else if (type == XCB_KEY_RELEASE) {
            m_lastPressTime.reset();
        } else if (type == XCB_MAPPING_NOTIFY || (m_keyboardEvent != 0 && type == m_keyboardEvent)) {
            hasKeyboardChanged = true;
        }
    }
    if (xcb_connection_has_error(server) != 0) {
        m_notifier.reset();
        m_retry.stop();
        m_heldKeys.reset();
        m_connection.reset();
        updateState();
    } else if (hasKeyboardChanged) {
        // Once for all of these events: a layout change sends many.
        updateGrabs();
    }
    for (; presses > 0 && m_combination && onPressed; --presses) {
        onPressed();
    }
}

} // namespace quelto
