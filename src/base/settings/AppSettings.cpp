// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/AppSettings.h"

#include "base/keys/HotKeyText.h"
#include "base/language/L10n.h"
#include "moments/scoring/GameNames.h"

#include <QDir>
#include <QHash>
#include <QStandardPaths>
#include <QVariant>

#include <limits>

namespace quelto {

namespace {

// A detected moment may ask for a clip of up to this length.
constexpr int LeastBufferSecondsForMoments = 90;
constexpr QSize SizeOfNoDisplay{1920, 1080};

QString defaultSaveFolder()
{
    const auto videos = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    if (videos.isEmpty()) {
        qFatal("The user has no videos folder");
    }
    return videos + QStringLiteral("/Quelto");
}

/// Where a program was started must not decide what is listed, watched and thrown away.
QString absoluteFolder(const QString& folder)
{
    if (folder.isEmpty()) {
        return defaultSaveFolder();
    }
    const auto isOfHome = folder == u'~' || folder.startsWith(QStringLiteral("~/"));
    return QDir::isAbsolutePath(folder) ? folder
                                        : QDir::cleanPath(QDir::home().filePath(isOfHome ? folder.mid(2) : folder));
}

/// What stands behind a key that the file does not hold.
const QHash<QString, QVariant>& defaults()
{
    static const QHash<QString, QVariant> values{
        {QStringLiteral("clipLength"), 30},
        {QStringLiteral("resolution"), QStringLiteral("p1080")},
        {QStringLiteral("quality"), QStringLiteral("high")},
        {QStringLiteral("fps"), 60},
        {QStringLiteral("codec"), QStringLiteral("h264")},
        {QStringLiteral("captureAudio"), true},
        {QStringLiteral("captureMicrophone"), true},
        {QStringLiteral("microphoneID"), QString()},
        {QStringLiteral("micVolume"), 1.0},
        {QStringLiteral("systemVolume"), 1.0},
        {QStringLiteral("captureVoiceChat"), true},
        {QStringLiteral("showCursor"), true},
        {QStringLiteral("displayID"), 0U},
        {QStringLiteral("saveFolder"), defaultSaveFolder()},
        {QStringLiteral("autoStart"), true},
        {QStringLiteral("playSound"), true},
        {QStringLiteral("showOverlay"), true},
        {QStringLiteral("discordLimitMB"), 10},
        {QStringLiteral("autoClipEnabled"), true},
        {QStringLiteral("autoClipLeague"), true},
        {QStringLiteral("autoClipDota"), true},
        {QStringLiteral("autoClipWoW"), true},
        {QStringLiteral("language"), QStringLiteral("system")},
        {QStringLiteral("colorTheme"), QStringLiteral("ember")},
        {QStringLiteral("autoClipEpic"), true},
        {QStringLiteral("autoClipMedium"), true},
        {QStringLiteral("autoClipBasic"), false},
        {QStringLiteral("hotkeyCode"), 8U},
        {QStringLiteral("hotkeyModifiers"), 2560U},
        {QStringLiteral("hotkeyKeyName"), QStringLiteral("C")},
    };
    return values;
}

/// Reads one key after the other with the type that it is meant to have.
class Reader {
public:
    explicit Reader(const QSettings& store)
        : m_store(store)
    {
    }

    int integer(const QString& key) const { return value(key).toInt(); }
    bool boolean(const QString& key) const { return value(key).toBool(); }
    double real(const QString& key) const { return value(key).toDouble(); }

    QString text(const QString& key) const
    {
        const auto stored = value(key);
        // The INI form splits an unquoted value at its commas; a folder's name may well hold one.
        return stored.typeId() == QMetaType::QStringList ? stored.toStringList().join(QStringLiteral(", "))
                                                         : stored.toString();
    }

    quint32 unsignedInteger(const QString& key) const
    {
        const auto stored = value(key).toLongLong();
        if (stored < 0 || stored > std::numeric_limits<quint32>::max()) {
            qFatal("%s is out of range in %s", qUtf8Printable(key), qUtf8Printable(m_store.fileName()));
        }
        return static_cast<quint32>(stored);
    }

private:
    QVariant value(const QString& key) const { return m_store.value(key, defaults().value(key)); }

    const QSettings& m_store;
};

QString textOf(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

QString AppSettings::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
        QStringLiteral("/Quelto/Quelto.conf");
}

AppSettings::AppSettings(const QString& path, DisplaySize displaySize, QObject* parent)
    : QObject(parent)
    , m_store(path, QSettings::IniFormat)
    , m_displaySize(std::move(displaySize))
{
    const Reader read(m_store);
    m_clipLength = read.integer(QStringLiteral("clipLength"));
    m_resolution = resolutionFromRawValue(read.text(QStringLiteral("resolution")));
    m_quality = qualityFromRawValue(read.text(QStringLiteral("quality")));
    m_fps = read.integer(QStringLiteral("fps"));
    m_codec = codecFromRawValue(read.text(QStringLiteral("codec")));
    m_captureAudio = read.boolean(QStringLiteral("captureAudio"));
    m_captureMicrophone = read.boolean(QStringLiteral("captureMicrophone"));
    m_microphoneID = read.text(QStringLiteral("microphoneID"));
    m_micVolume = read.real(QStringLiteral("micVolume"));
    m_systemVolume = read.real(QStringLiteral("systemVolume"));
    m_captureVoiceChat = read.boolean(QStringLiteral("captureVoiceChat"));
    m_showCursor = read.boolean(QStringLiteral("showCursor"));
    m_displayID = read.unsignedInteger(QStringLiteral("displayID"));
    m_saveFolder = absoluteFolder(read.text(QStringLiteral("saveFolder")));
    m_autoStart = read.boolean(QStringLiteral("autoStart"));
    m_playSound = read.boolean(QStringLiteral("playSound"));
    m_showOverlay = read.boolean(QStringLiteral("showOverlay"));
    m_discordLimitMB = read.integer(QStringLiteral("discordLimitMB"));
    m_autoClipEnabled = read.boolean(QStringLiteral("autoClipEnabled"));
    m_autoClipLeague = read.boolean(QStringLiteral("autoClipLeague"));
    m_autoClipDota = read.boolean(QStringLiteral("autoClipDota"));
    m_autoClipWoW = read.boolean(QStringLiteral("autoClipWoW"));
    m_language = read.text(QStringLiteral("language"));
    m_colorTheme = read.text(QStringLiteral("colorTheme"));
    m_autoClipEpic = read.boolean(QStringLiteral("autoClipEpic"));
    m_autoClipMedium = read.boolean(QStringLiteral("autoClipMedium"));
    m_autoClipBasic = read.boolean(QStringLiteral("autoClipBasic"));
    m_hotkeyCode = read.unsignedInteger(QStringLiteral("hotkeyCode"));
    m_hotkeyModifiers = read.unsignedInteger(QStringLiteral("hotkeyModifiers"));
    m_hotkeyKeyName = read.text(QStringLiteral("hotkeyKeyName"));
}

void AppSettings::publish(const QString& key, const QVariant& value)
{
    Q_EMIT changed();
    m_store.setValue(key, value);
    m_store.sync();
}

void AppSettings::setClipLength(int value)
{
    m_clipLength = value;
    Q_EMIT clipLengthChanged();
    publish(QStringLiteral("clipLength"), value);
}

void AppSettings::setResolution(ResolutionPreset value)
{
    m_resolution = value;
    Q_EMIT resolutionChanged();
    publish(QStringLiteral("resolution"), rawValueOf(value));
}

void AppSettings::setQuality(QualityPreset value)
{
    m_quality = value;
    Q_EMIT qualityChanged();
    publish(QStringLiteral("quality"), rawValueOf(value));
}

void AppSettings::setFps(int value)
{
    m_fps = value;
    Q_EMIT fpsChanged();
    publish(QStringLiteral("fps"), value);
}

void AppSettings::setCodec(VideoCodec value)
{
    m_codec = value;
    Q_EMIT codecChanged();
    publish(QStringLiteral("codec"), rawValueOf(value));
}

void AppSettings::setCaptureAudio(bool value)
{
    m_captureAudio = value;
    Q_EMIT captureAudioChanged();
    publish(QStringLiteral("captureAudio"), value);
}

void AppSettings::setCaptureMicrophone(bool value)
{
    m_captureMicrophone = value;
    Q_EMIT captureMicrophoneChanged();
    publish(QStringLiteral("captureMicrophone"), value);
}

void AppSettings::setMicrophoneID(const QString& value)
{
    m_microphoneID = value;
    Q_EMIT microphoneIDChanged();
    publish(QStringLiteral("microphoneID"), value);
}

void AppSettings::setMicVolume(double value)
{
    m_micVolume = value;
    Q_EMIT micVolumeChanged();
    publish(QStringLiteral("micVolume"), value);
}

void AppSettings::setSystemVolume(double value)
{
    m_systemVolume = value;
    Q_EMIT systemVolumeChanged();
    publish(QStringLiteral("systemVolume"), value);
}

void AppSettings::setCaptureVoiceChat(bool value)
{
    m_captureVoiceChat = value;
    Q_EMIT captureVoiceChatChanged();
    publish(QStringLiteral("captureVoiceChat"), value);
}

void AppSettings::setShowCursor(bool value)
{
    m_showCursor = value;
    Q_EMIT showCursorChanged();
    publish(QStringLiteral("showCursor"), value);
}

void AppSettings::setDisplayID(quint32 value)
{
    m_displayID = value;
    Q_EMIT displayIDChanged();
    publish(QStringLiteral("displayID"), value);
}

void AppSettings::setSaveFolder(const QString& value)
{
    m_saveFolder = absoluteFolder(value);
    Q_EMIT saveFolderChanged();
    publish(QStringLiteral("saveFolder"), m_saveFolder);
}

void AppSettings::setAutoStart(bool value)
{
    m_autoStart = value;
    Q_EMIT autoStartChanged();
    publish(QStringLiteral("autoStart"), value);
}

void AppSettings::setPlaySound(bool value)
{
    m_playSound = value;
    Q_EMIT playSoundChanged();
    publish(QStringLiteral("playSound"), value);
}

void AppSettings::setShowOverlay(bool value)
{
    m_showOverlay = value;
    Q_EMIT showOverlayChanged();
    publish(QStringLiteral("showOverlay"), value);
}

void AppSettings::setDiscordLimitMB(int value)
{
    m_discordLimitMB = value;
    Q_EMIT discordLimitMBChanged();
    publish(QStringLiteral("discordLimitMB"), value);
}

void AppSettings::setAutoClipEnabled(bool value)
{
    m_autoClipEnabled = value;
    Q_EMIT autoClipEnabledChanged();
    publish(QStringLiteral("autoClipEnabled"), value);
}

void AppSettings::setAutoClipLeague(bool value)
{
    m_autoClipLeague = value;
    Q_EMIT autoClipLeagueChanged();
    publish(QStringLiteral("autoClipLeague"), value);
}

void AppSettings::setAutoClipDota(bool value)
{
    m_autoClipDota = value;
    Q_EMIT autoClipDotaChanged();
    publish(QStringLiteral("autoClipDota"), value);
}

void AppSettings::setAutoClipWoW(bool value)
{
    m_autoClipWoW = value;
    Q_EMIT autoClipWoWChanged();
    publish(QStringLiteral("autoClipWoW"), value);
}

void AppSettings::setLanguage(const QString& value)
{
    m_language = value;
    // Before anyone is told: bindings in QML hear of a change before every slot does, and read texts at once.
    L10n::use(value);
    Q_EMIT languageChanged();
    publish(QStringLiteral("language"), value);
}

void AppSettings::setColorTheme(const QString& value)
{
    m_colorTheme = value;
    Q_EMIT colorThemeChanged();
    publish(QStringLiteral("colorTheme"), value);
}

void AppSettings::setAutoClipEpic(bool value)
{
    m_autoClipEpic = value;
    Q_EMIT autoClipEpicChanged();
    publish(QStringLiteral("autoClipEpic"), value);
}

void AppSettings::setAutoClipMedium(bool value)
{
    m_autoClipMedium = value;
    Q_EMIT autoClipMediumChanged();
    publish(QStringLiteral("autoClipMedium"), value);
}

void AppSettings::setAutoClipBasic(bool value)
{
    m_autoClipBasic = value;
    Q_EMIT autoClipBasicChanged();
    publish(QStringLiteral("autoClipBasic"), value);
}

void AppSettings::setHotkeyCode(quint32 value)
{
    m_hotkeyCode = value;
    Q_EMIT hotkeyCodeChanged();
    publish(QStringLiteral("hotkeyCode"), value);
}

void AppSettings::setHotkeyModifiers(quint32 value)
{
    m_hotkeyModifiers = value;
    Q_EMIT hotkeyModifiersChanged();
    Q_EMIT hotkeyDisplayChanged();
    publish(QStringLiteral("hotkeyModifiers"), value);
}

void AppSettings::setHotkeyKeyName(const QString& value)
{
    m_hotkeyKeyName = value;
    Q_EMIT hotkeyKeyNameChanged();
    Q_EMIT hotkeyDisplayChanged();
    publish(QStringLiteral("hotkeyKeyName"), value);
}

QString AppSettings::captureSignature() const
{
    return QStringList{QString::number(m_displayID), rawValueOf(m_resolution),    rawValueOf(m_quality),
                       QString::number(m_fps),       rawValueOf(m_codec),         textOf(m_captureAudio),
                       textOf(m_showCursor),         textOf(m_captureMicrophone), m_microphoneID,
                       textOf(m_captureVoiceChat)}
        .join(u'|');
}

int AppSettings::bufferSeconds() const
{
    return m_autoClipEnabled ? std::max(m_clipLength, LeastBufferSecondsForMoments) : m_clipLength;
}

bool AppSettings::isGameEnabled(const QString& game) const
{
    return (game == gameNames::leagueOfLegends && m_autoClipLeague) || (game == gameNames::dota2 && m_autoClipDota) ||
        (game == gameNames::worldOfWarcraft && m_autoClipWoW);
}

bool AppSettings::isTierEnabled(ClipTier tier) const
{
    switch (tier) {
    case ClipTier::epic:
        return m_autoClipEpic;
    case ClipTier::medium:
        return m_autoClipMedium;
    case ClipTier::basic:
        break;
    }
    return m_autoClipBasic;
}

QString AppSettings::hotkeyDisplay() const
{
    return hotKeyDisplay(m_hotkeyModifiers, m_hotkeyKeyName);
}

int AppSettings::bitrate(QSize size) const
{
    return bitrateFor(size, m_fps, m_quality, m_codec);
}

QSize AppSettings::estimatedCaptureSize() const
{
    const auto found = m_displaySize ? m_displaySize(m_displayID) : std::nullopt;
    const auto source = found && !found->isEmpty() ? *found : SizeOfNoDisplay;
    return scaledSize(source, heightOf(m_resolution), m_codec);
}

} // namespace quelto
