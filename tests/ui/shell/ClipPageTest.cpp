// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/L10n.h"

#include "tests/export/queue/Gate.h"
#include "tests/ui/shell/ShellFixture.h"

namespace quelto {
namespace {

const QByteArray Automatic = "Dota 2 - [EFSANE 95] RAMPAGE - 2026-03-01 20.15.07.mp4";
const QByteArray Titled = "Dota 2 - Best of all.mp4";

/// The page of a clip in the real window, with a player whose time the test moves.
class ClipPageTest : public test::ShellFixture {
protected:
    void SetUp() override
    {
        ShellFixture::SetUp();
        makeClips({Automatic, Titled});
    }

    QString pathOf(const QByteArray& name) const { return settings.saveFolder() + u'/' + QString::fromUtf8(name); }
    void open(const QByteArray& name)
    {
        navigation->openClip(pathOf(name));
        drawFrame();
        ASSERT_TRUE(player);
        player->opened(10);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(window, key, modifiers); }
    QString focusedName() const
    {
        const auto* interface = QAccessible::queryAccessibleInterface(window->activeFocusItem());
        return interface == nullptr ? QString() : interface->text(QAccessible::Name);
    }
    bool isEnabled(const char* name) { return item(QString::fromUtf8(name))->isEnabled(); }
    QString toast() const { return navigation->toast(); }
};

TEST_F(ClipPageTest, PlaysAtOnceAndHasTheKeyboard)
{
    open(Titled);
    EXPECT_EQ(player->takeCalls(), QStringList({QStringLiteral("open ") + pathOf(Titled), QStringLiteral("play 1")}));
    press(Qt::Key_Space);
    EXPECT_EQ(player->takeCalls(), QStringList(QStringLiteral("pause")));
}

TEST_F(ClipPageTest, LeavingStopsThePlayer)
{
    open(Titled);
    press(Qt::Key_Escape);
    EXPECT_FALSE(navigation->hasSelected());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(player);
}

TEST_F(ClipPageTest, HiddenWindowPlaysNothing)
{
    open(Titled);
    player->takeCalls();
    window->hide();
    EXPECT_EQ(player->takeCalls(), QStringList(QStringLiteral("pause")));
}

TEST_F(ClipPageTest, ClosedPageLeavesTheFullScreen)
{
    open(Titled);
    click(QStringLiteral("Tam ekran"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::FullScreen; }));
    navigation->closeClip();
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->visibility() == QWindow::Windowed; }));
}

TEST_F(ClipPageTest, ShowsWhatIsKnownAtOnce)
{
    open(Automatic);
    EXPECT_TRUE(shows(Clip(pathOf(Automatic)).displayTitle())) << Clip(pathOf(Automatic)).displayTitle().toStdString();
    EXPECT_TRUE(shows(QStringLiteral("DOTA 2")));
    EXPECT_TRUE(item(QStringLiteral("Efsane 95")));
    for (const auto* label : {"Süre: —", "Çözünürlük: —", "FPS: —"}) {
        EXPECT_TRUE(item(QString::fromUtf8(label)));
    }
    EXPECT_TRUE(item(QStringLiteral("Boyut: ") + Clip(pathOf(Automatic)).sizeText()));
    open(Titled);
    EXPECT_EQ(test::itemNamed(window, QStringLiteral("Efsane 95")), nullptr);
}

TEST_F(ClipPageTest, TrimModeOpensOnTheWholeClipAndEscapeLeavesIt)
{
    open(Titled);
    click(QStringLiteral("Kırp"));
    EXPECT_TRUE(shows(QStringLiteral("Sarı tutamakları sürükleyerek başlangıcı ve bitişi seç")));
    EXPECT_EQ(test::itemNamed(window, QStringLiteral("FPS: —")), nullptr);
    EXPECT_EQ(item(QStringLiteral("Kırpma başlangıcı"))->property("value").toDouble(), 0);
    EXPECT_EQ(item(QStringLiteral("Kırpma sonu"))->property("value").toDouble(), 10);
    press(Qt::Key_Escape);
    EXPECT_TRUE(navigation->hasSelected());
    EXPECT_TRUE(item(QStringLiteral("FPS: —")));
    click(QStringLiteral("Kırp"));
    click(QStringLiteral("Vazgeç"));
    EXPECT_TRUE(item(QStringLiteral("FPS: —")));
}

TEST_F(ClipPageTest, TrimSavesTheChosenRangeAndOpensIt)
{
    open(Titled);
    QStringList operations;
    onExport = [&](const QString& operation, const QString& clip) {
        operations.append(operation);
        const auto copy = QString(clip).replace(QStringLiteral(".mp4"), QStringLiteral(" (kırpılmış).mp4"));
        QFile::copy(clip, copy);
        return copy;
    };
    click(QStringLiteral("Kırp"));
    item(QStringLiteral("Kırpma başlangıcı"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Right, Qt::ShiftModifier);
    click(QStringLiteral("Kırpılmış kopyayı kaydet"));
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return navigation->selectedPath().endsWith(QStringLiteral("(kırpılmış).mp4")); }));
    EXPECT_EQ(operations, QStringList(QStringLiteral("trim 1 10")));
    EXPECT_EQ(toast(), QStringLiteral("Kırpılmış klip kaydedildi"));
    drawFrame();
    EXPECT_TRUE(shows(QStringLiteral("Best of all (kırpılmış)")));
}

TEST_F(ClipPageTest, BusyPageDisablesItsActionsButNotTheDragTile)
{
    settings.setDiscordLimitMB(0);
    QFile file(pathOf(Titled));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
    file.close();
    open(Titled);
    test::Gate gate;
    onExport = [&](const QString& operation, const QString& clip) {
        EXPECT_EQ(operation, QStringLiteral("9x16 blur"));
        gate.pass();
        return clip;
    };
    click(QStringLiteral("Yeni oranla dışa aktar"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Dışa aktarılıyor…")); }));
    EXPECT_EQ(item(QStringLiteral("Dışa aktarılıyor…"))->property("value").toDouble(), 0.5);
    for (const auto* name : {"Yeni oranla dışa aktar", "Discord için küçült (0 MB)", "Dosyayı Kopyala", "Kırp",
                             "Klasörde Göster", "Çöp Kutusuna Taşı"}) {
        EXPECT_FALSE(isEnabled(name)) << name;
    }
    const auto tile = test::middleOf(item(QStringLiteral("Discord'a sürükle bırak")));
    QTest::mousePress(window, Qt::LeftButton, {}, tile);
    QTest::mouseMove(window, tile + QPoint(10, 10));
    QTest::mouseMove(window, tile + QPoint(40, 40));
    QTest::mouseRelease(window, Qt::LeftButton, {}, tile + QPoint(40, 40));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !requestedActions.isEmpty(); }));
    EXPECT_EQ(requestedActions, QStringList(QStringLiteral("drag ") + pathOf(Titled)));
    gate.open();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isEnabled("Kırp"); }));
    EXPECT_EQ(test::itemNamed(window, QStringLiteral("Dışa aktarılıyor…")), nullptr);
}

TEST_F(ClipPageTest, ShrunkCopyTakesThePlaceOfTheClip)
{
    QFile file(pathOf(Titled));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
    file.close();
    settings.setDiscordLimitMB(0);
    const auto copy = pathOf("Dota 2 - Best of all (Discord).mp4");
    onExport = [&](const QString&, const QString&) {
        QFile made(copy);
        EXPECT_TRUE(made.open(QIODevice::WriteOnly) && made.write("y") == 1);
        return copy;
    };
    open(Titled);
    EXPECT_TRUE(shows(QStringLiteral("Discord'a sürükle bırak")));
    click(QStringLiteral("Discord için küçült (0 MB)"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Discord sürümü hazır")); }));
    EXPECT_EQ(test::itemNamed(window, QStringLiteral("Discord için küçült (0 MB)")), nullptr);
    EXPECT_TRUE(shows(Clip(copy).sizeText() + QStringLiteral(" • sürükleyip bırakın")));
    click(QStringLiteral("Dosyayı Kopyala"));
    EXPECT_EQ(pasteboard.file, copy);
    EXPECT_EQ(navigation->selectedPath(), pathOf(Titled));
    open(Automatic);
    open(Titled);
    EXPECT_TRUE(shows(QStringLiteral("Discord'a sürükle bırak")));
}

TEST_F(ClipPageTest, RenameStartsWithTheTitleThatTheUserGave)
{
    open(Automatic);
    click(QStringLiteral("Yeniden adlandır"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return focusedName() == QStringLiteral("Klip adı"); }));
    EXPECT_EQ(window->activeFocusItem()->property("text").toString(), Clip(pathOf(Automatic)).title);
    press(Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([&] { return focusedName() != QStringLiteral("Klip adı"); }));
    makeClips({"Dota 2 - 2026-03-02 20.15.07.mp4"});
    open("Dota 2 - 2026-03-02 20.15.07.mp4");
    click(QStringLiteral("Yeniden adlandır"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return focusedName() == QStringLiteral("Klip adı"); }));
    EXPECT_EQ(window->activeFocusItem()->property("text").toString(), QString());
}

TEST_F(ClipPageTest, RenamedClipIsOpenedUnderItsNewName)
{
    open(Automatic);
    click(QStringLiteral("Yeniden adlandır"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return focusedName() == QStringLiteral("Klip adı"); }));
    QTest::keySequence(window, QKeySequence(QStringLiteral("Ctrl+A")));
    for (const auto letter : {'N', 'e', 'w'}) {
        QTest::keyClick(window, letter);
    }
    press(Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([&] { return navigation->selectedPath() == pathOf("Dota 2 - New.mp4"); }));
    drawFrame();
    EXPECT_TRUE(shows(QStringLiteral("New")));
    EXPECT_EQ(test::itemNamed(window, QStringLiteral("Efsane 95")), nullptr);
    EXPECT_EQ(player->takeCalls().first(), QStringLiteral("open ") + pathOf("Dota 2 - New.mp4"));
}

TEST_F(ClipPageTest, TakenNameChangesNothing)
{
    open(Automatic);
    click(QStringLiteral("Yeniden adlandır"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return focusedName() == QStringLiteral("Klip adı"); }));
    window->activeFocusItem()->setProperty("text", QStringLiteral("Best of all"));
    click(QStringLiteral("Kaydet"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return toast() == QStringLiteral("Yeniden adlandırılamadı"); }));
    EXPECT_EQ(navigation->selectedPath(), pathOf(Automatic));
    EXPECT_TRUE(QFile::exists(pathOf(Automatic)));
    EXPECT_EQ(test::itemNamed(window, QStringLiteral("Klip adı")), nullptr);
}

TEST_F(ClipPageTest, DeletedClipGoesToTheTrashAndItsPageCloses)
{
    open(Titled);
    click(QStringLiteral("Çöp Kutusuna Taşı"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Klip çöp kutusuna taşınsın mı?")); }));
    press(Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !shows(QStringLiteral("Klip çöp kutusuna taşınsın mı?")); }));
    EXPECT_TRUE(navigation->hasSelected());
    click(QStringLiteral("Çöp Kutusuna Taşı"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Klip çöp kutusuna taşınsın mı?")); }));
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !navigation->hasSelected(); }));
    EXPECT_FALSE(QFile::exists(pathOf(Titled)));
}

TEST_F(ClipPageTest, ClipAtTheLimitIsNotOfferedToBeShrunk)
{
    QFile file(pathOf(Titled));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(1'000'000));
    settings.setDiscordLimitMB(1);
    open(Titled);
    EXPECT_EQ(test::itemNamed(window, QStringLiteral("Discord için küçült (1 MB)")), nullptr);
    ASSERT_TRUE(file.resize(1'000'001));
    open(Automatic);
    open(Titled);
    EXPECT_TRUE(item(QStringLiteral("Discord için küçült (1 MB)")));
}

TEST_F(ClipPageTest, TabGoesFromThePlayerToItsNeighbours)
{
    open(Titled);
    EXPECT_EQ(focusedName(), QStringLiteral("Klip oynatıcı"));
    press(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), QStringLiteral("Konum"));
    open(Automatic);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focusedName(), QStringLiteral("Yeniden adlandır"));
}

TEST_F(ClipPageTest, PlayerGetsTheKeyboardWhenTheFocusedControlIsHiddenOrDisabled)
{
    open(Titled);
    test::Gate gate;
    onExport = [&](const QString&, const QString& clip) {
        gate.pass();
        return clip;
    };
    struct Step {
        const char* prepare;
        const char* focused;
        Qt::Key key;
    };
    for (const auto& step : {Step{"Kırp", "Vazgeç", Qt::Key_Space}, Step{"Kırp", "Kırpma sonu", Qt::Key_Escape},
                             Step{nullptr, "Yeni oranla dışa aktar", Qt::Key_Space}}) {
        if (step.prepare != nullptr) {
            click(QString::fromUtf8(step.prepare));
        }
        item(QString::fromUtf8(step.focused))->forceActiveFocus(Qt::TabFocusReason);
        press(step.key);
        EXPECT_TRUE(QTest::qWaitFor([&] { return focusedName() == QStringLiteral("Klip oynatıcı"); }))
            << step.focused << ": " << focusedName().toStdString();
        player->takeCalls();
        press(Qt::Key_Space);
        EXPECT_EQ(player->takeCalls().size(), 1) << step.focused;
    }
    gate.open();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isEnabled("Kırp"); }));
}

TEST_F(ClipPageTest, TabShowsEachControlInAnyWindow)
{
    for (const auto size : {QSize(1240, 780), QSize(1020, 640), QSize(683, 384)}) {
        window->setMinimumSize({});
        window->resize(size);
        open(Automatic);
        drawFrame();
        QStringList names;
        while (names.count(focusedName()) < 2 && names.size() < 80) {
            press(Qt::Key_Tab);
            drawFrame();
            names.append(focusedName());
            const auto* focused = window->activeFocusItem();
            const auto place = focused->mapRectToScene({0, 0, focused->width(), focused->height()});
            EXPECT_TRUE(QRectF(0, 0, size.width(), size.height()).contains(place.center()))
                << names.last().toStdString() << " at " << place.y();
        }
        for (const auto* name : {"Kütüphane", "Yeniden adlandır", "Konum", "Duraklat", "Tam ekran", "Dosyayı Kopyala",
                                 "9:16", "Yeni oranla dışa aktar", "Kırp", "Klasörde Göster", "Çöp Kutusuna Taşı"}) {
            EXPECT_TRUE(names.contains(QString::fromUtf8(name)))
                << name << " not in " << names.join(u'|').toStdString();
        }
    }
}

TEST_F(ClipPageTest, ChangeOfLanguageKeepsTheClipOpen)
{
    open(Titled);
    settings.setLanguage(QStringLiteral("de"));
    L10n::use(QStringLiteral("de"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Dauer")); }));
    EXPECT_EQ(navigation->selectedPath(), pathOf(Titled));
}

} // namespace
} // namespace quelto
