// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/QmlFixture.h"

#include "base/language/L10n.h"
#include "base/language/T.h"

#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Quelto_SharedPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_MatchesPlugin)

namespace quelto {
namespace {

class DeleteMatchDialog : public test::QmlFixture {
protected:
    void ask(const QString& language = QStringLiteral("tr"))
    {
        L10n::use(language);
        imports = QStringLiteral("import Quelto.Matches");
        show(QStringLiteral("property var asked: []\n"
                            "DeleteMatchDialog { objectName: 'dialog'; visible: true\n"
                            "onDeleteRecapRequested: asked.push('recap'); onDeleteAllRequested: asked.push('all') }"),
             {1020, 640});
        ASSERT_TRUE(QTest::qWaitFor([&] { return read(QStringLiteral("dialog"), "opened").toBool(); }));
        window->grabWindow();
    }
    QStringList asked() const { return window->property("asked").toStringList(); }
    QQuickItem* button(const char* key) const { return text(translated(key, {}))->parentItem()->parentItem(); }

    static constexpr auto RecapOnly = "Sadece özeti sil (klipler kalır)";
    static constexpr auto WithClips = "Özeti ve kliplerini sil";
    static constexpr auto Cancel = "Vazgeç";
};

TEST_F(DeleteMatchDialog, ReportsWhatToDelete)
{
    ask();
    click(button(RecapOnly));
    QMetaObject::invokeMethod(object(QStringLiteral("dialog")), "open");
    click(button(WithClips));
    EXPECT_EQ(asked(), QStringList({QStringLiteral("recap"), QStringLiteral("all")}));
}

TEST_F(DeleteMatchDialog, CancelAndEscapeDeleteNothing)
{
    ask();
    EXPECT_EQ(focused(), button(Cancel));
    press(Qt::Key_Return);
    EXPECT_FALSE(read(QStringLiteral("dialog"), "visible").toBool());
    QMetaObject::invokeMethod(object(QStringLiteral("dialog")), "open");
    press(Qt::Key_Escape);
    EXPECT_FALSE(read(QStringLiteral("dialog"), "visible").toBool());
    EXPECT_TRUE(asked().isEmpty());
}

TEST_F(DeleteMatchDialog, OnlyDeletingTheClipsIsRed)
{
    ask();
    const auto fillOf = [&](const char* key) {
        return test::colorOf(button(key)->property("background").value<QQuickItem*>());
    };
    EXPECT_EQ(fillOf(WithClips), theme->live());
    EXPECT_EQ(fillOf(RecapOnly), theme->card());
    EXPECT_EQ(fillOf(Cancel), theme->card());
}

TEST_F(DeleteMatchDialog, FitsInEveryLanguage)
{
    for (const auto* language : {"tr", "en", "de", "es", "fr", "pt", "ru"}) {
        ask(QLatin1String(language));
        for (const auto* key : {RecapOnly, WithClips, Cancel}) {
            const auto* label = text(translated(key, {}));
            ASSERT_NE(label, nullptr) << language;
            EXPECT_FALSE(label->property("truncated").toBool()) << language << ": " << key;
        }
        picture(QStringLiteral("matches-delete-") + QLatin1String(language));
        window->close();
    }
}

} // namespace
} // namespace quelto
