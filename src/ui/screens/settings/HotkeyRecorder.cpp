// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/HotkeyRecorder.h"

#include "base/keys/HotKeyText.h"
#include "base/keys/KeyCodes.h"
#include "ui/screens/settings/SettingsPageForQml.h"

#include <QKeyEvent>

namespace quelto {

namespace {

constexpr std::uint32_t EscapeCode = 53;
/// The kernel's codes of Shift, Control, Alt, Super and Caps Lock. What the layout makes of a key does not tell: it may
/// switch to another layout in place of being a modifier.
constexpr std::array<quint32, 9> ModifierScanCodes{42, 54, 29, 97, 56, 100, 125, 126, 58};
/// For a layout that makes a modifier of another key.
constexpr std::array ModifierKeyNames{Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt,     Qt::Key_AltGr,
                                      Qt::Key_Meta,  Qt::Key_Super_L, Qt::Key_Super_R, Qt::Key_CapsLock};
/// From the kernel's code of a key to that of the window system.
constexpr quint32 ScanCodeOffset = 8;

bool isKeyEvent(QEvent::Type type)
{
    return type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::ShortcutOverride;
}

} // namespace

HotkeyRecorder::HotkeyRecorder(QObject* parent)
    : HotkeyRecorder({.settings = SettingsPageForQml::instance->settings,
                      .hotKeys = SettingsPageForQml::instance->hotKeys,
                      .sounds = *SettingsPageForQml::instance->platform.eventSounds},
                     parent)
{
}

HotkeyRecorder::HotkeyRecorder(const Dependencies& dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
{
}

HotkeyRecorder::~HotkeyRecorder()
{
    stop();
}

void HotkeyRecorder::start()
{
    if (m_isRecording || !m_button || !m_button->window()) {
        return;
    }
    leaveWindow();
    m_isRecording = true;
    m_window = m_button->window();
    m_button->forceActiveFocus();
    m_dependencies.hotKeys.unregister();
    m_window->installEventFilter(this);
    connect(m_button, &QQuickItem::activeFocusChanged, this, &HotkeyRecorder::stopWithoutFocus);
    connect(m_button, &QQuickItem::visibleChanged, this, &HotkeyRecorder::stopWithoutFocus);
    connect(m_window, &QWindow::activeChanged, this, &HotkeyRecorder::stopWithoutFocus);
    connect(m_window, &QWindow::visibleChanged, this, &HotkeyRecorder::stopWithoutFocus);
    Q_EMIT recordingChanged();
    stopWithoutFocus();
}

void HotkeyRecorder::stop()
{
    if (!m_lastScanCode) {
        leaveWindow();
    }
    if (std::exchange(m_isRecording, false)) {
        m_dependencies.hotKeys.registerFromSettings();
        Q_EMIT recordingChanged();
    }
}

void HotkeyRecorder::stopWithoutFocus()
{
    const auto hasKeys = m_button && m_window && m_button->isVisible() && m_button->hasActiveFocus() &&
        m_window->isActive() && m_window->isVisible();
    if (!hasKeys) {
        m_lastScanCode.reset();
        stop();
    }
}

void HotkeyRecorder::leaveWindow()
{
    m_lastScanCode.reset();
    if (m_window) {
        m_window->removeEventFilter(this);
        m_window->disconnect(this);
    }
    if (m_button) {
        m_button->disconnect(this);
    }
    m_window.clear();
}

bool HotkeyRecorder::eventFilter(QObject* /*watched*/, QEvent* event)
{
    if (!isKeyEvent(event->type())) {
        return false;
    }
    const auto& key = *static_cast<const QKeyEvent*>(event);
    const auto isEnd = !m_isRecording && m_lastScanCode == key.nativeScanCode();
    if (!m_isRecording && !isEnd) {
        return false;
    }
    // Accepted, a shortcut of the menu comes as an ordinary press.
    event->accept();
    if (isEnd) {
        if (event->type() == QEvent::KeyRelease && !key.isAutoRepeat()) {
            leaveWindow();
        }
    } else if (event->type() == QEvent::KeyPress && !key.isAutoRepeat()) {
        press(key);
    }
    return true;
}

void HotkeyRecorder::press(const QKeyEvent& event)
{
    const auto scanCode = event.nativeScanCode() - ScanCodeOffset;
    const auto keyCode = keyCodeForScanCode(scanCode);
    if (event.key() == Qt::Key_Escape || keyCode == EscapeCode) {
        m_lastScanCode = event.nativeScanCode();
        stop();
        return;
    }
    if (std::ranges::count(ModifierScanCodes, scanCode) > 0 || std::ranges::count(ModifierKeyNames, event.key()) > 0) {
        return;
    }
    // The event lacks modifiers that the layout uses to switch to another layout.
    const auto modifiers = storedModifiers(event.modifiers()) | m_dependencies.hotKeys.heldModifiers();
    if (!keyCode || (modifiers == 0 && !isFunctionKey(*keyCode))) {
        m_dependencies.sounds.play(EventSound::bell);
        return;
    }
    m_lastScanCode = event.nativeScanCode();
    store(*keyCode, modifiers);
    stop();
}

void HotkeyRecorder::store(std::uint32_t keyCode, std::uint32_t modifiers)
{
    auto& settings = m_dependencies.settings;
    settings.setHotkeyCode(keyCode);
    settings.setHotkeyModifiers(modifiers);
    settings.setHotkeyKeyName(m_dependencies.hotKeys.keyName(keyCode));
}

} // namespace quelto
