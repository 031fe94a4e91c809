// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/T.h"
#include "ui/screens/settings/SettingsPageForQml.h"

#include "tests/moments/dota/LoopbackClient.h"
#include "tests/moments/league/LeagueServer.h"
#include "tests/ui/shell/SettingsCardFixture.h"

#include <QTcpServer>

namespace quelto::test {
namespace {

const QStringList Games{QStringLiteral("League of Legends"), QStringLiteral("Dota 2"),
                        QStringLiteral("World of Warcraft")};
const QStringList Tiers{QStringLiteral("Efsane"), QStringLiteral("Orta"), QStringLiteral("Basit")};
const auto MainSwitch = QStringLiteral("Otomatik klip al");
const auto ScoreButton = QStringLiteral("Nasıl puanlıyor?");
const auto InstallButton = QStringLiteral("Kur");
const auto CopyButton = QStringLiteral("Seçeneği Kopyala");

/// A match with Zeus.
QByteArray dotaPost(int kills, const QByteArray& winner = "none")
{
    return R"({"map": {"matchid": "7463520011", "game_state": "DOTA_GAMERULES_STATE_GAME_IN_PROGRESS", "win_team": ")" +
        winner + R"("}, "player": {"team_name": "dire", "kills": )" + QByteArray::number(kills) +
        R"(}, "hero": {"id": 22, "name": "npc_dota_hero_zuus"}})";
}

class SettingsAutoClipTest : public SettingsCardFixture {
protected:
    void SetUp() override
    {
        SettingsCardFixture::SetUp();
        QTcpServer server;
        ASSERT_TRUE(server.listen(QHostAddress(QHostAddress::LocalHost)));
        m_port = server.serverPort();
        server.close();
        dota = std::make_unique<DotaWatcher>(folder.path(), m_port);
        DotaWatcherForQml::instance = dota.get();
    }
    void showCard() { showCards(QStringLiteral("AutoClipCard {}")); }
    QString makeDota() const
    {
        const auto game = folder.path() + QStringLiteral("/.local/share/Steam/steamapps/common/dota 2 beta/game");
        EXPECT_TRUE(QDir().mkpath(game + QStringLiteral("/bin")) && QDir().mkpath(game + QStringLiteral("/dota/cfg")));
        return game + QStringLiteral("/dota/cfg/gamestate_integration");
    }
    void makeWow() const { EXPECT_TRUE(QDir().mkpath(folder.path() + WowLogs)); }
    void writeWowLog() const
    {
        QFile log(folder.path() + WowLogs + QStringLiteral("/WoWCombatLog.txt"));
        ASSERT_TRUE(log.open(QIODevice::Append));
        log.write("11/21/2026 20:15:02.114-4  ENCOUNTER_END,2708,\"Nymue, Weaver\",16,20,1,311000\r\n");
    }
    bool waitForText(const QString& text) const
    {
        return QTest::qWaitFor([&] { return shows(text); }, 10'000);
    }
    void startDota()
    {
        dota->start();
        ASSERT_TRUE(QTest::qWaitFor([this] { return LoopbackClient(m_port).isConnected(); }));
    }
    void post(const QByteArray& body) const
    {
        LoopbackClient client(m_port);
        ASSERT_TRUE(client.send(postOf(body)));
        ASSERT_EQ(client.receiveAll(), SuccessResponse);
    }
    QQuickItem* rowOf(const QString& game) const
    {
        return firstVisible(window, [&](const QQuickItem* each) {
            return each->property("symbol").isValid() && each->property("name").toString() == game;
        });
    }
    QColor dotColor(const QString& game) const
    {
        const auto* dot = firstVisibleOn(
            rowOf(game), [](const QQuickItem* each) { return each->objectName() == QStringLiteral("liveDot"); });
        return dot == nullptr ? QColor() : colorOf(dot);
    }
    QColor textColor(const QString& text) const { return colorOf(textItem(text)); }

    quint16 m_port = 0;

private:
    static inline const auto WowLogs =
        QStringLiteral("/.wine/drive_c/Program Files (x86)/World of Warcraft/_retail_/Logs");
};

TEST_F(SettingsAutoClipTest, EachSwitchShowsAndChangesItsSetting)
{
    showCard();
    struct Row {
        QString name;
        std::function<bool()> isOn;
        std::function<void(bool)> set;
    };
    const std::vector<Row> rows{
        {Games[0], [&] { return settings.autoClipLeague(); }, [&](bool on) { settings.setAutoClipLeague(on); }},
        {Games[1], [&] { return settings.autoClipDota(); }, [&](bool on) { settings.setAutoClipDota(on); }},
        {Games[2], [&] { return settings.autoClipWoW(); }, [&](bool on) { settings.setAutoClipWoW(on); }},
        {Tiers[0], [&] { return settings.autoClipEpic(); }, [&](bool on) { settings.setAutoClipEpic(on); }},
        {Tiers[1], [&] { return settings.autoClipMedium(); }, [&](bool on) { settings.setAutoClipMedium(on); }},
        {Tiers[2], [&] { return settings.autoClipBasic(); }, [&](bool on) { settings.setAutoClipBasic(on); }},
        {MainSwitch, [&] { return settings.autoClipEnabled(); }, [&](bool on) { settings.setAutoClipEnabled(on); }},
    };
    for (const auto& row : rows) {
        auto* const toggle = firstVisible(window, [&](QQuickItem* each) {
            return each->inherits("QQuickCheckBox") && each->property("text").toString() == row.name;
        });
        ASSERT_NE(toggle, nullptr) << row.name.toStdString();
        const bool before = row.isOn();
        EXPECT_EQ(toggle->property("checked").toBool(), before) << row.name.toStdString();
        QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(toggle));
        EXPECT_EQ(row.isOn(), !before) << row.name.toStdString();
        EXPECT_EQ(toggle->property("checked").toBool(), !before) << row.name.toStdString();
        row.set(before);
        EXPECT_EQ(toggle->property("checked").toBool(), before) << row.name.toStdString();
    }
}

TEST_F(SettingsAutoClipTest, OffHidesTheRestAndKeepsItsSettings)
{
    settings.setAutoClipDota(false);
    settings.setAutoClipBasic(true);
    showCard();
    const auto shown = [&] {
        int count = 0;
        for (const auto& name : Games + Tiers + QStringList{ScoreButton}) {
            count += hasItem(name) ? 1 : 0;
        }
        return count;
    };
    EXPECT_EQ(shown(), 7);
    click(MainSwitch);
    EXPECT_EQ(shown(), 0);
    EXPECT_TRUE(settings.autoClipLeague());
    EXPECT_FALSE(settings.autoClipDota());
    EXPECT_TRUE(settings.autoClipWoW());
    EXPECT_TRUE(settings.autoClipEpic());
    EXPECT_TRUE(settings.autoClipMedium());
    EXPECT_TRUE(settings.autoClipBasic());
    click(MainSwitch);
    EXPECT_EQ(shown(), 7);
}

TEST_F(SettingsAutoClipTest, TheMainSwitchGetsTheFocusOfAHiddenRow)
{
    showCard();
    focus(Tiers[1]);
    settings.setAutoClipEnabled(false);
    EXPECT_EQ(focusedName(), MainSwitch);
    press(Qt::Key_Space);
    EXPECT_TRUE(settings.autoClipEnabled());
}

TEST_F(SettingsAutoClipTest, FollowsAMatchOfLeague)
{
    LeagueServer server;
    const auto match = [](const QString& champion) {
        return httpResponse(
            R"({"activePlayer": {"summonerName": "Ufuk#TR1"}, "gameData": {"gameTime": 99}, "events": {"Events": []},
                "allPlayers": [{"summonerName": "Ufuk#TR1", "riotIdGameName": "Ufuk", "team": "ORDER",
                                "championName": ")" +
            champion.toUtf8() + R"("}]})");
    };
    constexpr std::chrono::milliseconds Soon{10};
    league = std::make_unique<LeagueWatcher>(
        server.address(), nullptr,
        LeaguePollTiming{.delayAfterSuccess = Soon, .delayAfterFailure = Soon, .timeout = std::chrono::seconds(2)});
    LeagueWatcherForQml::instance = league.get();
    // Tags and a long name must not change the look of the row.
    const auto champion = QStringLiteral("<b>") + QStringLiteral("Nunu ve Willump ").repeated(8).trimmed();
    server.setResponse(match(champion));
    showCard();
    EXPECT_TRUE(shows(QStringLiteral("Maç bekleniyor…")));
    league->start();
    const auto inMatch = QStringLiteral("Maçta • ") + champion;
    ASSERT_TRUE(waitForText(inMatch)) << league->champion().toStdString();
    EXPECT_EQ(dotColor(Games[0]), theme->good());
    EXPECT_EQ(textItem(inMatch)->property("textFormat").toInt(), 0);
    EXPECT_GT(textItem(inMatch)->property("lineCount").toInt(), 1);
    EXPECT_LE(placeOf(textItem(inMatch)).right(), placeOf(rowOf(Games[0])).right());
    EXPECT_FALSE(picture(QStringLiteral("settings-autoclip-match")).isNull());
    server.shutDown();
    EXPECT_TRUE(waitForText(QStringLiteral("Maç bekleniyor…")));
    EXPECT_EQ(dotColor(Games[0]), theme->dim());
}

TEST_F(SettingsAutoClipTest, FollowsAMatchOfDota)
{
    makeDota();
    showCard();
    startDota();
    ASSERT_TRUE(waitForText(QStringLiteral("Hazır • Steam'de başlatma seçeneklerine -gamestateintegration ekleyin")));
    EXPECT_EQ(dotColor(Games[1]), theme->dim());
    post(dotaPost(0));
    const auto inMatch = QStringLiteral("Maçta • Zeus");
    ASSERT_TRUE(waitForText(inMatch));
    EXPECT_EQ(dotColor(Games[1]), theme->good());
    EXPECT_EQ(dotColor(Games[0]), theme->dim());
    EXPECT_EQ(textColor(inMatch), theme->good());
    post(dotaPost(5));
    post(dotaPost(5, "dire"));
    post(R"({"player": {}})");
    const auto lastMoment = QStringLiteral("Son an: Efsane • RAMPAGE (Zeus) • 200 puan");
    ASSERT_TRUE(waitForText(lastMoment));
    EXPECT_EQ(fontOf(textItem(lastMoment)).pixelSize(), 10);
    EXPECT_EQ(textColor(lastMoment), theme->dim());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shows(inMatch); }));
    EXPECT_EQ(dotColor(Games[1]), theme->dim());
}

TEST_F(SettingsAutoClipTest, ReportsABusyPortAndWhatToDo)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress(QHostAddress::LocalHost), m_port));
    makeDota();
    showCard();
    dota->start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dota->listenerError().isEmpty(); }));
    EXPECT_TRUE(waitForText(QStringLiteral("Bağlantı noktası açılamadı: ") + dota->listenerError()));
    EXPECT_TRUE(shows(QStringLiteral(
        "37231 numaralı bağlantı noktasını kullanan programı kapatın, sonra bu anahtarı kapatıp açın.")));
    click(Tiers[2]);
    EXPECT_TRUE(settings.autoClipBasic());
    other.close();
    dota->start();
    EXPECT_TRUE(waitForText(QStringLiteral("Hazır • Steam'de başlatma seçeneklerine -gamestateintegration ekleyin")));
}

TEST_F(SettingsAutoClipTest, MissingDotaHasNoButton)
{
    showCard();
    EXPECT_TRUE(shows(QStringLiteral("Dota 2 bulunamadı (Steam kütüphanesi bağlı mı?)")));
    EXPECT_FALSE(hasItem(InstallButton));
    EXPECT_FALSE(hasItem(CopyButton));
}

TEST_F(SettingsAutoClipTest, ScreenReadersGetWhatTheWatcherReports)
{
    showCard();
    const auto descriptionOfSwitch = [&](const QString& game) {
        auto* const toggle = firstVisible(window, [&](QQuickItem* each) {
            return each->inherits("QQuickCheckBox") && each->property("text").toString() == game;
        });
        return QAccessible::queryAccessibleInterface(toggle)->text(QAccessible::Description);
    };
    EXPECT_EQ(descriptionOfSwitch(Games[0]), QStringLiteral("Maç bekleniyor…"));
    EXPECT_EQ(descriptionOfSwitch(Games[2]),
              QStringLiteral("World of Warcraft bulunamadı\nQuelto oyunu Wine, Lutris, Steam, Bottles ve Faugus'ta "
                             "arar. Oyunu bir kez açın."));
    auto* const scores = QAccessible::queryAccessibleInterface(item(ScoreButton));
    EXPECT_FALSE(shows(QStringLiteral("İlk Kan")));
    scores->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(shows(QStringLiteral("İlk Kan")));
    scores->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(shows(QStringLiteral("İlk Kan")));
}

TEST_F(SettingsAutoClipTest, InstallsTheIntegrationThenCopiesTheLaunchOption)
{
    const auto config = makeDota() + u'/' + DotaWatcher::configName;
    showCard();
    ASSERT_TRUE(QTest::qWaitFor([&] { return hasItem(InstallButton); }));
    EXPECT_TRUE(shows(QStringLiteral("Entegrasyon kurulu değil")));
    EXPECT_TRUE(item(InstallButton)->property("filled").toBool());
    const QSignalSpy busyChanges(item(InstallButton), SIGNAL(busyChanged()));
    focus(InstallButton);
    press(Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([&] { return hasItem(CopyButton) && !navigation->toast().isEmpty(); }));
    EXPECT_EQ(busyChanges.size(), 2);
    EXPECT_TRUE(QFile::exists(config));
    EXPECT_EQ(navigation->toast(), QStringLiteral("Entegrasyon kuruldu • Steam kütüphanesi: 1"));
    EXPECT_FALSE(item(CopyButton)->property("filled").toBool());
    EXPECT_FALSE(item(CopyButton)->property("busy").toBool());
    EXPECT_EQ(focusedName(), CopyButton);
    press(Qt::Key_Space);
    EXPECT_EQ(pasteboard.text, QStringLiteral("-gamestateintegration"));
    EXPECT_EQ(navigation->toast(), QStringLiteral("Kopyalandı: Steam › Dota 2 › Özellikler › Başlatma Seçenekleri"));
}

TEST_F(SettingsAutoClipTest, AFailedInstallationStaysExplainedInTheRow)
{
    const auto subfolder = makeDota();
    QFile obstacle(subfolder);
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    showCard();
    ASSERT_TRUE(QTest::qWaitFor([&] { return hasItem(InstallButton); }));
    click(InstallButton);
    EXPECT_TRUE(waitForText(QStringLiteral("Dosya yazılamadı. Dota 2 klasörüne yazma izni verip yeniden deneyin.")));
    EXPECT_TRUE(hasItem(InstallButton));
    // Another language builds the page again.
    window->close();
    showCards(QStringLiteral("AutoClipCard {}"), "en", "ember");
    EXPECT_TRUE(
        waitForText(QStringLiteral("Couldn't write the file. Allow writing to the Dota 2 folder and try again.")));
}

TEST_F(SettingsAutoClipTest, TheSwitchGetsTheFocusOfTheButtonThatDisappears)
{
    makeDota();
    showCard();
    ASSERT_TRUE(QTest::qWaitFor([&] { return hasItem(InstallButton); }));
    focus(InstallButton);
    ASSERT_TRUE(QDir(folder.path() + QStringLiteral("/.local")).removeRecursively());
    press(Qt::Key_Space);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !hasItem(InstallButton); }));
    press(Qt::Key_Space);
    EXPECT_FALSE(settings.autoClipDota());
}

TEST_F(SettingsAutoClipTest, FollowsTheCombatLogOfWow)
{
    showCard();
    EXPECT_TRUE(shows(QStringLiteral("World of Warcraft bulunamadı")));
    EXPECT_TRUE(
        shows(QStringLiteral("Quelto oyunu Wine, Lutris, Steam, Bottles ve Faugus'ta arar. Oyunu bir kez açın.")));
    makeWow();
    wow->start();
    EXPECT_TRUE(waitForText(QStringLiteral("Oyunda sohbete /combatlog yazın (her girişte bir kez)")));
    EXPECT_EQ(dotColor(Games[2]), theme->dim());
    writeWowLog();
    EXPECT_TRUE(waitForText(QStringLiteral("Savaş kaydı okunuyor")));
    EXPECT_EQ(dotColor(Games[2]), theme->good());
    EXPECT_TRUE(waitForText(QStringLiteral("Son an: Efsane • Boss: Nymue, Weaver • 110 puan")));
}

TEST_F(SettingsAutoClipTest, ScoresAreFoldedUntilOpened)
{
    showCard();
    const auto line = QStringLiteral("Ace (kill aldıysan)");
    EXPECT_FALSE(shows(line));
    EXPECT_FALSE(isChecked(ScoreButton));
    click(ScoreButton);
    EXPECT_TRUE(shows(line));
    EXPECT_TRUE(isChecked(ScoreButton));
    focus(ScoreButton);
    press(Qt::Key_Return);
    EXPECT_FALSE(shows(line));
    press(Qt::Key_Space);
    EXPECT_TRUE(shows(line));
}

TEST_F(SettingsAutoClipTest, ScoresAreThoseOfTheTable)
{
    showCard();
    click(ScoreButton);
    QStringList lines;
    visitVisible(window->contentItem(), [&](const QQuickItem* each) {
        if (each->property("points").isValid()) {
            lines.append(each->property("label").toString() + QStringLiteral(": ") +
                         each->property("points").toString());
        }
    });
    EXPECT_EQ(lines.join(u'\n').toStdString(),
              "Kill: +10  (solo kill +5 ekstra)\n"
              "Asist: +3\n"
              "Double / Triple / Quadra (Ultra) / Penta (Rampage): +8 / +30 / +60 / +120\n"
              "Ace (kill aldıysan): +15\n"
              "Kıl payı (%15 can altına düşüp kill alıp yaşamak): +20\n"
              "Baron-Elder çalma / Ejderha çalma / Herald çalma: +100 / +60 / +40\n"
              "Baron / Ejderha / Kule / İnhibitör: +25 / +15 / +4 / +6\n"
              "İlk Kan: +8\n"
              "Dota: Aegis / Zafer: +25 / +30\n"
              "WoW boss: Mythic / Heroic / Normal / LFR: +110 / +60 / +35 / +15\n"
              "WoW Mythic+ bitirme: 30 + seviye × 4\n"
              "Dövüşte ölmek: −8");
    const auto points = QStringLiteral("+15");
    EXPECT_EQ(textColor(points), theme->accent());
    EXPECT_EQ(fontOf(textItem(points)).pixelSize(), 11);
    EXPECT_EQ(fontOf(textItem(points)).weight(), QFont::DemiBold);
}

TEST_F(SettingsAutoClipTest, TabVisitsTheControlsInTheirOrder)
{
    makeDota();
    showCard();
    ASSERT_TRUE(QTest::qWaitFor([&] { return hasItem(InstallButton); }));
    focus(MainSwitch);
    QStringList names;
    for (int i = 0; i < 8; ++i) {
        press(Qt::Key_Tab);
        names.append(focusedName());
    }
    EXPECT_EQ(names, (QStringList{Games[0], InstallButton, Games[1], Games[2]} + Tiers + QStringList{ScoreButton}));
}

TEST_F(SettingsAutoClipTest, TheLooksMatchTheDesign)
{
    showCard();
    const auto* row = rowOf(Games[0]);
    EXPECT_EQ(colorOf(row), theme->bg());
    EXPECT_EQ(radiusOf(row), 8);
    EXPECT_EQ(fontOf(textItem(Games[0])).pixelSize(), 13);
    EXPECT_EQ(fontOf(textItem(Games[0])).weight(), QFont::DemiBold);
    const auto waiting = QStringLiteral("Maç bekleniyor…");
    EXPECT_EQ(fontOf(textItem(waiting)).pixelSize(), 11);
    EXPECT_EQ(textColor(waiting), theme->muted());
    const auto* dot = firstVisibleOn(const_cast<QQuickItem*>(row), [](const QQuickItem* each) {
        return each->objectName() == QStringLiteral("liveDot");
    });
    EXPECT_EQ(dot->size(), QSizeF(7, 7));
    EXPECT_EQ(fontOf(textItem(ScoreButton)).pixelSize(), 12);
    EXPECT_EQ(textColor(ScoreButton), theme->muted());
}

TEST_F(SettingsAutoClipTest, MatchCardExplainsTheEndOfAMatch)
{
    showCards(QStringLiteral("MatchSettingsCard {}"));
    const auto first = QStringLiteral("Maç sırasında oto klipler tek tek bildirim göstermez; maç bitince hepsi tek "
                                      "bildirimde toplanır ve Maç Özetleri'nde seçip silebilirsin.");
    ASSERT_TRUE(shows(first));
    EXPECT_EQ(textItem(first)->width(), cardWidth - 40);
    EXPECT_EQ(textColor(first), theme->muted());
    EXPECT_TRUE(shows(QStringLiteral("Maç bitince bildirime tıklayıp klipleri incele: beğendiklerin kalır, diğerleri "
                                     "Çöp Kutusu'na gider.")));
}

TEST_F(SettingsAutoClipTest, FitsANarrowWindow)
{
    cardWidth = 360;
    makeDota();
    dota->install();
    ASSERT_TRUE(QTest::qWaitFor([&] { return dota->installState() == DotaConfig::InstallState::Installed; }, 10'000));
    for (const auto* language : {"de", "ru", "fr"}) {
        showCards(QStringLiteral("AutoClipCard {}"), language, "ember", 1000);
        click(T("Nasıl puanlıyor?"));
        EXPECT_EQ(truncatedTexts(), QStringList()) << language;
        EXPECT_FALSE(picture(QStringLiteral("settings-autoclip-narrow-%1").arg(QLatin1String(language))).isNull());
        window->close();
    }
}

TEST_F(SettingsAutoClipTest, ThePageHasTheCards)
{
    navigation->showSettings();
    setLook({.language = "de", .palette = "ember", .size = {1240, 1900}});
    EXPECT_TRUE(hasItem(T("Otomatik klip al")));
    EXPECT_TRUE(hasItem(T("Mikrofonu kaydet")));
    EXPECT_TRUE(hasItem(T("Maç Özeti")));
    EXPECT_FALSE(picture(QStringLiteral("settings-page-games-and-sound")).isNull());
}

TEST_F(SettingsAutoClipTest, Pictures)
{
    makeDota();
    makeWow();
    wow->start();
    struct Case {
        const char* language;
        const char* palette;
    };
    for (const auto& [language, palette] :
         {Case{"tr", "ember"}, Case{"de", "sunset"}, Case{"ru", "onyx"}, Case{"en", "ember"}}) {
        showCards(QStringLiteral("AutoClipCard {} MatchSettingsCard {}"), language, palette, 1100);
        QTest::qWait(100);
        const auto name = QStringLiteral("settings-autoclip-%1").arg(QLatin1String(language));
        EXPECT_FALSE(picture(name).isNull());
        click(T("Nasıl puanlıyor?"));
        EXPECT_FALSE(picture(name + QStringLiteral("-scores")).isNull());
        EXPECT_EQ(truncatedTexts(), QStringList());
        window->close();
    }
}

} // namespace
} // namespace quelto::test
