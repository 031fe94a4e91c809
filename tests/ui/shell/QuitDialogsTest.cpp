// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/L10n.h"
#include "base/language/T.h"
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QTest>

namespace quelto {
namespace {

class QuitDialogsTest : public test::ShellFixture {
protected:
    const QString title = QStringLiteral("Dışa aktarma sürerken çıkılsın mı?");
    const QString whenDone = QStringLiteral("Bitince Çık");
    const QString now = QStringLiteral("Yine de Çık");

    void SetUp() override
    {
        ShellFixture::SetUp();
        for (const auto& [name, signal] :
             {std::pair{"when done", &QuitQuestion::whenDoneChosen}, std::pair{"now", &QuitQuestion::nowChosen},
              std::pair{"dismissed", &QuitQuestion::dismissed}}) {
            QObject::connect(&quitQuestion, signal, window,
                             [this, name = name] { answers.append(QLatin1String(name)); });
        }
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }

    void ask(int exports = 1)
    {
        quitQuestion.setExportCount(exports);
        quitQuestion.setAsked(true);
        drawFrame();
    }
    void press(Qt::Key key) { QTest::keyClick(window, key); }
    QString nameOfFocus() const
    {
        return QAccessible::queryAccessibleInterface(window->activeFocusItem())->text(QAccessible::Name);
    }

    QStringList answers;
};

TEST_F(QuitDialogsTest, NothingIsShownUnlessAsked)
{
    EXPECT_FALSE(shows(title));
    ask();
    EXPECT_TRUE(shows(title));
    quitQuestion.setAsked(false);
    EXPECT_FALSE(shows(title));
    EXPECT_EQ(answers, QStringList()) << "a question that is withdrawn has no answer";
}

TEST_F(QuitDialogsTest, SaysHowManyExportsAreNotFinished)
{
    ask(1);
    EXPECT_TRUE(shows(
        QStringLiteral("Bir klip hâlâ dışa aktarılıyor. Şimdi çıkarsanız dışa aktarma durur ve dosyası silinir.")));
    quitQuestion.setExportCount(3);
    EXPECT_TRUE(shows(QStringLiteral("3 dışa aktarma henüz bitmedi. Şimdi çıkarsanız dururlar ve dosyaları silinir.")));
}

TEST_F(QuitDialogsTest, FinishingTheExportIsTheDefault)
{
    ask();
    EXPECT_EQ(nameOfFocus(), whenDone);
    press(Qt::Key_Return);
    EXPECT_EQ(answers, QStringList{QStringLiteral("when done")});
    EXPECT_FALSE(shows(title));
    EXPECT_FALSE(quitQuestion.isAsked());
}

TEST_F(QuitDialogsTest, TabAndArrowsReachBothAnswersOnly)
{
    ask();
    QStringList names;
    for (const auto key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Right, Qt::Key_Left}) {
        press(key);
        names.append(nameOfFocus());
    }
    EXPECT_EQ(names, (QStringList{now, whenDone, now, whenDone}));
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_EQ(answers, QStringList{QStringLiteral("now")});
}

TEST_F(QuitDialogsTest, QuitsByClick)
{
    ask();
    click(now);
    EXPECT_EQ(answers, QStringList{QStringLiteral("now")});
    EXPECT_FALSE(shows(title));
}

TEST_F(QuitDialogsTest, EscapeDismissesAndTheQuestionCanBeAskedAgain)
{
    for (int i = 1; i <= 2; ++i) {
        ask();
        EXPECT_EQ(nameOfFocus(), whenDone);
        press(Qt::Key_Escape);
        EXPECT_FALSE(shows(title));
        EXPECT_EQ(answers, QStringList(i, QStringLiteral("dismissed")));
    }
}

TEST_F(QuitDialogsTest, IsADialogToScreenReaders)
{
    ask();
    auto* const interface = QAccessible::queryAccessibleInterface(item(title));
    EXPECT_EQ(interface->role(), QAccessible::Dialog);
    EXPECT_EQ(
        interface->text(QAccessible::Description),
        QStringLiteral("Bir klip hâlâ dışa aktarılıyor. Şimdi çıkarsanız dışa aktarma durur ve dosyası silinir."));
    for (const auto& name : {whenDone, now}) {
        EXPECT_EQ(QAccessible::queryAccessibleInterface(item(name))->role(), QAccessible::Button);
    }
}

TEST_F(QuitDialogsTest, TheMenuEntryLeavesTheFocusToTheQuestion)
{
    press(Qt::Key_F10);
    press(Qt::Key_Down);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Quelto'den Çık")); }));
    // The fourth entry.
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_Down);
    }
    onQuit = [this] { ask(); };
    press(Qt::Key_Return);
    QCoreApplication::processEvents();
    ASSERT_EQ(requestedActions, QStringList{QStringLiteral("quit")});
    EXPECT_EQ(nameOfFocus(), whenDone);
    press(Qt::Key_Return);
    EXPECT_EQ(answers, QStringList{QStringLiteral("when done")});
}

TEST_F(QuitDialogsTest, TheShortcutDoesNothingWhileTheQuestionIsOpen)
{
    ask();
    QTest::keyClick(window, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(shows(title));
    EXPECT_EQ(answers, QStringList());
}

TEST_F(QuitDialogsTest, StaysOpenWhenTheContentOfTheWindowIsRebuilt)
{
    ask();
    settings.setLanguage(QStringLiteral("en"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Quit while exporting?")); }));
    EXPECT_EQ(answers, QStringList());
    EXPECT_EQ(nameOfFocus(), QStringLiteral("Quit When Done"));
    press(Qt::Key_Escape);
    EXPECT_EQ(answers, QStringList{QStringLiteral("dismissed")});
}

TEST_F(QuitDialogsTest, AFailureIsShownUntilItIsRead)
{
    const auto message = QStringLiteral("Dışa aktarma başarısız: Diskte yer kalmadı. Yer açın veya başka bir kayıt "
                                        "klasörü seçin.");
    quitQuestion.setFailure(message);
    drawFrame();
    EXPECT_TRUE(shows(QStringLiteral("Quelto kapanmadı")));
    EXPECT_TRUE(shows(message));
    picture(QStringLiteral("quit-failure"));
    press(Qt::Key_Return);
    EXPECT_FALSE(shows(message));
    EXPECT_EQ(quitQuestion.failure(), QString());
    quitQuestion.setFailure(message);
    EXPECT_TRUE(shows(message));
    press(Qt::Key_Escape);
    EXPECT_EQ(quitQuestion.failure(), QString());
}

struct Look {
    const char* language;
    const char* palette;
    QSize size;
};

class QuitDialogsLookTest : public test::ShellFixture, public testing::WithParamInterface<Look> {
protected:
    void SetUp() override
    {
        ShellFixture::SetUp();
        window->setMinimumSize({});
        window->resize(GetParam().size);
        settings.setLanguage(QLatin1String(GetParam().language));
        settings.setColorTheme(QLatin1String(GetParam().palette));
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->contentItem()->size() == QSizeF(GetParam().size); }));
        drawFrame();
    }
    static bool isCut(const QQuickItem* text)
    {
        return text->property("truncated").toBool() || text->property("contentWidth").toReal() > text->width() + 0.5;
    }
    /// Whether all visible texts of the dialog are complete and inside it.
    void checkDialog(const QString& title, const QStringList& texts)
    {
        const auto body = test::placeOf(textItem(title)->parentItem());
        EXPECT_TRUE(QRectF({}, window->size()).contains(body));
        for (const auto& text : texts) {
            const auto* shown = textItem(text);
            ASSERT_NE(shown, nullptr) << text.toStdString();
            EXPECT_TRUE(body.contains(test::placeOf(shown))) << text.toStdString();
            EXPECT_FALSE(isCut(shown)) << text.toStdString();
        }
    }
};

TEST_P(QuitDialogsLookTest, TheQuestionFits)
{
    quitQuestion.setExportCount(12);
    quitQuestion.setAsked(true);
    drawFrame();
    checkDialog(T("Dışa aktarma sürerken çıkılsın mı?"),
                {T("{0} dışa aktarma henüz bitmedi. Şimdi çıkarsanız dururlar ve dosyaları silinir.", 12),
                 T("Bitince Çık"), T("Yine de Çık")});
    const auto sizeOfText = [this](const char* key) { return test::fontOf(textItem(T(key))).pixelSize(); };
    EXPECT_EQ(sizeOfText("Bitince Çık"), sizeOfText("Yine de Çık"));
    picture(QStringLiteral("quit-question-%1-%2-%3")
                .arg(QLatin1String(GetParam().language), QLatin1String(GetParam().palette))
                .arg(GetParam().size.width()));
}

TEST_P(QuitDialogsLookTest, TheToastFits)
{
    const auto text = T("Dışa aktarma bitince Quelto kapanacak");
    navigation->showToast(text);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(text); }));
    EXPECT_FALSE(isCut(textItem(text)));
}

TEST_P(QuitDialogsLookTest, TheFailureFits)
{
    const auto failure = T("Dışa aktarma bir dakikadır ilerlemiyor. Disk yanıt vermiyor olabilir.");
    quitQuestion.setFailure(failure);
    drawFrame();
    checkDialog(T("Quelto kapanmadı"), {failure, T("Kapat")});
    picture(QStringLiteral("quit-failure-%1-%2-%3")
                .arg(QLatin1String(GetParam().language), QLatin1String(GetParam().palette))
                .arg(GetParam().size.width()));
}

INSTANTIATE_TEST_SUITE_P(Looks, QuitDialogsLookTest,
                         testing::Values(Look{"tr", "ember", {1240, 780}}, Look{"en", "ocean", {1240, 780}},
                                         Look{"de", "blurple", {1020, 640}}, Look{"ru", "sunset", {1020, 640}},
                                         Look{"es", "ember", {680, 350}}, Look{"fr", "ember", {680, 350}},
                                         Look{"pt", "ember", {680, 350}}, Look{"de", "ember", {680, 350}},
                                         Look{"ru", "ocean", {680, 350}}),
                         [](const auto& look) {
                             return std::string(look.param.language) + '_' + std::to_string(look.param.size.width());
                         });

} // namespace
} // namespace quelto
