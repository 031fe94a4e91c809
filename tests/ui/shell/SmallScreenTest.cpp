// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/SampleClips.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QTest>

namespace quelto {
namespace {

/// The window on a screen that has no room for its designed size.
class SmallScreenTest : public test::ShellFixture, public testing::WithParamInterface<QSize> {
protected:
    void SetUp() override
    {
        ShellFixture::SetUp();
        test::addTwelveClips(settings.saveFolder());
        reloadLibrary();
        // As WindowFrame does on such a screen.
        window->setMinimumSize({});
        window->resize(GetParam());
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->contentItem()->size() == QSizeF(GetParam()); }));
        window->requestActivate();
    }

    /// The longest contents of the card of the recorder.
    void fail()
    {
        record();
        whileWriting = [] { throw RecorderError::writer(QStringLiteral("Diskte yer kalmadı.")); };
        recorder->saveClip();
        time.advance(std::chrono::milliseconds(250));
        fakes.frames->events.onStopped(
            QStringLiteral("Ses sunucusuna (PipeWire) bağlanılamadı. PipeWire'ı başlatın: systemctl "
                           "--user start pipewire wireplumber – ya da ayarlardan sistem sesini kapatın."));
        time.settle();
        drawFrame();
    }

    /// The part of the item that no other item cuts off.
    static QRectF visiblePartOf(const QQuickItem* item)
    {
        auto part = test::placeOf(item);
        for (const auto* each = item->parentItem(); each != nullptr; each = each->parentItem()) {
            if (each->clip()) {
                part &= test::placeOf(each);
            }
        }
        return part & QRectF({}, item->window()->size());
    }
    static bool isFullyVisible(const QQuickItem* item) { return visiblePartOf(item) == test::placeOf(item); }
    /// Whether a fading edge covers a part of the item.
    bool isFaded(const QQuickItem* item) const
    {
        return test::firstVisible(window, [&](const QQuickItem* each) {
                   return QByteArray(each->metaObject()->className()).startsWith("EdgeFade_QMLTYPE") &&
                       visiblePartOf(each).intersects(test::placeOf(item));
               }) != nullptr;
    }
    void turnWheel(const QQuickItem* over, int notches) const
    {
        const QPointF at = test::middleOf(over);
        QWheelEvent event(at, window->mapToGlobal(at), {}, {0, -120 * notches}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window, &event);
    }
};

INSTANTIATE_TEST_SUITE_P(Sizes, SmallScreenTest, testing::Values(QSize{956, 480}, QSize{680, 350}),
                         [](const auto& each) { return "Width" + std::to_string(each.param.width()); });

TEST_P(SmallScreenTest, TabReachesEveryControlAndShowsIt)
{
    fail();
    QSet<const QQuickItem*> passed;
    QStringList names;
    item(QStringLiteral("Ara"))->forceActiveFocus(Qt::TabFocusReason);
    for (const auto* focused = window->activeFocusItem(); !passed.contains(focused);
         focused = window->activeFocusItem()) {
        passed.insert(focused);
        auto* const interface = QAccessible::queryAccessibleInterface(const_cast<QQuickItem*>(focused));
        ASSERT_NE(interface, nullptr);
        names.append(interface->text(QAccessible::Name));
        EXPECT_TRUE(isFullyVisible(focused)) << qPrintable(names.last());
        EXPECT_FALSE(isFaded(focused)) << qPrintable(names.last());
        QTest::keyClick(window, Qt::Key_Tab);
    }
    for (const auto* expected : {"Tüm Klipler, 12", "Maç Özetleri, 0", "Dota 2, 4", "Kaydı Başlat / Durdur",
                                 "Tekrar Dene", "Ayarlar", "Klasör"}) {
        EXPECT_TRUE(names.contains(QString::fromUtf8(expected)))
            << expected << " is not one of " << qPrintable(names.join(QStringLiteral("; ")));
    }
}

TEST_P(SmallScreenTest, WheelReachesTheEndOfTheSidebar)
{
    fail();
    EXPECT_TRUE(isFullyVisible(item(QStringLiteral("Tüm Klipler, 12"))));
    picture(QStringLiteral("small-error-%1").arg(GetParam().width()));
    EXPECT_FALSE(isFullyVisible(item(QStringLiteral("Ayarlar"))));
    turnWheel(item(QStringLiteral("Kaydı Başlat / Durdur")), 20);
    EXPECT_TRUE(QTest::qWaitFor([&] { return isFullyVisible(item(QStringLiteral("Ayarlar"))); }));
    picture(QStringLiteral("small-error-end-%1").arg(GetParam().width()));
}

TEST_P(SmallScreenTest, SidebarFitsWhileRecording)
{
    record();
    drawFrame();
    for (const auto* name : {"Tüm Klipler, 12", "Maç Özetleri, 0", "Klip Kaydet"}) {
        EXPECT_TRUE(isFullyVisible(item(QString::fromUtf8(name)))) << name;
    }
    EXPECT_EQ(isFullyVisible(item(QStringLiteral("Ayarlar"))), GetParam().height() == 480);
    picture(QStringLiteral("small-recording-%1").arg(GetParam().width()));
}

TEST_P(SmallScreenTest, ButtonsOfAReviewScrollIntoView)
{
    matches->gameStarted(QStringLiteral("League of Legends"), QStringLiteral("Ahri"));
    for (const auto& clip : library->clips()) {
        matches->clipSaved(clip.path);
    }
    matches->gameEnded(QStringLiteral("League of Legends"));
    time.advance(std::chrono::seconds(10));
    navigation->setPage({.kind = Pages::Kind::Review, .match = matches->sessions().first().id});
    drawFrame();
    time.settle();
    drawFrame();
    for (const auto* name : {"Tam ekran", "Sil", "Bitti"}) {
        item(QString::fromUtf8(name))->forceActiveFocus(Qt::TabFocusReason);
        drawFrame();
        EXPECT_TRUE(isFullyVisible(item(QString::fromUtf8(name)))) << name;
    }
    picture(QStringLiteral("small-review-%1").arg(GetParam().width()));
}

} // namespace
} // namespace quelto
