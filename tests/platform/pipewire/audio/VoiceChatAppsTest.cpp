// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/VoiceChatApps.h"

#include <gtest/gtest.h>

namespace quelto::pipewire {
namespace {

QString byBinary(const char* binary)
{
    return voiceChatAppOf(
        {.names = {}, .binary = QString::fromUtf8(binary), .ids = {}, .securityLabel = {}, .commandLine = {}});
}

QString byName(const char* name, const char* binary = "")
{
    return voiceChatAppOf({.names = {QString::fromUtf8(name)},
                           .binary = QString::fromUtf8(binary),
                           .ids = {},
                           .securityLabel = {},
                           .commandLine = {}});
}

QString byId(const char* id)
{
    return voiceChatAppOf(
        {.names = {}, .binary = {}, .ids = {QString::fromUtf8(id)}, .securityLabel = {}, .commandLine = {}});
}

QString byLabel(const char* label)
{
    return voiceChatAppOf(
        {.names = {}, .binary = {}, .ids = {}, .securityLabel = QString::fromUtf8(label), .commandLine = {}});
}

/// The arguments are separated by "|" instead of null characters.
QString byCommandLine(QByteArray arguments, const char* binary = "electron28")
{
    arguments.replace('|', '\0');
    return voiceChatAppOf({.names = {QStringLiteral("Chromium")},
                           .binary = QString::fromUtf8(binary),
                           .ids = {},
                           .securityLabel = {},
                           .commandLine = arguments});
}

TEST(VoiceChatApps, ListsEveryApplicationOnce)
{
    const QStringList expected = {
        QStringLiteral("discord"),    QStringLiteral("discord-ptb"), QStringLiteral("discord-canary"),
        QStringLiteral("teamspeak3"), QStringLiteral("teamspeak"),   QStringLiteral("zoom"),
        QStringLiteral("slack"),      QStringLiteral("teams"),       QStringLiteral("teams-classic"),
        QStringLiteral("skype"),      QStringLiteral("mumble"),      QStringLiteral("whatsapp"),
        QStringLiteral("telegram"),   QStringLiteral("guilded")};
    EXPECT_EQ(voiceChatApps(), expected);
}

struct Known {
    const char* identity;
    const char* id;
};

void expectAll(QString (*find)(const char*), const std::vector<Known>& table)
{
    for (const auto& [identity, id] : table) {
        EXPECT_EQ(find(identity).toStdString(), id) << identity;
    }
}

TEST(VoiceChatApps, KnowsExecutables)
{
    expectAll(byBinary,
              {{"Discord", "discord"},
               {"DiscordPTB", "discord-ptb"},
               {"DiscordCanary", "discord-canary"},
               {"ts3client_linux_amd64", "teamspeak3"},
               {"TeamSpeak", "teamspeak"},
               {"zoom", "zoom"},
               {"ZoomWebviewHost", "zoom"},
               {"slack", "slack"},
               {"teams-for-linux", "teams"},
               {"teams", "teams-classic"},
               {"skypeforlinux", "skype"},
               {"mumble", "mumble"},
               {"whatsapp-for-linux", "whatsapp"},
               {"telegram-desktop", "telegram"},
               {"Telegram", "telegram"},
               {"guilded", "guilded"}});
}

TEST(VoiceChatApps, KnowsAlternativeClients)
{
    expectAll(byBinary,
              {{"vesktop", "discord"},
               {"WebCord", "discord"},
               {"armcord", "discord"},
               {"legcord", "discord"},
               {"equibop", "discord"},
               {"goofcord", "discord"},
               {"dorion", "discord"},
               {"discord-screenaudio", "discord"},
               {"abaddon", "discord"},
               {"Ripcord", "discord"},
               {"kotatogram-desktop", "telegram"},
               {"64gram-desktop", "telegram"},
               {"ayugram-desktop", "telegram"},
               {"zapzap", "whatsapp"},
               {"whatsdesk", "whatsapp"}});
}

TEST(VoiceChatApps, KnowsFlatpaks)
{
    expectAll(byId,
              {{"com.discordapp.Discord", "discord"},
               {"com.discordapp.DiscordCanary", "discord-canary"},
               {"dev.vencord.Vesktop", "discord"},
               {"com.teamspeak.TeamSpeak3", "teamspeak3"},
               {"com.teamspeak.TeamSpeak", "teamspeak"},
               {"us.zoom.Zoom", "zoom"},
               {"com.slack.Slack", "slack"},
               {"com.github.IsmaelMartinez.teams_for_linux", "teams"},
               {"com.microsoft.Teams", "teams-classic"},
               {"com.skype.Client", "skype"},
               {"info.mumble.Mumble", "mumble"},
               {"com.rtosta.zapzap", "whatsapp"},
               {"org.telegram.desktop", "telegram"}});
}

TEST(VoiceChatApps, KnowsSnapsByIdAndLabel)
{
    expectAll(byId, {{"discord", "discord"}, {"telegram-desktop", "telegram"}, {"zoom-client", "zoom"}});
    expectAll(byLabel,
              {{"snap.discord.discord (enforce)", "discord"},
               {"snap.slack.slack", "slack"},
               {"snap.firefox.firefox (enforce)", ""},
               {"discord (enforce)", ""},
               {"snap", ""},
               {"unconfined", ""}});
}

TEST(VoiceChatApps, KnowsNamesInTheSoundServer)
{
    EXPECT_EQ(byName("ZOOM VoiceEngine", "wrapper"), QStringLiteral("zoom"));
    EXPECT_EQ(byName("TeamSpeak 3"), QStringLiteral("teamspeak3"));
    EXPECT_EQ(byName("WEBRTC VoiceEngine", "Discord"), QStringLiteral("discord"));
}

TEST(VoiceChatApps, KnowsWindowsProgramsInWine)
{
    EXPECT_EQ(byName("Discord.exe", "wine64-preloader"), QStringLiteral("discord"));
    EXPECT_EQ(byName("ts3client_win64.exe", "wine64-preloader"), QStringLiteral("teamspeak3"));
    EXPECT_EQ(byName("Game.exe", "wine64-preloader"), QString());
}

TEST(VoiceChatApps, IgnoresCase)
{
    EXPECT_EQ(byBinary("DISCORD"), QStringLiteral("discord"));
    EXPECT_EQ(byName("sLACK"), QStringLiteral("slack"));
    EXPECT_EQ(byId("COM.DISCORDAPP.DISCORD"), QStringLiteral("discord"));
}

TEST(VoiceChatApps, ComparesWholeNames)
{
    for (const char* other : {"zoom-game", "zoomer", "Discordia", "discord2", "slacker", "mumbles", "teamspeak4",
                              "telegram-game", "com.discordapp.Discord.Game", "", " ", "discord|", "WEBRTC VoiceEngine",
                              "Chromium", "electron", "electron28", "PulseAudio", "pipewire"}) {
        EXPECT_EQ(byBinary(other), QString()) << other;
        EXPECT_EQ(byName(other), QString()) << other;
        EXPECT_EQ(byId(other), QString()) << other;
    }
}

TEST(VoiceChatApps, NeverMatchesABrowser)
{
    for (const char* browser :
         {"chrome", "firefox", "Firefox-ESR", "chromium", "brave", "vivaldi-bin", "msedge", "opera"}) {
        EXPECT_EQ(byName("Discord", browser), QString()) << browser;
    }
    EXPECT_EQ(byCommandLine("/opt/google/chrome/chrome|--user-data-dir=/home/me/.config/discord", "chrome"), QString());
}

TEST(VoiceChatApps, FindsElectronApplicationsInTheirCommandLine)
{
    expectAll([](const char* line) { return byCommandLine(line); },
              {{"/usr/lib/electron28/electron|/usr/lib/discord/app.asar", "discord"},
               {"/usr/lib/electron28/electron|--flag|/opt/Slack/resources/app.asar", "slack"},
               {"electron28|/usr/share/webcord", "discord"},
               {"electron28|--class=Microsoft Teams|/usr/lib/x/app.asar", "teams"},
               {"electron28|--type=renderer|--app-path=/usr/lib/vesktop/app.asar", "discord"},
               {"electron28|--type=utility|--user-data-dir=/home/me/.config/discordcanary|--x", "discord-canary"},
               // A child process of Chromium.
               {"/usr/lib/electron28/electron --type=utility --user-data-dir=/home/me/.config/Microsoft Teams "
                "--enable-x ",
                "teams"},
               {"/usr/lib/electron28/electron /usr/lib/discord/app.asar --type=renderer", "discord"}});
}

TEST(VoiceChatApps, FindsNothingInOtherCommandLines)
{
    expectAll([](const char* line) { return byCommandLine(line); },
              {{"", ""},
               {"|", ""},
               {"discord", ""},
               {"/usr/lib/discord/electron", ""},
               {"electron28|/home/discord/games/app.asar", ""},
               {"electron28|/home/me/discord/game.js", ""},
               {"electron28|--app-path=|--user-data-dir=/|--class=", ""},
               {"electron28|/app.asar|/resources/app.asar", ""},
               {"electron28|--title=discord|discord", ""}});
    EXPECT_EQ(byCommandLine("game|/usr/lib/discord/app.asar", "game"), QString()) << "not Electron";
}

TEST(VoiceChatApps, TrustsTheSandboxMoreThanTheProgram)
{
    EXPECT_EQ(voiceChatAppOf({.names = {QStringLiteral("Slack")},
                              .binary = QStringLiteral("zoom"),
                              .ids = {QStringLiteral("com.discordapp.Discord")},
                              .securityLabel = {},
                              .commandLine = {}}),
              QStringLiteral("discord"));
}

TEST(VoiceChatApps, RecognizesElectron)
{
    EXPECT_TRUE(isApplicationRuntime(QStringLiteral("electron")));
    EXPECT_TRUE(isApplicationRuntime(QStringLiteral("electron28")));
    EXPECT_FALSE(isApplicationRuntime(QStringLiteral("electronic-game")));
    EXPECT_FALSE(isApplicationRuntime(QString()));
}

} // namespace
} // namespace quelto::pipewire
