// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChildProcess.h"
#include "platform/freedesktop/FreedesktopNotifications.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <gtest/gtest.h>

namespace quelto {
namespace {

using pipewire::ChildProcess;

QByteArray dunstctl(const QStringList& arguments)
{
    ChildProcess process(QStringLiteral("dunstctl"), arguments);
    return process.readAll();
}

int displayedCount()
{
    return dunstctl({QStringLiteral("count"), QStringLiteral("displayed")}).trimmed().toInt();
}

/// The notifications that were shown and closed, newest first.
QJsonArray history()
{
    const QJsonDocument document = QJsonDocument::fromJson(dunstctl({QStringLiteral("history")}));
    return document.object().value(u"data").toArray().at(0).toArray();
}

QString field(const QJsonValue& entry, QStringView name)
{
    return entry.toObject().value(name).toObject().value(u"data").toString();
}

TEST(NotificationServer, ShowsReplacesAndReportsTheClick)
{
    if (qEnvironmentVariableIsEmpty("QUELTO_TEST_NOTIFICATIONS")) {
        GTEST_SKIP() << "runs on the private desktop with notifications only";
    }
    FreedesktopNotifications notifications;
    QStringList clicks;
    QObject::connect(&notifications, &DesktopNotifications::clicked, [&](const QString& id) { clicks.append(id); });
    const auto action = QStringLiteral("open");
    notifications.show({QStringLiteral("match"), QStringLiteral("first"), QStringLiteral("body"), action});
    notifications.show(
        {QStringLiteral("match"), QStringLiteral("Maç bitti • <i>"), QStringLiteral("<b>Ahri</b> & Co • 3"), action});
    ASSERT_TRUE(QTest::qWaitFor([] { return displayedCount() == 1; }));
    QTest::qWait(200);
    ASSERT_EQ(displayedCount(), 1) << "the second notification must replace the first";
    dunstctl({QStringLiteral("action")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !clicks.isEmpty(); }));
    EXPECT_EQ(clicks, QStringList{QStringLiteral("match")});
    dunstctl({QStringLiteral("close")});
    ASSERT_TRUE(QTest::qWaitFor([] { return displayedCount() == 0; }));
    const QJsonArray shown = history();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(field(shown[0], u"appname"), u"Quelto");
    EXPECT_EQ(field(shown[0], u"summary"), QStringLiteral("Maç bitti • <i>"));
    EXPECT_TRUE(field(shown[0], u"message").contains(QStringLiteral("&lt;b&gt;Ahri&lt;/b&gt; &amp; Co • 3")))
        << field(shown[0], u"message").toStdString();
    EXPECT_EQ(field(shown[0], u"default_action_name"), u"default");
}

TEST(NotificationServer, HasANotificationBeforeTheProgramEnds)
{
    if (qEnvironmentVariableIsEmpty("QUELTO_TEST_NOTIFICATIONS")) {
        GTEST_SKIP() << "runs on the private desktop with notifications only";
    }
    const auto before = displayedCount();
    FreedesktopNotifications::showAndWait({QStringLiteral("end"), QStringLiteral("title"), QStringLiteral("a < b")});
    EXPECT_EQ(displayedCount(), before + 1);
    dunstctl({QStringLiteral("close")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return displayedCount() == before; }));
    EXPECT_TRUE(field(history()[0], u"message").contains(u"a &lt; b"));
}

} // namespace
} // namespace quelto
