// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/TypedKeys.h"

#include "base/keys/KeyCodes.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include <xkbcommon/xkbcommon.h>

namespace quelto {

namespace {

/// From the kernel's code of a key to that of the window system.
constexpr quint32 WindowSystemOffset = 8;

/// The modifiers Mod3 and Mod5, which choose the third level of a key (AltGr).
constexpr quint32 ThirdLevel = 0x20 | 0x80;

constexpr char32_t CapitalDottedI = U'\u0130';

/// What a press tells about its key.
struct TypedKey {
    /// What the key types without modifiers; empty if that is unknown.
    QString characters;
    /// Whether that is concluded from what it types with Shift or Caps Lock.
    bool isConcluded = false;
};

TypedKey typedBy(const QKeyEvent& press)
{
    if ((press.nativeModifiers() & ThirdLevel) != 0) {
        return {};
    }
    const auto symbol = static_cast<char32_t>(xkb_keysym_to_utf32(press.nativeVirtualKey()));
    // Qt's lower-case form has a combining dot.
    const auto character = symbol == CapitalDottedI ? U'i' : QChar::toLower(symbol);
    const auto isConcluded = press.modifiers().testFlag(Qt::ShiftModifier) || character != symbol;
    // Only letters tell it, and "I" does not: on Turkish layouts it belongs to the key of "ı".
    const auto tellsIt = !isConcluded || (QChar::isLetter(character) && symbol != U'I');
    const auto canBeShown = QChar::isPrint(character) && !QChar::isSpace(character);
    return {.characters = tellsIt && canBeShown ? QString::fromUcs4(&character, 1) : QString(),
            .isConcluded = isConcluded};
}

} // namespace

TypedKeys::TypedKeys()
{
    QCoreApplication::instance()->installEventFilter(this);
}

QString TypedKeys::characters(std::uint32_t keyCode) const
{
    return m_characters.value(keyCode);
}

bool TypedKeys::eventFilter(QObject* watched, QEvent* event)
{
    // Windows receive an event first; what they pass on may lack the native codes.
    if (event->type() == QEvent::KeyPress && watched->isWindowType()) {
        const auto& press = *static_cast<const QKeyEvent*>(event);
        const auto keyCode = keyCodeForScanCode(press.nativeScanCode() - WindowSystemOffset);
        const auto typed = typedBy(press);
        if (keyCode && !typed.characters.isEmpty() && !(typed.isConcluded && m_characters.contains(*keyCode))) {
            m_characters[*keyCode] = typed.characters;
        }
    }
    return false;
}

} // namespace quelto
