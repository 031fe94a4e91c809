// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tray/StatusItem.h"

#include "base/language/L10n.h"
#include "base/language/T.h"

#include "tests/capture/recorder/RecorderFixture.h"

#include <QAction>
#include <QDir>

namespace quelto {
namespace {

class StatusItemTest : public test::RecorderFixture {
protected:
    void SetUp() override
    {
        RecorderFixture::SetUp();
        const auto ask = [this](const char* what) { return [this, what] { asked.append(QLatin1String(what)); }; };
        item = std::make_unique<StatusItem>(
            StatusItem::Dependencies{.recorder = *recorder, .settings = settings, .hotKeys = hotKeys},
            ShellCommands{.showWindow = ask("showWindow"),
                          .showSettings = ask("showSettings"),
                          .openFolder = ask("openFolder"),
                          .quit = ask("quit")});
    }

    void TearDown() override { item.reset(); }

    /// The menu's entries when it opens; a separator is "-".
    QStringList rows() const
    {
        Q_EMIT menu().aboutToShow();
        QStringList texts;
        for (const auto* action : menu().actions()) {
            texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        }
        return texts;
    }

    QAction& row(int index) const
    {
        Q_EMIT menu().aboutToShow();
        return *menu().actions().at(index);
    }

    QMenu& menu() const { return item->menu(); }

    test::FakeGlobalKey key;
    HotKeyManager hotKeys{settings, key};
    std::unique_ptr<StatusItem> item;
    QStringList asked;
};

TEST_F(StatusItemTest, HasItsEntriesInOrder)
{
    const QStringList expected{QStringLiteral("Kayıt kapalı"),
                               QStringLiteral("-"),
                               QStringLiteral("Klip Kaydet (Alt+Shift+C)"),
                               QStringLiteral("Kaydı Başlat"),
                               QStringLiteral("-"),
                               QStringLiteral("Quelto'yi Aç"),
                               QStringLiteral("Klip Klasörünü Aç"),
                               QStringLiteral("Ayarlar…"),
                               QStringLiteral("-"),
                               QStringLiteral("Çıkış")};
    EXPECT_EQ(rows(), expected);
}

TEST_F(StatusItemTest, NamesTheKeysThatSaveAClip)
{
    key.bind(QStringLiteral("Ctrl+F9"));
    EXPECT_EQ(rows().at(2), QStringLiteral("Klip Kaydet (Ctrl+F9)"));
    key.setState(GlobalKey::State::ReservedByDesktop);
    EXPECT_EQ(rows().at(2), QStringLiteral("Klip Kaydet"));
}

TEST_F(StatusItemTest, ShowsTheStateAndOffersToSaveOnlyWhileActive)
{
    EXPECT_FALSE(row(0).isEnabled());
    EXPECT_FALSE(row(2).isEnabled());

    recorder->start();
    EXPECT_EQ(rows().at(0), QStringLiteral("Başlatılıyor…"));
    EXPECT_TRUE(row(2).isEnabled());
    EXPECT_EQ(rows().at(3), QStringLiteral("Kaydı Durdur"));

    time.settle();
    EXPECT_EQ(rows().at(0), QStringLiteral("● Kayıtta — son 30 sn"));
    EXPECT_TRUE(row(2).isEnabled());

    fakes.frames->events.onStopped(QStringLiteral("unplugged"));
    time.settle();
    EXPECT_EQ(rows().at(0), QStringLiteral("Hata — izinleri kontrol edin"));
    EXPECT_FALSE(row(2).isEnabled());
    EXPECT_EQ(rows().at(3), QStringLiteral("Kaydı Başlat"));
}

TEST_F(StatusItemTest, RunsTheCommandOfEachEntry)
{
    row(3).trigger();
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
    row(2).trigger();
    EXPECT_TRUE(recorder->isSaving());
    for (const int index : {5, 6, 7, 9}) {
        row(index).trigger();
    }
    const QStringList expected{QStringLiteral("showWindow"), QStringLiteral("openFolder"),
                               QStringLiteral("showSettings"), QStringLiteral("quit")};
    EXPECT_EQ(asked, expected);
}

TEST_F(StatusItemTest, IconIsFilledOnlyWhileRecording)
{
    QObject::connect(recorder.get(), &Recorder::stateChanged, item.get(), &StatusItem::updateIcon);
    const auto drawn = [this](int side) { return item->icon().pixmap(side, side).toImage(); };
    // The share of the icon that is painted, and whether its middle is.
    const auto isFilled = [](const QImage& icon) {
        double ink = 0;
        for (int y = 0; y < icon.height(); ++y) {
            for (int x = 0; x < icon.width(); ++x) {
                ink += qAlpha(icon.pixel(x, y)) / 255.0;
            }
        }
        return std::pair(qAlpha(icon.pixel(icon.width() / 2, icon.height() / 2)) > 127,
                         ink / (icon.width() * icon.height()));
    };
    for (const int side : {16, 22, 48}) {
        const auto [isIdleFilled, idleInk] = isFilled(drawn(side));
        record();
        const auto [isRecordingFilled, recordingInk] = isFilled(drawn(side));
        EXPECT_FALSE(isIdleFilled) << side;
        EXPECT_TRUE(isRecordingFilled) << side;
        EXPECT_GT(recordingInk, 1.3 * idleInk) << side;
        drawn(side).save(
            QDir(QStringLiteral(QUELTO_PICTURES)).filePath(QStringLiteral("tray-recording-%1.png").arg(side)));
        recorder->stop();
        time.settle();
        drawn(side).save(QDir(QStringLiteral(QUELTO_PICTURES)).filePath(QStringLiteral("tray-idle-%1.png").arg(side)));
    }
    fakes.frames->error = QStringLiteral("gone");
    recorder->start();
    time.settle();
    ASSERT_EQ(recorder->stateKind(), CaptureState::Error);
    drawn(22).save(QDir(QStringLiteral(QUELTO_PICTURES)).filePath(QStringLiteral("tray-error-22.png")));
}

TEST_F(StatusItemTest, FollowsTheLanguage)
{
    for (const auto language : AllLanguages) {
        settings.setLanguage(rawValueOf(language));
        // Without opening the menu again.
        EXPECT_EQ(menu().actions().at(0)->text(), T("Kayıt kapalı"));
        EXPECT_EQ(menu().actions().last()->text(), T("Çıkış"));
        const QDir pictures(QStringLiteral(QUELTO_PICTURES));
        pictures.mkpath(QStringLiteral("."));
        menu().adjustSize();
        menu().grab().save(pictures.filePath(QStringLiteral("language-%1-tray.png").arg(rawValueOf(language))));
    }
    L10n::use(QStringLiteral("tr"));
}

} // namespace
} // namespace quelto
