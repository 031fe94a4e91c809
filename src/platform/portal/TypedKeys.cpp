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

/// What the key types without modifiers; empty if that is unknown.
QString charactersOf(const QKeyEvent& event)
{
    const auto character = static_cast<char32_t>(xkb_keysym_to_utf32(event.nativeVirtualKey()));
    if (character == 0) {
        return {};
    }
    const auto text = QString::fromUcs4(&character, 1).toLower();
    // The symbol is the one with Shift. Only letters tell from it what the key types alone.
    const auto isOther = event.modifiers().testFlag(Qt::ShiftModifier) && !text.front().isLetter();
    const auto canBeShown = text.front().isPrint() && !text.front().isSpace();
    return canBeShown && !isOther ? text : QString();
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
        const auto typed = charactersOf(press);
        if (keyCode && !typed.isEmpty()) {
            m_characters[*keyCode] = typed;
        }
    }
    return false;
}

} // namespace quelto
