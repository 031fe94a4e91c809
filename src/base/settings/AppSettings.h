// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/CaptureArithmetic.h"
#include "base/settings/Presets.h"
#include "moments/scoring/ClipTier.h"

#include <QObject>
#include <QSettings>
#include <QSize>
#include <QString>

#include <array>
#include <functional>
#include <optional>

namespace quelto {

/// Gives the pixel size of the display with that id, 0 being the main one; nothing where there is no such display.
using DisplaySize = std::function<std::optional<QSize>(std::uint32_t displayID)>;

/// Every preference of the user: keys, types and defaults in one place, and the arithmetic that turns presets into the
/// numbers an encoder needs.
///
/// A value is written to the file the moment it is set, also when it did not change; its own signal and then changed()
/// are emitted before that. Values outside the lists that the settings page offers are kept and used as they stand.
///
/// Thread: main. Errors: none; an unknown word for a preset gives the default. A negative or too large displayID,
/// hotkeyCode or hotkeyModifiers in the file ends the program: nothing in the program writes one.
class AppSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(int clipLength READ clipLength WRITE setClipLength NOTIFY clipLengthChanged)
    Q_PROPERTY(int fps READ fps WRITE setFps NOTIFY fpsChanged)
    Q_PROPERTY(bool captureAudio READ captureAudio WRITE setCaptureAudio NOTIFY captureAudioChanged)
    Q_PROPERTY(bool captureMicrophone READ captureMicrophone WRITE setCaptureMicrophone NOTIFY captureMicrophoneChanged)
    Q_PROPERTY(QString microphoneID READ microphoneID WRITE setMicrophoneID NOTIFY microphoneIDChanged)
    Q_PROPERTY(double micVolume READ micVolume WRITE setMicVolume NOTIFY micVolumeChanged)
    Q_PROPERTY(double systemVolume READ systemVolume WRITE setSystemVolume NOTIFY systemVolumeChanged)
    Q_PROPERTY(bool captureVoiceChat READ captureVoiceChat WRITE setCaptureVoiceChat NOTIFY captureVoiceChatChanged)
    Q_PROPERTY(bool showCursor READ showCursor WRITE setShowCursor NOTIFY showCursorChanged)
    Q_PROPERTY(quint32 displayID READ displayID WRITE setDisplayID NOTIFY displayIDChanged)
    Q_PROPERTY(QString saveFolder READ saveFolder WRITE setSaveFolder NOTIFY saveFolderChanged)
    Q_PROPERTY(bool autoStart READ autoStart WRITE setAutoStart NOTIFY autoStartChanged)
    Q_PROPERTY(bool playSound READ playSound WRITE setPlaySound NOTIFY playSoundChanged)
    Q_PROPERTY(bool showOverlay READ showOverlay WRITE setShowOverlay NOTIFY showOverlayChanged)
    Q_PROPERTY(int discordLimitMB READ discordLimitMB WRITE setDiscordLimitMB NOTIFY discordLimitMBChanged)
    Q_PROPERTY(bool autoClipEnabled READ autoClipEnabled WRITE setAutoClipEnabled NOTIFY autoClipEnabledChanged)
    Q_PROPERTY(bool autoClipLeague READ autoClipLeague WRITE setAutoClipLeague NOTIFY autoClipLeagueChanged)
    Q_PROPERTY(bool autoClipDota READ autoClipDota WRITE setAutoClipDota NOTIFY autoClipDotaChanged)
    Q_PROPERTY(bool autoClipWoW READ autoClipWoW WRITE setAutoClipWoW NOTIFY autoClipWoWChanged)
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY languageChanged)
    Q_PROPERTY(QString colorTheme READ colorTheme WRITE setColorTheme NOTIFY colorThemeChanged)
    Q_PROPERTY(bool autoClipEpic READ autoClipEpic WRITE setAutoClipEpic NOTIFY autoClipEpicChanged)
    Q_PROPERTY(bool autoClipMedium READ autoClipMedium WRITE setAutoClipMedium NOTIFY autoClipMediumChanged)
    Q_PROPERTY(bool autoClipBasic READ autoClipBasic WRITE setAutoClipBasic NOTIFY autoClipBasicChanged)
    Q_PROPERTY(quint32 hotkeyCode READ hotkeyCode WRITE setHotkeyCode NOTIFY hotkeyCodeChanged)
    Q_PROPERTY(quint32 hotkeyModifiers READ hotkeyModifiers WRITE setHotkeyModifiers NOTIFY hotkeyModifiersChanged)
    Q_PROPERTY(QString hotkeyKeyName READ hotkeyKeyName WRITE setHotkeyKeyName NOTIFY hotkeyKeyNameChanged)
    Q_PROPERTY(QString resolution READ resolutionRawValue WRITE setResolutionRawValue NOTIFY resolutionChanged)
    Q_PROPERTY(QString quality READ qualityRawValue WRITE setQualityRawValue NOTIFY qualityChanged)
    Q_PROPERTY(QString codec READ codecRawValue WRITE setCodecRawValue NOTIFY codecChanged)
    Q_PROPERTY(QString hotkeyDisplay READ hotkeyDisplay NOTIFY hotkeyDisplayChanged)

public:
    static constexpr std::array clipLengths{15, 30, 45, 60, 90, 120, 180, 300};
    static constexpr std::array fpsOptions{30, 60, 120};
    /// Units: decimal megabytes.
    static constexpr std::array discordLimits{10, 50, 500};

    /// $XDG_CONFIG_HOME/Quelto/Quelto.conf
    static QString defaultPath();

    explicit AppSettings(const QString& path = defaultPath(), DisplaySize displaySize = {}, QObject* parent = nullptr);

    int clipLength() const { return m_clipLength; }
    void setClipLength(int value);
    ResolutionPreset resolution() const { return m_resolution; }
    void setResolution(ResolutionPreset value);
    QualityPreset quality() const { return m_quality; }
    void setQuality(QualityPreset value);
    int fps() const { return m_fps; }
    void setFps(int value);
    VideoCodec codec() const { return m_codec; }
    void setCodec(VideoCodec value);
    bool captureAudio() const { return m_captureAudio; }
    void setCaptureAudio(bool value);
    bool captureMicrophone() const { return m_captureMicrophone; }
    void setCaptureMicrophone(bool value);
    QString microphoneID() const { return m_microphoneID; }
    void setMicrophoneID(const QString& value);
    double micVolume() const { return m_micVolume; }
    void setMicVolume(double value);
    double systemVolume() const { return m_systemVolume; }
    void setSystemVolume(double value);
    bool captureVoiceChat() const { return m_captureVoiceChat; }
    void setCaptureVoiceChat(bool value);
    bool showCursor() const { return m_showCursor; }
    void setShowCursor(bool value);
    quint32 displayID() const { return m_displayID; }
    void setDisplayID(quint32 value);
    /// Always an absolute path. Others, as someone may have written them into the file, count from the home folder,
    /// with or without "~"; an empty one is the default.
    QString saveFolder() const { return m_saveFolder; }
    void setSaveFolder(const QString& value);
    bool autoStart() const { return m_autoStart; }
    void setAutoStart(bool value);
    bool playSound() const { return m_playSound; }
    void setPlaySound(bool value);
    bool showOverlay() const { return m_showOverlay; }
    void setShowOverlay(bool value);
    int discordLimitMB() const { return m_discordLimitMB; }
    void setDiscordLimitMB(int value);
    bool autoClipEnabled() const { return m_autoClipEnabled; }
    void setAutoClipEnabled(bool value);
    bool autoClipLeague() const { return m_autoClipLeague; }
    void setAutoClipLeague(bool value);
    bool autoClipDota() const { return m_autoClipDota; }
    void setAutoClipDota(bool value);
    bool autoClipWoW() const { return m_autoClipWoW; }
    void setAutoClipWoW(bool value);
    QString language() const { return m_language; }
    /// All texts are in the new language before its change is told.
    void setLanguage(const QString& value);
    QString colorTheme() const { return m_colorTheme; }
    void setColorTheme(const QString& value);
    bool autoClipEpic() const { return m_autoClipEpic; }
    void setAutoClipEpic(bool value);
    bool autoClipMedium() const { return m_autoClipMedium; }
    void setAutoClipMedium(bool value);
    bool autoClipBasic() const { return m_autoClipBasic; }
    void setAutoClipBasic(bool value);
    quint32 hotkeyCode() const { return m_hotkeyCode; }
    void setHotkeyCode(quint32 value);
    quint32 hotkeyModifiers() const { return m_hotkeyModifiers; }
    void setHotkeyModifiers(quint32 value);
    QString hotkeyKeyName() const { return m_hotkeyKeyName; }
    void setHotkeyKeyName(const QString& value);

    QString resolutionRawValue() const { return rawValueOf(m_resolution); }
    void setResolutionRawValue(const QString& value) { setResolution(resolutionFromRawValue(value)); }
    QString qualityRawValue() const { return rawValueOf(m_quality); }
    void setQualityRawValue(const QString& value) { setQuality(qualityFromRawValue(value)); }
    QString codecRawValue() const { return rawValueOf(m_codec); }
    void setCodecRawValue(const QString& value) { setCodec(codecFromRawValue(value)); }

    /// Changes when, and only when, a setting changes that the capture pipeline must be built anew for.
    QString captureSignature() const;
    /// How far back the replay buffer reaches: the clip length, and at least 90 while moments are detected.
    int bufferSeconds() const;
    /// Whether moments of the game with that display name make clips; false for a name that no watcher bears.
    bool isGameEnabled(const QString& game) const;
    bool isTierEnabled(ClipTier tier) const;
    /// The save shortcut as the user reads it.
    QString hotkeyDisplay() const;
    /// Units: bits per second.
    int bitrate(QSize size) const;
    /// The size that a recording would have now. Asks the display system on each call.
    QSize estimatedCaptureSize() const;

Q_SIGNALS:
    /// After every setting's own signal.
    void changed();
    void clipLengthChanged();
    void resolutionChanged();
    void qualityChanged();
    void fpsChanged();
    void codecChanged();
    void captureAudioChanged();
    void captureMicrophoneChanged();
    void microphoneIDChanged();
    void micVolumeChanged();
    void systemVolumeChanged();
    void captureVoiceChatChanged();
    void showCursorChanged();
    void displayIDChanged();
    void saveFolderChanged();
    void autoStartChanged();
    void playSoundChanged();
    void showOverlayChanged();
    void discordLimitMBChanged();
    void autoClipEnabledChanged();
    void autoClipLeagueChanged();
    void autoClipDotaChanged();
    void autoClipWoWChanged();
    void languageChanged();
    void colorThemeChanged();
    void autoClipEpicChanged();
    void autoClipMediumChanged();
    void autoClipBasicChanged();
    void hotkeyCodeChanged();
    void hotkeyModifiersChanged();
    void hotkeyKeyNameChanged();
    void hotkeyDisplayChanged();

private:
    void publish(const QString& key, const QVariant& value);

    QSettings m_store;
    DisplaySize m_displaySize;
    int m_clipLength = 0;
    ResolutionPreset m_resolution = ResolutionPreset::p1080;
    QualityPreset m_quality = QualityPreset::high;
    int m_fps = 0;
    VideoCodec m_codec = VideoCodec::h264;
    bool m_captureAudio = false;
    bool m_captureMicrophone = false;
    QString m_microphoneID;
    double m_micVolume = 0;
    double m_systemVolume = 0;
    bool m_captureVoiceChat = false;
    bool m_showCursor = false;
    quint32 m_displayID = 0;
    QString m_saveFolder;
    bool m_autoStart = false;
    bool m_playSound = false;
    bool m_showOverlay = false;
    int m_discordLimitMB = 0;
    bool m_autoClipEnabled = false;
    bool m_autoClipLeague = false;
    bool m_autoClipDota = false;
    bool m_autoClipWoW = false;
    QString m_language;
    QString m_colorTheme;
    bool m_autoClipEpic = false;
    bool m_autoClipMedium = false;
    bool m_autoClipBasic = false;
    quint32 m_hotkeyCode = 0;
    quint32 m_hotkeyModifiers = 0;
    QString m_hotkeyKeyName;
};

} // namespace quelto
