// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/VoiceChatApps.h"

#include <QHash>

#include <array>

namespace quelto::pipewire {

namespace {

/// Names are separated by "|". They are those of executables, of the programs in the sound server, of the folders with
/// the data of Electron applications, of desktop entries, Flatpaks and Snaps.
struct VoiceChatApp {
    const char16_t* id;
    const char16_t* names;
};

constexpr std::array VoiceChatAppTable = {
    VoiceChatApp{u"discord",
                 u"discord|com.discordapp.discord"
                 // Alternative clients.
                 u"|vesktop|vencorddesktop|dev.vencord.vesktop|equibop|org.equicord.equibop|equicord"
                 u"|webcord|io.github.spacingbat3.webcord|armcord|xyz.armcord.armcord|legcord|app.legcord.legcord"
                 u"|goofcord|io.github.milkshiift.goofcord|dorion|com.spikehd.dorion|discord-screenaudio"
                 u"|de.shorsh.discord-screenaudio|abaddon|io.github.uowuo.abaddon|ripcord|com.cancel.ripcord"},
    VoiceChatApp{u"discord-ptb", u"discord-ptb|discordptb|discord ptb|com.discordapp.discordptb"},
    VoiceChatApp{u"discord-canary", u"discord-canary|discordcanary|discord canary|com.discordapp.discordcanary"},
    VoiceChatApp{u"teamspeak3",
                 u"teamspeak3|teamspeak3-client|teamspeak 3|teamspeak 3 client|ts3client|ts3client_linux_amd64"
                 u"|ts3client_linux_x86|ts3client_win32|ts3client_win64|com.teamspeak.teamspeak3"},
    VoiceChatApp{u"teamspeak",
                 u"teamspeak|teamspeak-client|teamspeak 5|teamspeak5|teamspeak 6|teamspeak6|teamspeak beta"
                 u"|com.teamspeak.teamspeak"},
    VoiceChatApp{u"zoom", u"zoom|zoomwebviewhost|zoom voiceengine|zoom workplace|zoom-client|us.zoom.zoom"},
    VoiceChatApp{u"slack", u"slack|com.slack.slack"},
    VoiceChatApp{u"teams",
                 u"teams-for-linux|com.github.ismaelmartinez.teams_for_linux|ms-teams|microsoft teams|msteams"},
    VoiceChatApp{u"teams-classic",
                 u"teams|teams-insiders|microsoft teams - preview|microsoft teams classic"
                 u"|com.microsoft.teams"},
    VoiceChatApp{u"skype", u"skype|skypeforlinux|skype-bin|com.skype.client"},
    VoiceChatApp{u"mumble", u"mumble|info.mumble.mumble|net.sourceforge.mumble.mumble"},
    VoiceChatApp{
        u"whatsapp",
        u"whatsapp|whatsapp-for-linux|whatsapp for linux|com.github.eneshecan.whatsappforlinux"
        u"|wasistlos|com.github.xeco23.wasistlos|zapzap|com.rtosta.zapzap|whatsdesk|io.bit3.whatsdesk"
        u"|whatsdesk-zerkc|whatsie|com.ktechpit.whatsie|whatsapp-desktop|whatsapp-linux-app|whatsapp-nativefier"
        u"|whatsapp-electron"},
    VoiceChatApp{u"telegram",
                 u"telegram|telegram-desktop|telegram desktop|telegramdesktop|org.telegram.desktop"
                 u"|kotatogram|kotatogram-desktop|kotatogram desktop|io.github.kotatogram|64gram|64gram-desktop"
                 u"|64gram desktop|io.github.tdesktop_x64.tdesktop|ayugram|ayugram-desktop|ayugram desktop"
                 u"|com.ayugram.desktop|forkgram|forkgram-desktop|io.github.forkgram.tdesktop|materialgram"
                 u"|io.github.kukuruzka165.materialgram|paper-plane|app.drey.paperplane"},
    VoiceChatApp{u"guilded", u"guilded|com.guilded.guilded"},
};

constexpr const char16_t* Browsers =
    u"chrome|google-chrome|chromium|chromium-browser|firefox|firefox-bin|firefox-esr|librewolf|waterfox|floorp|zen"
    u"|zen-bin|mullvad-browser|brave|brave-browser|opera|vivaldi|vivaldi-bin|msedge|microsoft-edge|thorium|epiphany"
    u"|falkon|konqueror|qutebrowser";

QString normalized(const QString& name)
{
    const QString text = name.trimmed().toCaseFolded();
    // Programs in Wine report the file name of their Windows executable.
    return text.endsWith(u".exe") ? text.chopped(4) : text;
}

QHash<QString, QString> makeIdsByName()
{
    QHash<QString, QString> ids;
    for (const VoiceChatApp& app : VoiceChatAppTable) {
        for (const QString& name : QString::fromUtf16(app.names).split(u'|')) {
            ids.insert(name, QString::fromUtf16(app.id));
        }
    }
    return ids;
}

bool isBrowser(const QString& binary)
{
    static const QStringList names = QString::fromUtf16(Browsers).split(u'|');
    return names.contains(normalized(binary));
}

/// The Snap in a label such as "snap.discord.discord (enforce)".
QString snapOf(const QString& securityLabel)
{
    const QStringList parts = securityLabel.section(u' ', 0, 0).split(u'.');
    return parts.size() >= 2 && parts[0] == u"snap" ? parts[1] : QString();
}

/// The folder of an application's code: "discord" for "/usr/lib/discord/app.asar" and
/// "/opt/Discord/resources/app.asar".
QString folderOfCode(const QString& path)
{
    QStringList folders = path.split(u'/', Qt::SkipEmptyParts);
    if (folders.isEmpty()) {
        return {};
    }
    QString file = folders.takeLast();
    if (!file.endsWith(u".asar") && file != u"app") {
        return file;
    }
    if (!folders.isEmpty() && folders.last() == u"resources") {
        folders.removeLast();
    }
    return folders.isEmpty() ? QString() : folders.last();
}

/// The words of the command line. Child processes of Chromium join theirs with spaces; as values may contain spaces,
/// such a line is split only in front of options and behind the executable.
QStringList wordsOf(const QByteArray& commandLine)
{
    QStringList words = QString::fromUtf8(commandLine).split(QChar::Null, Qt::SkipEmptyParts);
    if (words.size() == 1) {
        words = words[0].split(QStringLiteral(" --"), Qt::SkipEmptyParts);
        const QString head = words.takeFirst();
        for (QString& option : words) {
            option.prepend(u"--");
        }
        words = head.split(u' ', Qt::SkipEmptyParts) + words;
    }
    return words;
}

/// What a command line calls the application that a runtime runs.
QStringList namesInCommandLine(const QByteArray& commandLine)
{
    QStringList names;
    const QStringList words = wordsOf(commandLine);
    for (qsizetype i = 1; i < words.size(); ++i) {
        const QString& word = words[i];
        const QString value = word.section(u'=', 1);
        if (word.startsWith(u"--class=") || word.startsWith(u"--name=")) {
            names.append(value);
        } else if (word.startsWith(u"--app-path=") || word.startsWith(u"--user-data-dir=")) {
            names.append(folderOfCode(value));
        } else if (!word.startsWith(u'-') && word.contains(u'/')) {
            names.append(folderOfCode(word));
        }
    }
    return names;
}

} // namespace

QString voiceChatAppOf(const ProgramIdentity& program)
{
    if (isBrowser(program.binary)) {
        return {};
    }
    // The most reliable first: a sandbox tells which application runs in it, and the others the program itself.
    QStringList names = program.ids;
    names << snapOf(program.securityLabel) << program.binary << program.names;
    if (isApplicationRuntime(program.binary)) {
        names << namesInCommandLine(program.commandLine);
    }
    static const QHash<QString, QString> idsByName = makeIdsByName();
    for (const QString& name : names) {
        if (QString id = idsByName.value(normalized(name)); !id.isEmpty()) {
            return id;
        }
    }
    return {};
}

QStringList voiceChatApps()
{
    QStringList ids;
    for (const VoiceChatApp& app : VoiceChatAppTable) {
        ids.append(QString::fromUtf16(app.id));
    }
    return ids;
}

} // namespace quelto::pipewire
