// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/Presets.h"
#include "base/settings/SettingsFile.h"
#include "base/settings/StoredValue.h"

#include <QObject>
#include <QString>

#include <array>
#include <utility>

namespace quelto {

// The storage, getter and signal of one preference. Its key in the file is its name.
#define QUELTO_PREFERENCE_FIELD(Type, name, fallback)                                                                  \
public:                                                                                                                \
    Type name() const                                                                                                  \
    {                                                                                                                  \
        return m_##name;                                                                                               \
    }                                                                                                                  \
    Q_SIGNAL void name##Changed();                                                                                     \
                                                                                                                       \
private:                                                                                                               \
    Type m_##name = readStored(m_file.stored(), #name, Type(fallback));

// The setter that every preference has unless it must do something more.
#define QUELTO_PREFERENCE_SETTER(Type, name, setter)                                                                   \
public:                                                                                                                \
    void setter(Type value)                                                                                            \
    {                                                                                                                  \
        assign(m_##name, std::move(value), #name, &AppSettings::name##Changed);                                        \
    }

// One preference, also a property for QML.
#define QUELTO_PREFERENCE(Type, name, setter, fallback)                                                                \
    Q_PROPERTY(Type name READ name WRITE setter NOTIFY name##Changed)                                                  \
    QUELTO_PREFERENCE_FIELD(Type, name, fallback)                                                                      \
    QUELTO_PREFERENCE_SETTER(Type, name, setter)

// One preference whose setter is written by hand in the source file.
#define QUELTO_PREFERENCE_WITH_RULE(Type, name, setter, fallback)                                                      \
    Q_PROPERTY(Type name READ name WRITE setter NOTIFY name##Changed)                                                  \
    QUELTO_PREFERENCE_FIELD(Type, name, fallback)                                                                      \
public:                                                                                                                \
    void setter(const Type& value);

// One preference that is an enumeration; QML and the session bus see its name in the file.
#define QUELTO_PREFERENCE_PRESET(Type, name, setter, fallback)                                                         \
    Q_PROPERTY(QString name READ name##RawValue WRITE setter##RawValue NOTIFY name##Changed)                           \
    QUELTO_PREFERENCE_FIELD(Type, name, fallback)                                                                      \
    QUELTO_PREFERENCE_SETTER(Type, name, setter)                                                                       \
    QString name##RawValue() const                                                                                     \
    {                                                                                                                  \
        return rawValueOf(m_##name);                                                                                   \
    }                                                                                                                  \
    void setter##RawValue(const QString& value)                                                                        \
    {                                                                                                                  \
        setter(presetFromRawValue<Type>(value));                                                                       \
    }

/// All preferences of the user, with their keys, types and defaults.
///
/// A setter changes the value, emits the preference's own signal, then changed(), and then gives the value to the file,
/// also when it is the same as before. The file is written on another thread. Values outside the lists that the
/// settings page offers are kept as they are.
///
/// Thread: main. Errors: none. A negative or too large displayID, hotkeyCode or hotkeyModifiers in the file ends the
/// program.
class AppSettings : public QObject {
    Q_OBJECT

    // The first member: the preferences are read from it when they are initialised.
    SettingsFile m_file;

    /// Units: seconds.
    QUELTO_PREFERENCE(int, clipLength, setClipLength, 30)
    QUELTO_PREFERENCE_PRESET(ResolutionPreset, resolution, setResolution, ResolutionPreset::p1080)
    QUELTO_PREFERENCE_PRESET(QualityPreset, quality, setQuality, QualityPreset::high)
    QUELTO_PREFERENCE(int, fps, setFps, 60)
    QUELTO_PREFERENCE_PRESET(VideoCodec, codec, setCodec, VideoCodec::h264)
    QUELTO_PREFERENCE(bool, captureAudio, setCaptureAudio, true)
    QUELTO_PREFERENCE(bool, captureMicrophone, setCaptureMicrophone, true)
    /// The audio server's name of the device; empty for the default device.
    QUELTO_PREFERENCE(QString, microphoneID, setMicrophoneID, QString())
    /// Gains, 0 to 2 on the settings page.
    QUELTO_PREFERENCE(double, micVolume, setMicVolume, 1.0)
    QUELTO_PREFERENCE(double, systemVolume, setSystemVolume, 1.0)
    QUELTO_PREFERENCE(bool, captureVoiceChat, setCaptureVoiceChat, true)
    QUELTO_PREFERENCE(bool, showCursor, setShowCursor, true)
    /// 0 for the main display.
    QUELTO_PREFERENCE(quint32, displayID, setDisplayID, 0)
    /// Always an absolute path; see absoluteSaveFolder().
    QUELTO_PREFERENCE_WITH_RULE(QString, saveFolder, setSaveFolder, QString())
    QUELTO_PREFERENCE(bool, autoStart, setAutoStart, true)
    QUELTO_PREFERENCE(bool, playSound, setPlaySound, true)
    QUELTO_PREFERENCE(bool, showOverlay, setShowOverlay, true)
    /// Units: decimal megabytes.
    QUELTO_PREFERENCE(int, discordLimitMB, setDiscordLimitMB, 10)
    QUELTO_PREFERENCE(bool, autoClipEnabled, setAutoClipEnabled, true)
    QUELTO_PREFERENCE(bool, autoClipLeague, setAutoClipLeague, true)
    QUELTO_PREFERENCE(bool, autoClipDota, setAutoClipDota, true)
    QUELTO_PREFERENCE(bool, autoClipWoW, setAutoClipWoW, true)
    /// "system" or a language's code. T() returns the new language before languageChanged is emitted.
    QUELTO_PREFERENCE_WITH_RULE(QString, language, setLanguage, QStringLiteral("system"))
    QUELTO_PREFERENCE(QString, colorTheme, setColorTheme, QStringLiteral("ember"))
    QUELTO_PREFERENCE(bool, autoClipEpic, setAutoClipEpic, true)
    QUELTO_PREFERENCE(bool, autoClipMedium, setAutoClipMedium, true)
    QUELTO_PREFERENCE(bool, autoClipBasic, setAutoClipBasic, false)
    /// The save shortcut in the codes of KeyCodes.h and HotKeyText.h.
    QUELTO_PREFERENCE(quint32, hotkeyCode, setHotkeyCode, 8)
    QUELTO_PREFERENCE(quint32, hotkeyModifiers, setHotkeyModifiers, 2560)
    QUELTO_PREFERENCE(QString, hotkeyKeyName, setHotkeyKeyName, QStringLiteral("C"))

public:
    /// What the settings page offers.
    static constexpr std::array clipLengths{15, 30, 45, 60, 90, 120, 180, 300};
    static constexpr std::array fpsOptions{30, 60, 120};
    static constexpr std::array discordLimits{10, 50, 500};
    static constexpr std::array colorThemes{"ember",  "blurple", "onyx",        "midnight", "crimson",
                                            "forest", "sunset",  "cottoncandy", "ocean",    "neon"};

    /// $XDG_CONFIG_HOME/Quelto/Quelto.conf
    static QString defaultPath();

    explicit AppSettings(const QString& path = defaultPath(), QObject* parent = nullptr);

    /// For what is remembered but is no preference, like the frame of the window.
    SettingsFile& file() noexcept { return m_file; }
    /// Waits until the file has all values. False if the disk needs longer than the timeout.
    bool finishWriting(std::chrono::milliseconds timeout) { return m_file.finishWriting(timeout); }

Q_SIGNALS:
    /// After the signal of any preference.
    void changed();

private:
    template <typename T> void assign(T& field, T value, const char* key, void (AppSettings::*fieldChanged)())
    {
        field = std::move(value);
        Q_EMIT(this->*fieldChanged)();
        Q_EMIT changed();
        m_file.setValue(QLatin1String(key), storedForm(field));
    }
};

#undef QUELTO_PREFERENCE_PRESET
#undef QUELTO_PREFERENCE_WITH_RULE
#undef QUELTO_PREFERENCE
#undef QUELTO_PREFERENCE_SETTER
#undef QUELTO_PREFERENCE_FIELD

} // namespace quelto
