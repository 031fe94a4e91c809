// SPDX-License-Identifier: GPL-3.0-or-later
#include "updates/UpdateChecker.h"

#include "tests/base/tasks/ManualQueue.h"
#include "tests/moments/watcher/WaitFor.h"
#include "tests/updates/FeedServer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class UpdateCheckerTest : public testing::Test {
protected:
    static const test::TestAuthority& authority()
    {
        static const test::TestAuthority one;
        return one;
    }
    static const QSslConfiguration& serverSettings()
    {
        static const auto settings = authority().serverSettings("IP:127.0.0.1");
        return settings;
    }

    void SetUp() override { launch(); }

    /// Starts the program anew, with the settings that the one before has stored.
    void launch(const QString& currentVersion = QStringLiteral("1.2"))
    {
        checker.reset();
        file.reset();
        file = std::make_unique<SettingsFile>(path());
        checker = std::make_unique<UpdateChecker>(
            UpdateChecker::Dependencies{.file = *file,
                                        .main = main,
                                        .feed = feed,
                                        .currentVersion = currentVersion,
                                        .openUrl = [this](const QUrl& url) { opened.append(url.toString()); },
                                        .now = [this] { return now; },
                                        .tls = authority().clientSettings(),
                                        .timeout = 30s});
    }

    void publish(const QString& version, const QString& url = QStringLiteral("https://example.org/quelto"))
    {
        const QJsonObject manifest{{QStringLiteral("version"), version},
                                   {QStringLiteral("notes"), QJsonArray{QStringLiteral("One"), QStringLiteral("Two")}},
                                   {QStringLiteral("url"), url}};
        server.setResponse(test::httpResponse(QJsonDocument(manifest).toJson()));
    }

    /// Checks, and waits for the end of it.
    void check()
    {
        checker->check();
        waitForCheck();
    }
    void waitForCheck() const
    {
        EXPECT_TRUE(test::waitFor([this] { return !checker->isChecking(); }, 30s));
    }

    QVariant stored(const char* key)
    {
        EXPECT_TRUE(file->finishWriting(10s));
        return QSettings(path(), QSettings::IniFormat).value(QLatin1String(key));
    }
    QString path() const { return folder.filePath(QStringLiteral("Quelto.conf")); }

    /// Moves both clocks by an hour.
    void waitAnHour()
    {
        now += 3600;
        time.advance(1h);
    }

    int argc = 0;
    QCoreApplication application{argc, nullptr};
    QTemporaryDir folder;
    test::ManualTime time;
    test::ManualQueue main{time};
    test::FeedServer server{serverSettings()};
    QUrl feed = server.address();
    double now = 1.7e9;
    QStringList opened;
    std::unique_ptr<SettingsFile> file;
    std::unique_ptr<UpdateChecker> checker;
};

TEST_F(UpdateCheckerTest, OffersANewerVersion)
{
    publish(QStringLiteral("1.3"));
    int changes = 0;
    QObject::connect(checker.get(), &UpdateChecker::availableChanged, checker.get(), [&] { ++changes; });
    EXPECT_EQ(checker->version(), QString());
    EXPECT_FALSE(checker->showSheet());
    check();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(checker->version(), QStringLiteral("1.3"));
    EXPECT_EQ(checker->notes(), QStringList({QStringLiteral("One"), QStringLiteral("Two")}));
    EXPECT_TRUE(checker->showSheet());
    EXPECT_EQ(stored("updatePromptedVersion"), QStringLiteral("1.3"));
    EXPECT_TRUE(server.requests().first().contains("User-Agent: Quelto/1.2\r\n"));
}

TEST_F(UpdateCheckerTest, KeepsSilentOtherwise)
{
    for (const auto* version : {"1.2", "1.1.9", "1.2.0", ""}) {
        publish(QLatin1String(version));
        check();
        EXPECT_FALSE(checker->available()) << version;
    }
    for (const QByteArray body : {"", "<html>", "{}", R"({"version": 2, "notes": [], "url": ""})"}) {
        server.setResponse(test::httpResponse(body));
        check();
        EXPECT_FALSE(checker->available()) << body.constData();
    }
    EXPECT_FALSE(checker->showSheet());
    EXPECT_FALSE(stored("updatePromptedVersion").isValid());
}

TEST_F(UpdateCheckerTest, KeepsTheReleaseThatItFoundBefore)
{
    publish(QStringLiteral("1.3"));
    check();
    publish(QStringLiteral("1.2"));
    check();
    server.setResponse("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
    check();
    EXPECT_EQ(checker->version(), QStringLiteral("1.3"));
}

TEST_F(UpdateCheckerTest, SheetOpensAtTheFirstOfTwoLaunches)
{
    publish(QStringLiteral("1.3"));
    check();
    EXPECT_TRUE(checker->showSheet());
    launch();
    check();
    EXPECT_EQ(checker->version(), QStringLiteral("1.3"));
    EXPECT_FALSE(checker->showSheet());
    checker->setShowSheet(true);
    EXPECT_TRUE(checker->showSheet()) << "on request it opens at any time";
}

TEST_F(UpdateCheckerTest, SheetOpensOnceForEachVersionWhileTheProgramRuns)
{
    publish(QStringLiteral("1.3"));
    check();
    checker->setShowSheet(false);
    check();
    EXPECT_FALSE(checker->showSheet());
    publish(QStringLiteral("1.4"));
    check();
    EXPECT_TRUE(checker->showSheet());
}

TEST_F(UpdateCheckerTest, ASkippedVersionIsAvailableAndAStillNewerOneOpensTheSheet)
{
    publish(QStringLiteral("1.3"));
    check();
    checker->skip();
    EXPECT_FALSE(checker->showSheet());
    EXPECT_EQ(checker->version(), QStringLiteral("1.3"));
    EXPECT_EQ(stored("updateSkippedVersion"), QStringLiteral("1.3"));
    launch();
    check();
    EXPECT_EQ(checker->version(), QStringLiteral("1.3"));
    EXPECT_FALSE(checker->showSheet());
    publish(QStringLiteral("1.10"));
    check();
    EXPECT_TRUE(checker->showSheet());
}

TEST_F(UpdateCheckerTest, ASkippedVersionNeedsNoPrompt)
{
    file->setValue(QStringLiteral("updateSkippedVersion"), QStringLiteral("1.3"));
    launch();
    publish(QStringLiteral("1.3"));
    check();
    EXPECT_FALSE(checker->showSheet());
    EXPECT_FALSE(stored("updatePromptedVersion").isValid());
}

TEST_F(UpdateCheckerTest, SkippingWithoutAReleaseOnlyCloses)
{
    checker->setShowSheet(true);
    checker->skip();
    EXPECT_FALSE(checker->showSheet());
    EXPECT_FALSE(stored("updateSkippedVersion").isValid());
}

TEST_F(UpdateCheckerTest, DownloadOpensWebAddressesOnly)
{
    for (const auto* url :
         {"", "quelto", "file:///bin/sh", "javascript:alert(1)", "ftp://example.org/", "https://", "https:///path",
          "http:example", "/tmp/a", "steam://run/1", "https://exa mple.org/", "https://[::1", "//example.org/"}) {
        publish(QStringLiteral("1.3"), QLatin1String(url));
        check();
        checker->setShowSheet(true);
        checker->download();
        EXPECT_FALSE(checker->showSheet()) << url;
        EXPECT_EQ(opened, QStringList()) << url;
    }
    const QStringList addresses{QStringLiteral("https://example.org/a%20b?c=d&e#f"),
                                QStringLiteral("http://example.org:8080/x.deb")};
    for (const auto& url : addresses) {
        publish(QStringLiteral("1.3"), url);
        check();
        checker->setShowSheet(true);
        checker->download();
        EXPECT_FALSE(checker->showSheet());
    }
    EXPECT_EQ(opened.size(), 2);
    EXPECT_EQ(opened.last(), addresses.last());
    EXPECT_EQ(checker->version(), QStringLiteral("1.3"));
}

TEST_F(UpdateCheckerTest, ProgramWithoutAVersionIsOlderThanAnyRealOne)
{
    launch({});
    EXPECT_EQ(checker->currentVersion(), QStringLiteral("0"));
    publish(QStringLiteral("0.0.1"));
    check();
    EXPECT_TRUE(checker->showSheet());
}

TEST_F(UpdateCheckerTest, ChecksAtTheStartWhateverTheTimeOfTheLastCheck)
{
    file->setValue(QStringLiteral("updateLastCheck"), now - 1);
    launch();
    publish(QStringLiteral("1.3"));
    checker->start();
    EXPECT_TRUE(checker->isChecking());
    EXPECT_EQ(stored("updateLastCheck").toDouble(), now) << "before the answer";
    waitForCheck();
    EXPECT_EQ(checker->version(), QStringLiteral("1.3"));
}

TEST_F(UpdateCheckerTest, ChecksOnceADayWithinTheHour)
{
    publish(QStringLiteral("1.2"));
    checker->start();
    waitForCheck();
    now += 0.5;
    for (int hour = 1; hour < 24; ++hour) {
        waitAnHour();
        EXPECT_FALSE(checker->isChecking()) << hour;
    }
    waitAnHour();
    EXPECT_TRUE(checker->isChecking());
    waitForCheck();
    for (int hour = 25; hour < 48; ++hour) {
        waitAnHour();
        EXPECT_FALSE(checker->isChecking()) << hour;
    }
    EXPECT_EQ(server.requests().size(), 2);
}

TEST_F(UpdateCheckerTest, AFailedCheckCountsAsOne)
{
    server.setResponse([](QSslSocket& client, const QByteArray&) { client.disconnectFromHost(); });
    checker->start();
    waitForCheck();
    EXPECT_EQ(stored("updateLastCheck").toDouble(), now);
    waitAnHour();
    EXPECT_FALSE(checker->isChecking());
}

TEST_F(UpdateCheckerTest, FirstTickAfterDaysOfSleepChecks)
{
    publish(QStringLiteral("1.2"));
    checker->start();
    waitForCheck();
    // Timers stand still while the computer sleeps.
    now += 3 * 86400;
    time.advance(1h - 1s);
    EXPECT_FALSE(checker->isChecking());
    time.advance(1s);
    EXPECT_TRUE(checker->isChecking());
}

TEST_F(UpdateCheckerTest, RequestsNothingWithoutAFeed)
{
    for (const auto& address : {QUrl(), QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(server.address().port())),
                                QUrl(QStringLiteral("file:///version.json"))}) {
        feed = address;
        launch();
        checker->start();
        EXPECT_FALSE(checker->isChecking());
        now += 90000;
        time.advance(25h);
        EXPECT_FALSE(checker->isChecking());
    }
    EXPECT_FALSE(stored("updateLastCheck").isValid());
}

TEST_F(UpdateCheckerTest, AnswerAtTheEndOfTheProgramHasNoEffect)
{
    publish(QStringLiteral("1.3"));
    checker->start();
    checker->stop();
    waitForCheck();
    EXPECT_FALSE(checker->available());
    now += 90000;
    time.advance(25h);
    EXPECT_FALSE(checker->isChecking());
    launch();
    checker->start();
    checker.reset();
    time.advance(25h);
    test::waitFor([] { return false; }, 300ms);
    EXPECT_FALSE(stored("updatePromptedVersion").isValid());
}

TEST_F(UpdateCheckerTest, ASecondCheckReplacesTheFirst)
{
    publish(QStringLiteral("1.3"));
    int changes = 0;
    QObject::connect(checker.get(), &UpdateChecker::availableChanged, checker.get(), [&] { ++changes; });
    checker->check();
    checker->check();
    waitForCheck();
    EXPECT_EQ(changes, 1);
}

TEST_F(UpdateCheckerTest, ShowsALimitedNumberOfNotes)
{
    const auto receive = [this](int count) {
        QByteArray notes = "\"0\"";
        for (int i = 1; i < count; ++i) {
            notes += ",\"" + QByteArray::number(i) + '"';
        }
        checker->receive(R"({"version": "2", "url": "", "notes": [)" + notes + "]}");
        return checker->notes();
    };
    EXPECT_EQ(receive(200).size(), 200);
    EXPECT_EQ(checker->notes().last(), QStringLiteral("199"));
    EXPECT_EQ(receive(201).size(), 201);
    EXPECT_EQ(checker->notes().mid(199), QStringList({QStringLiteral("199"), QStringLiteral("…")}));
    EXPECT_EQ(receive(10000).size(), 201);
}

TEST_F(UpdateCheckerTest, TextsAreSafeToShow)
{
    publish(QStringLiteral("2.\n9\u202e"));
    check();
    EXPECT_EQ(checker->version(), QStringLiteral("2. 9"));
    checker->skip();
    launch();
    check();
    EXPECT_FALSE(checker->showSheet()) << "the stored version is the published one";
}

} // namespace
} // namespace quelto
