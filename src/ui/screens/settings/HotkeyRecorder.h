// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hotkey/HotKeyManager.h"
#include "platform/EventSounds.h"

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// Records a new global shortcut: the next key combination that the user presses in the window.
///
/// While it records, the window gets no keys, and the old shortcut does nothing. It ends without a change when the
/// button loses the focus or the window is deactivated.
///
/// Thread: main.
class HotkeyRecorder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool recording READ isRecording NOTIFY recordingChanged)
    /// The control that shows the shortcut and has the focus while it is recorded.
    Q_PROPERTY(QQuickItem* button MEMBER m_button)

public:
    /// All outlive the object.
    struct Dependencies {
        AppSettings& settings;
        HotKeyManager& hotKeys;
        EventSounds& sounds;
    };

    /// For QML; uses the objects that are registered there.
    explicit HotkeyRecorder(QObject* parent = nullptr);
    explicit HotkeyRecorder(const Dependencies& dependencies, QObject* parent = nullptr);
    ~HotkeyRecorder() override;

    bool isRecording() const { return m_isRecording; }

    /// Does nothing while it records, or while the button is in no window.
    Q_INVOKABLE void start();
    Q_INVOKABLE void stop();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void recordingChanged();

private:
    void press(const QKeyEvent& event);
    void store(std::uint32_t keyCode, std::uint32_t modifiers);
    void stopWithoutFocus();
    void leaveWindow();

    Dependencies m_dependencies;
    QPointer<QQuickItem> m_button;
    /// Whose events it filters.
    QPointer<QQuickWindow> m_window;
    bool m_isRecording = false;
    /// The key that ended the recording, until it is released: its repeats must not reach the button.
    std::optional<quint32> m_lastScanCode;
};

} // namespace quelto
