// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/T.h"
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace quelto {
namespace {

class UpdateSheetTest : public test::ShellFixture {
protected:
    const QString title = QStringLiteral("Quelto 1.4.2 çıktı");
    const QString skip = QStringLiteral("Bu sürümü atla");
    const QString later = QStringLiteral("Sonra");
    const QString download = QStringLiteral("İndir");
    const QString row = QStringLiteral("Güncelleme var: 1.4.2");
    const QStringList changes{QStringLiteral("Klipler daha hızlı kaydediliyor."),
                              QStringLiteral("World of Warcraft: uzun dövüşler artık tek klip. Kısa aralar dövüşü "
                                             "bitirmiyor."),
                              QStringLiteral("Küçük düzeltmeler.")};

    void SetUp() override
    {
        ShellFixture::SetUp();
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }

    void publish(const QStringList& notes, const QString& version = QStringLiteral("1.4.2"))
    {
        const QJsonObject manifest{{QStringLiteral("version"), version},
                                   {QStringLiteral("notes"), QJsonArray::fromStringList(notes)},
                                   {QStringLiteral("url"), QStringLiteral("https://example.org/quelto")}};
        updates->receive(QJsonDocument(manifest).toJson());
        drawFrame();
    }
    void publish() { publish(changes); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window, key, modifiers);
        drawFrame();
    }
    QString nameOfFocus() const
    {
        auto* const interface = QAccessible::queryAccessibleInterface(window->activeFocusItem());
        return interface == nullptr ? QString() : interface->text(QAccessible::Name);
    }
    QQuickItem* firstOfType(const char* type) const
    {
        return test::firstVisible(window, [&](const QQuickItem* each) {
            return QByteArray(each->metaObject()->className()).startsWith(QByteArray(type) + "_QMLTYPE");
        });
    }
    /// The visible frame of the sheet.
    QRectF sheet() const
    {
        const auto content = test::placeOf(firstOfType("UpdateSheetContent"));
        return content.adjusted(-24, -24, 24, 24);
    }
    void expectThatTheSheetFits() const
    {
        const auto place = sheet();
        EXPECT_TRUE(QRectF({}, window->contentItem()->size()).contains(place))
            << place.top() << " to " << place.bottom() << " of " << window->height();
        for (const auto& name : {T("Bu sürümü atla"), T("Sonra"), T("İndir")}) {
            EXPECT_TRUE(place.contains(test::placeOf(item(name)))) << name.toStdString();
        }
        EXPECT_LE(test::placeOf(firstOfType("UpdateSheetContent")).bottom(),
                  test::placeOf(item(T("İndir"))).bottom() + 0.5)
            << "the buttons are the last part";
    }
};

TEST_F(UpdateSheetTest, OpensByItselfOnceForAVersion)
{
    EXPECT_FALSE(shows(row));
    publish();
    EXPECT_TRUE(shows(title));
    EXPECT_TRUE(shows(QStringLiteral("Sende 1.3 var.")));
    EXPECT_TRUE(shows(row));
    picture(QStringLiteral("update-sheet"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(shows(title));
    EXPECT_FALSE(updates->showSheet());
    publish();
    EXPECT_FALSE(shows(title));
    publish(changes, QStringLiteral("1.5"));
    EXPECT_TRUE(shows(QStringLiteral("Quelto 1.5 çıktı")));
}

TEST_F(UpdateSheetTest, RowOpensTheSheetOfASkippedVersion)
{
    publish();
    click(skip);
    EXPECT_FALSE(shows(title));
    EXPECT_FALSE(updates->showSheet());
    EXPECT_TRUE(shows(row));
    publish();
    EXPECT_FALSE(shows(title));
    click(row);
    EXPECT_TRUE(shows(title));
    EXPECT_EQ(openedUrls, QStringList());
}

TEST_F(UpdateSheetTest, LaterOnlyCloses)
{
    publish();
    click(later);
    EXPECT_FALSE(shows(title));
    EXPECT_FALSE(updates->showSheet());
    EXPECT_EQ(openedUrls, QStringList());
    EXPECT_TRUE(settings.finishWriting(std::chrono::seconds(10)));
    EXPECT_FALSE(QSettings(settings.file().stored().fileName(), QSettings::IniFormat)
                     .contains(QStringLiteral("updateSkippedVersion")));
}

TEST_F(UpdateSheetTest, DownloadOpensThePageAndCloses)
{
    publish();
    click(download);
    EXPECT_EQ(openedUrls, QStringList{QStringLiteral("https://example.org/quelto")});
    EXPECT_FALSE(shows(title));
    EXPECT_TRUE(shows(row));
}

TEST_F(UpdateSheetTest, ClickBesideTheSheetDoesNothing)
{
    publish();
    QTest::mouseClick(window, Qt::LeftButton, {}, test::middleOf(item(row)));
    QTest::mouseClick(window, Qt::LeftButton, {}, QPoint(window->width() - 5, window->height() - 5));
    EXPECT_TRUE(shows(title));
}

TEST_F(UpdateSheetTest, ShowsNothingWithoutARelease)
{
    updates->setShowSheet(true);
    drawFrame();
    EXPECT_EQ(firstOfType("UpdateSheetContent"), nullptr);
}

TEST_F(UpdateSheetTest, ReleaseWithoutNotesHasNoBox)
{
    publish({});
    EXPECT_TRUE(shows(title));
    EXPECT_FALSE(shows(QStringLiteral("Neler yeni")));
    expectThatTheSheetFits();
    picture(QStringLiteral("update-sheet-without-notes"));
}

TEST_F(UpdateSheetTest, KeyboardStartsAtDownloadAndReachesEveryButton)
{
    item(QStringLiteral("Ayarlar"))->forceActiveFocus(Qt::TabFocusReason);
    publish();
    QStringList names{nameOfFocus()};
    for (int i = 0; i < 3; ++i) {
        press(Qt::Key_Tab);
        names.append(nameOfFocus());
    }
    EXPECT_EQ(names, (QStringList{download, skip, later, download}));
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(nameOfFocus(), later);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(nameOfFocus(), skip);
    press(Qt::Key_Escape);
    EXPECT_EQ(nameOfFocus(), QStringLiteral("Ayarlar")) << "the keyboard returns to where it was";
}

TEST_F(UpdateSheetTest, EnterAndSpaceAct)
{
    publish();
    press(Qt::Key_Return);
    EXPECT_EQ(openedUrls.size(), 1);
    click(row);
    press(Qt::Key_Tab);
    press(Qt::Key_Enter);
    EXPECT_FALSE(shows(title));
    EXPECT_TRUE(settings.finishWriting(std::chrono::seconds(10)));
    EXPECT_EQ(QSettings(settings.file().stored().fileName(), QSettings::IniFormat)
                  .value(QStringLiteral("updateSkippedVersion")),
              QStringLiteral("1.4.2"));
    click(row);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_FALSE(shows(title));
    EXPECT_EQ(openedUrls.size(), 1);
}

TEST_F(UpdateSheetTest, IsADialogToScreenReaders)
{
    publish();
    auto* const dialog = QAccessible::queryAccessibleInterface(item(title));
    EXPECT_EQ(dialog->role(), QAccessible::Dialog);
    EXPECT_EQ(dialog->text(QAccessible::Description),
              QStringLiteral("Sende 1.3 var. İndirdikten sonra yeni sürümü eskisinin üzerine kur. Kliplerin ve "
                             "ayarların korunur."));
    auto* const list = QAccessible::queryAccessibleInterface(item(QStringLiteral("Neler yeni")));
    EXPECT_EQ(list->role(), QAccessible::List);
    for (const auto& change : changes) {
        EXPECT_EQ(QAccessible::queryAccessibleInterface(item(change))->role(), QAccessible::ListItem);
    }
    for (const auto& name : {skip, later, download}) {
        EXPECT_EQ(QAccessible::queryAccessibleInterface(item(name))->role(), QAccessible::Button);
    }
}

TEST_F(UpdateSheetTest, HasTheDesignedSizesAndColours)
{
    publish();
    EXPECT_EQ(sheet().width(), 440);
    EXPECT_NEAR(sheet().center().x(), window->width() / 2.0, 0.5);
    const auto* headline = textItem(title);
    EXPECT_EQ(test::fontOf(headline).pixelSize(), 18);
    EXPECT_EQ(test::fontOf(headline).weight(), QFont::ExtraBold);
    EXPECT_EQ(test::colorOf(headline), theme->text());
    const auto* present = textItem(QStringLiteral("Sende 1.3 var."));
    EXPECT_EQ(test::fontOf(present).pixelSize(), 12);
    EXPECT_EQ(test::colorOf(present), theme->muted());
    EXPECT_EQ(test::placeOf(present).top(), test::placeOf(headline).bottom() + 2);
    const auto* box = firstOfType("UpdateNotes");
    EXPECT_EQ(box->width(), 440 - 48);
    EXPECT_EQ(test::radiusOf(box), 10);
    EXPECT_EQ(test::colorOf(box), theme->bg());
    const auto* heading = textItem(QStringLiteral("Neler yeni"));
    EXPECT_EQ(test::fontOf(heading).pixelSize(), 12);
    EXPECT_EQ(test::fontOf(heading).weight(), QFont::Bold);
    EXPECT_EQ(test::colorOf(heading), theme->muted());
    EXPECT_EQ(test::placeOf(heading).topLeft(), test::placeOf(box).topLeft() + QPointF(12, 12));
    const auto* change = textItem(changes.first());
    EXPECT_EQ(test::fontOf(change).pixelSize(), 13);
    EXPECT_EQ(test::colorOf(change), theme->text());
    const auto* mark = textItem(QStringLiteral("•"));
    EXPECT_EQ(test::colorOf(mark), theme->accent());
    EXPECT_EQ(test::placeOf(change).left(), test::placeOf(mark).right() + 8);
    const auto* hint = textItem(
        QStringLiteral("İndirdikten sonra yeni sürümü eskisinin üzerine kur. Kliplerin ve ayarların korunur."));
    ASSERT_NE(hint, nullptr);
    EXPECT_EQ(test::fontOf(hint).pixelSize(), 11);
    EXPECT_EQ(test::colorOf(hint), theme->dim());
    EXPECT_EQ(test::placeOf(hint).top(), test::placeOf(box).bottom() + 16);
    EXPECT_EQ(test::fontOf(textItem(skip)).pixelSize(), 12);
    EXPECT_EQ(test::colorOf(textItem(skip)), theme->muted());
    const auto* icon = test::firstVisible(window, [](const QQuickItem* each) {
        return each->inherits("QQuickImage") && each->property("source").toString().contains(u"app.quelto.Quelto");
    });
    ASSERT_NE(icon, nullptr);
    EXPECT_EQ(icon->size(), QSizeF(48, 48));
    EXPECT_EQ(icon->property("status").toInt(), 1) << "the picture is loaded";
    expectThatTheSheetFits();
}

TEST_F(UpdateSheetTest, StaysOpenWhenLanguageOrThemeChange)
{
    publish();
    settings.setLanguage(QStringLiteral("de"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Quelto 1.4.2 ist da")); }));
    settings.setColorTheme(QStringLiteral("ocean"));
    QTest::qWait(100);
    drawFrame();
    EXPECT_TRUE(shows(QStringLiteral("Quelto 1.4.2 ist da")));
    EXPECT_TRUE(updates->showSheet());
    EXPECT_EQ(nameOfFocus(), QStringLiteral("Herunterladen"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(updates->showSheet());
    EXPECT_FALSE(shows(QStringLiteral("Quelto 1.4.2 ist da")));
}

TEST_F(UpdateSheetTest, ManyNotesScroll)
{
    QStringList notes;
    for (int i = 1; i <= 10000; ++i) {
        notes.append(QStringLiteral("Değişiklik %1").arg(i));
    }
    QElapsedTimer elapsed;
    elapsed.start();
    publish(notes);
    EXPECT_LT(elapsed.elapsed(), 1500);
    expectThatTheSheetFits();
    picture(QStringLiteral("update-sheet-many-notes"));
    const auto* box = firstOfType("UpdateNotes");
    const auto isInView = [&](const QString& note) {
        const auto* text = textItem(note);
        return text != nullptr && test::placeOf(box).contains(test::placeOf(text));
    };
    EXPECT_TRUE(isInView(notes.first()));
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    EXPECT_EQ(nameOfFocus(), download);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(nameOfFocus(), QStringLiteral("Neler yeni"));
    press(Qt::Key_End);
    EXPECT_TRUE(isInView(QStringLiteral("…")));
    EXPECT_TRUE(isInView(QStringLiteral("Değişiklik 200")));
    picture(QStringLiteral("update-sheet-many-notes-end"));
    press(Qt::Key_Home);
    EXPECT_TRUE(isInView(notes.first()));
    press(Qt::Key_PageDown);
    EXPECT_FALSE(isInView(notes.first()));
    press(Qt::Key_PageUp);
    press(Qt::Key_Down);
    EXPECT_FALSE(isInView(QStringLiteral("Neler yeni")));
    press(Qt::Key_Up);
    EXPECT_TRUE(isInView(QStringLiteral("Neler yeni")));
    press(Qt::Key_Escape);
    EXPECT_FALSE(shows(title));
}

TEST_F(UpdateSheetTest, HostileTextsStayInsideTheSheet)
{
    // As long as the feed may be, without a place to break; with markup and a change of direction.
    const auto endless = QString(30000, u'W');
    publish(
        {endless, QStringLiteral("<img src='file:///etc/passwd'><b>x</b>"), QStringLiteral("\u202eabc\n\n\n\u0007")},
        QStringLiteral("9.") + endless);
    expectThatTheSheetFits();
    EXPECT_TRUE(shows(QStringLiteral("<img src='file:///etc/passwd'><b>x</b>")));
    EXPECT_TRUE(shows(QStringLiteral("abc")));
    const auto* box = firstOfType("UpdateNotes");
    EXPECT_LE(test::placeOf(textItem(endless)).right(), test::placeOf(box).right());
    press(Qt::Key_Escape);
    const auto* inSidebar = firstOfType("UpdateRow");
    ASSERT_NE(inSidebar, nullptr);
    EXPECT_LT(inSidebar->height(), 60);
    picture(QStringLiteral("update-row-endless"));
}

struct SheetLook {
    const char* language;
    const char* palette;
    QSize size;
};

class UpdateSheetLookTest : public UpdateSheetTest, public testing::WithParamInterface<SheetLook> { };

TEST_P(UpdateSheetLookTest, NothingIsCut)
{
    setLook({GetParam().language, GetParam().palette, GetParam().size});
    publish();
    const auto name = QStringLiteral("update-sheet-%1-%2-%3")
                          .arg(QLatin1String(GetParam().language), QLatin1String(GetParam().palette))
                          .arg(GetParam().size.width());
    picture(name);
    expectThatTheSheetFits();
    for (const auto& text : {T("Quelto {0} çıktı", QStringLiteral("1.4.2")), T("Sende {0} var.", QStringLiteral("1.3")),
                             T("Neler yeni"), T("Bu sürümü atla"), T("Sonra"), T("İndir"), changes.first()}) {
        const auto* shown = textItem(text);
        ASSERT_NE(shown, nullptr) << text.toStdString();
        EXPECT_FALSE(shown->property("truncated").toBool()) << text.toStdString();
        EXPECT_LE(shown->property("contentWidth").toReal(), shown->width() + 0.5) << text.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Looks, UpdateSheetLookTest,
                         testing::Values(SheetLook{"tr", "ember", {1240, 780}}, SheetLook{"en", "ocean", {1240, 780}},
                                         SheetLook{"de", "blurple", {1020, 640}},
                                         SheetLook{"ru", "sunset", {1020, 640}}, SheetLook{"fr", "neon", {680, 350}},
                                         SheetLook{"es", "onyx", {680, 350}}, SheetLook{"pt", "forest", {680, 350}},
                                         SheetLook{"ru", "ember", {680, 350}}),
                         [](const auto& look) {
                             return std::string(look.param.language) + '_' + std::to_string(look.param.size.width());
                         });

} // namespace
} // namespace quelto
