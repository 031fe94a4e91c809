// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/KeyboardMap.h"

#include "base/keys/HotKeyText.h"
#include "base/keys/KeyCodes.h"

#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace quelto {

namespace {

struct UnrefKeyState {
    void operator()(xkb_state* state) const noexcept { xkb_state_unref(state); }
    void operator()(xkb_compose_table* table) const noexcept { xkb_compose_table_unref(table); }
    void operator()(xkb_compose_state* state) const noexcept { xkb_compose_state_unref(state); }
};
using KeyStatePtr = std::unique_ptr<xkb_state, UnrefKeyState>;
using ComposeTablePtr = std::unique_ptr<xkb_compose_table, UnrefKeyState>;
using ComposeStatePtr = std::unique_ptr<xkb_compose_state, UnrefKeyState>;

std::uint32_t modifierOfSymbol(xkb_keysym_t symbol)
{
    switch (symbol) {
    case XKB_KEY_Shift_L:
    case XKB_KEY_Shift_R:
        return modifierBits::shift;
    case XKB_KEY_Control_L:
    case XKB_KEY_Control_R:
        return modifierBits::control;
    case XKB_KEY_Alt_L:
    case XKB_KEY_Alt_R:
        return modifierBits::option;
    case XKB_KEY_Super_L:
    case XKB_KEY_Super_R:
        return modifierBits::command;
    default:
        return 0;
    }
}

std::uint16_t lowestBit(std::uint16_t bits)
{
    return static_cast<std::uint16_t>(bits & -bits);
}

/// What a key that waits for a letter types with the space bar. Empty for other keys.
QString accent(xkb_context* context, xkb_keysym_t symbol)
{
    const ComposeTablePtr table(
        xkb_compose_table_new_from_locale(context, "en_US.UTF-8", XKB_COMPOSE_COMPILE_NO_FLAGS));
    const ComposeStatePtr state(table ? xkb_compose_state_new(table.get(), XKB_COMPOSE_STATE_NO_FLAGS) : nullptr);
    if (!state) {
        return {};
    }
    xkb_compose_state_feed(state.get(), symbol);
    xkb_compose_state_feed(state.get(), XKB_KEY_space);
    std::array<char, 32> bytes{};
    xkb_compose_state_get_utf8(state.get(), bytes.data(), bytes.size());
    return QString::fromUtf8(bytes.data());
}

} // namespace

std::optional<KeyboardMap> KeyboardMap::tryRead(xcb_connection_t* connection)
{
    KeyboardMap map;
    map.m_context.reset(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const auto device = xkb_x11_get_core_keyboard_device_id(connection);
    if (!map.m_context || device < 0) {
        return std::nullopt;
    }
    map.m_keymap.reset(
        xkb_x11_keymap_new_from_device(map.m_context.get(), connection, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!map.m_keymap) {
        return std::nullopt;
    }
    map.readModifiers(connection);
    return map;
}

void KeyboardMap::readModifiers(xcb_connection_t* connection)
{
    const auto reply = replyTo(xcb_get_modifier_mapping_reply, connection, xcb_get_modifier_mapping(connection));
    if (!reply) {
        return;
    }
    const auto* keys = xcb_get_modifier_mapping_keycodes(reply.get());
    const int perModifier = reply->keycodes_per_modifier;
    for (int modifier = 0; modifier < 8; ++modifier) {
        for (int index = 0; index < perModifier; ++index) {
            readModifierKey(keys[modifier * perModifier + index], static_cast<std::uint16_t>(1 << modifier));
        }
    }
    // If a lock shared its bit with a modifier, the shortcut would fire without that modifier.
    m_locks = static_cast<std::uint16_t>(m_locks & ~(m_alt | m_super | XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL));
}

void KeyboardMap::readModifierKey(xcb_keycode_t key, std::uint16_t bit)
{
    if (key == 0) {
        return;
    }
    const auto layouts = xkb_keymap_num_layouts_for_key(m_keymap.get(), key);
    for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
        const auto levels = xkb_keymap_num_levels_for_key(m_keymap.get(), key, layout);
        for (xkb_level_index_t level = 0; level < levels; ++level) {
            const xkb_keysym_t* symbols = nullptr;
            const int count = xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, layout, level, &symbols);
            for (int index = 0; index < count; ++index) {
                if (level == 0 && m_modifierOfKey.at(key) == 0) {
                    m_modifierOfKey.at(key) = modifierOfSymbol(symbols[index]);
                }
                switch (symbols[index]) {
                case XKB_KEY_Alt_L:
                case XKB_KEY_Alt_R:
                    m_alt |= bit;
                    break;
                case XKB_KEY_Super_L:
                case XKB_KEY_Super_R:
                    m_super |= bit;
                    break;
                case XKB_KEY_Num_Lock:
                    m_numLock |= bit;
                    [[fallthrough]];
                case XKB_KEY_Scroll_Lock:
                    m_locks |= bit;
                    break;
                default:
                    break;
                }
            }
        }
    }
}

std::vector<xcb_keycode_t> KeyboardMap::keyCodes(std::uint32_t storedCode) const
{
    std::vector<xcb_keycode_t> keys;
    for (const auto& position : positionsOfKeyCode(storedCode)) {
        const auto key = xkb_keymap_key_by_name(m_keymap.get(), position.xkbName);
        if (key != XKB_KEYCODE_INVALID && key <= 255) {
            keys.push_back(static_cast<xcb_keycode_t>(key));
        }
    }
    return keys;
}

std::optional<std::uint16_t> KeyboardMap::modifiers(std::uint32_t storedModifiers) const
{
    const struct {
        std::uint32_t stored;
        std::uint16_t serverBits;
    } rows[] = {{modifierBits::shift, XCB_MOD_MASK_SHIFT},
                {modifierBits::control, XCB_MOD_MASK_CONTROL},
                {modifierBits::option, lowestBit(m_alt)},
                {modifierBits::command, lowestBit(m_super)}};
    std::uint16_t result = 0;
    for (const auto& row : rows) {
        if ((storedModifiers & row.stored) == 0) {
            continue;
        }
        if (row.serverBits == 0) {
            return std::nullopt;
        }
        result |= row.serverBits;
    }
    return result;
}

std::uint32_t KeyboardMap::storedModifiers(const KeySet& keys) const
{
    std::uint32_t bits = 0;
    for (std::size_t key = 0; key < keys.size(); ++key) {
        bits |= keys.test(key) ? m_modifierOfKey.at(key) : 0;
    }
    return bits;
}

KeyPath KeyboardMap::path(std::uint32_t storedCode, std::uint32_t storedModifiers) const
{
    std::vector<ModifierKeys> modifierKeys;
    for (const auto bit : {modifierBits::shift, modifierBits::control, modifierBits::option, modifierBits::command}) {
        if ((storedModifiers & bit) != 0) {
            auto& keys = modifierKeys.emplace_back();
            for (std::size_t key = 0; key < m_modifierOfKey.size(); ++key) {
                if (m_modifierOfKey.at(key) == bit) {
                    keys.push_back(static_cast<xkb_keycode_t>(key));
                }
            }
        }
    }
    const auto keys = keyCodes(storedCode);
    return keyPath(m_keymap.get(), modifierKeys, {keys.begin(), keys.end()}, modifiers(storedModifiers).value_or(0));
}

QString KeyboardMap::characters(xcb_connection_t* connection, std::uint32_t storedCode) const
{
    const auto device = xkb_x11_get_core_keyboard_device_id(connection);
    const KeyStatePtr present(xkb_x11_state_new_from_device(m_keymap.get(), connection, device));
    const KeyStatePtr state(xkb_state_new(m_keymap.get()));
    const auto keys = keyCodes(storedCode);
    if (!present || !state || keys.empty()) {
        return {};
    }
    xkb_state_update_mask(state.get(), 0, 0, m_numLock, 0, 0,
                          xkb_state_serialize_layout(present.get(), XKB_STATE_LAYOUT_EFFECTIVE));
    std::array<char, 32> bytes{};
    xkb_state_key_get_utf8(state.get(), keys.front(), bytes.data(), bytes.size());
    auto text = QString::fromUtf8(bytes.data());
    if (text.isEmpty()) {
        text = accent(m_context.get(), xkb_state_key_get_one_sym(state.get(), keys.front()));
    }
    const auto canBeShown = std::ranges::all_of(text, [](QChar each) { return each.isPrint() && !each.isSpace(); });
    return canBeShown ? text : QString();
}

std::vector<std::uint16_t> KeyboardMap::lockStates() const
{
    std::vector<std::uint16_t> states{0};
    for (std::uint16_t rest = m_locks; rest != 0; rest = static_cast<std::uint16_t>(rest & (rest - 1))) {
        const auto known = states.size();
        for (std::size_t index = 0; index < known; ++index) {
            states.push_back(static_cast<std::uint16_t>(states[index] | lowestBit(rest)));
        }
    }
    return states;
}

} // namespace quelto
