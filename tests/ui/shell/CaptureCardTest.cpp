// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

namespace quelto {
namespace {

using test::colorOf;
using test::fontOf;
using test::outlineOf;
using test::placeOf;
using test::radiusOf;

class CaptureCardTest : public test::ShellFixture {
protected:
    const QString save = QStringLiteral("Klip Kaydet");
    const QString statistics = QStringLiteral("Son 30 sn • 0 MB");
    const QString message = QStringLiteral("Ses sunucusu çalışmıyor.");

    void fail()
    {
        fakes.frames->error = message;
        recorder->start();
        time.settle();
        ASSERT_EQ(recorder->stateKind(), CaptureState::Error);
    }

    QQuickItem* toggle() const { return item(QStringLiteral("Kaydı Başlat / Durdur")); }
    bool readsOn() const { return toggle()->property("isOn").toBool() && toggle()->property("checked").toBool(); }
    QQuickItem* header() const { return toggle()->parentItem(); }
    QQuickItem* card() const { return test::enclosingRectangle(header()); }
    QQuickItem* dot() const
    {
        return test::firstVisibleOn(header(), [](const auto* each) { return each->inherits("QQuickRectangle"); });
    }
    QQuickItem* microphone() const { return test::symbolOn(textItem(statistics)->parentItem()); }
    QString microphoneSymbol() const { return microphone()->property("symbol").toString(); }

    /// Moves the pointer away and back, and waits for the tool tip with that text.
    bool showsToolTip(const QQuickItem* target, const QString& text)
    {
        QTest::mouseMove(window, {5, 5});
        drawFrame();
        EXPECT_FALSE(shows(text));
        QTest::mouseMove(window, test::middleOf(target));
        return QTest::qWaitFor([&] { return shows(text); });
    }

    /// The vertical distances between the lines of the card, from top to bottom.
    QList<double> gaps() const
    {
        QList<double> distances;
        std::optional<double> end;
        for (const auto* line : header()->parentItem()->childItems()) {
            if (!line->isVisible()) {
                continue;
            }
            if (end) {
                distances.append(placeOf(line).top() - *end);
            }
            end = placeOf(line).bottom();
        }
        return distances;
    }
};

TEST_F(CaptureCardTest, PanelHasDesignedMarginsAndSpacing)
{
    EXPECT_EQ(colorOf(card()), theme->panel());
    EXPECT_EQ(radiusOf(card()), 10);
    EXPECT_EQ(outlineOf(card()).width, 1);
    EXPECT_EQ(outlineOf(card()).color, theme->border());
    EXPECT_EQ(gaps(), (QList<double>{10}));
    record();
    window->grabWindow();
    EXPECT_EQ(gaps(), (QList<double>{10, 10}));
    const auto inside = placeOf(card()).adjusted(12, 12, -12, -12);
    EXPECT_EQ(placeOf(header()).topLeft(), inside.topLeft());
    const auto* track = toggle()->property("background").value<QQuickItem*>()->childItems().first();
    EXPECT_EQ(placeOf(track).right(), inside.right());
    EXPECT_EQ(placeOf(item(save)).bottomRight(), inside.bottomRight());
    EXPECT_EQ(placeOf(item(save)).left(), inside.left()) << "the button has the full width";
}

TEST_F(CaptureCardTest, SwitchMicrophoneAndButtonEndAtTheSameEdge)
{
    for (const auto& micError : {std::optional<QString>(), std::optional(QStringLiteral("Mikrofon bulunamadı."))}) {
        fakes.audioServer->micProblem = micError;
        recorder->stop();
        time.settle();
        record();
        const auto image = picture(QStringLiteral("card-right-edge"));
        const auto lastInkBeside = [&](const QQuickItem* item) {
            int last = 0;
            const auto rows = placeOf(item).toRect();
            // Up to the outline of the card.
            const auto end = placeOf(card()).toRect().right() - 1;
            for (int y = rows.top(); y <= rows.bottom(); ++y) {
                for (int x = rows.left(); x < end; ++x) {
                    const auto pixel = image.pixelColor(x, y);
                    const auto ground = theme->panel();
                    const auto difference = std::abs(pixel.red() - ground.red()) +
                        std::abs(pixel.green() - ground.green()) + std::abs(pixel.blue() - ground.blue());
                    last = difference > 60 ? std::max(last, x) : last;
                }
            }
            return last;
        };
        const auto edge = lastInkBeside(item(save));
        EXPECT_EQ(edge, qRound(placeOf(card()).right()) - 12 - 1);
        EXPECT_EQ(lastInkBeside(toggle()), edge);
        EXPECT_NEAR(lastInkBeside(microphone()), edge, 1) << microphoneSymbol().toStdString();
    }
}

TEST_F(CaptureCardTest, DotGlowsOnlyWhileRecording)
{
    EXPECT_EQ(dot()->size(), QSizeF(8, 8));
    EXPECT_EQ(radiusOf(dot()), 4);
    EXPECT_EQ(colorOf(dot()), theme->dim());
    EXPECT_EQ(test::shadowOf(dot()), nullptr);
    recorder->start();
    EXPECT_EQ(colorOf(dot()), theme->dim());
    EXPECT_EQ(test::shadowOf(dot()), nullptr) << "not while starting";
    record();
    EXPECT_EQ(colorOf(dot()), QColor(0xFF, 0x3B, 0x3B));
    const auto* glow = test::shadowOf(dot());
    ASSERT_NE(glow, nullptr);
    EXPECT_EQ(radiusOf(glow), 4);
    EXPECT_EQ(colorOf(glow), colorOf(dot()));
    EXPECT_EQ(placeOf(glow).center(), placeOf(dot()).center());
    recorder->stop();
    time.settle();
    fail();
    EXPECT_EQ(colorOf(dot()), theme->dim());
    EXPECT_EQ(test::shadowOf(dot()), nullptr) << "not in the error state";
}

TEST_F(CaptureCardTest, ShowsEachStateInItsColor)
{
    const auto expectLabel = [this](const QString& text, const QColor& color) {
        const auto* label = test::labelOn(header(), text);
        ASSERT_NE(label, nullptr) << text.toStdString();
        EXPECT_EQ(colorOf(label), color) << text.toStdString();
        EXPECT_EQ(fontOf(label).pixelSize(), 11);
        EXPECT_EQ(fontOf(label).weight(), QFont::Bold);
        EXPECT_EQ(fontOf(label).letterSpacing(), 1);
    };
    expectLabel(QStringLiteral("KAYIT KAPALI"), theme->muted());
    recorder->start();
    expectLabel(QStringLiteral("BAŞLATILIYOR"), theme->muted());
    time.settle();
    expectLabel(QStringLiteral("KAYITTA"), theme->text());
    recorder->stop();
    time.settle();
    fail();
    expectLabel(QStringLiteral("HATA"), QColor(0xFF, 0x3B, 0x3B));
}

TEST_F(CaptureCardTest, SwitchIsScaledDownAndOnWhileStarting)
{
    const auto* track = toggle()->property("background").value<QQuickItem*>()->childItems().first();
    EXPECT_NEAR(track->width(), 38 * 0.85, 0.5);
    EXPECT_NEAR(track->height(), 21 * 0.85, 0.5);
    EXPECT_FALSE(readsOn());
    recorder->start();
    ASSERT_EQ(recorder->stateKind(), CaptureState::Starting);
    EXPECT_TRUE(readsOn());
    record();
    EXPECT_TRUE(readsOn());
    recorder->stop();
    time.settle();
    EXPECT_FALSE(readsOn());
    fail();
    EXPECT_FALSE(readsOn());
}

TEST_F(CaptureCardTest, ShowsStatisticsOnlyWhileRecording)
{
    EXPECT_FALSE(shows(statistics));
    recorder->start();
    EXPECT_FALSE(shows(statistics));
    record();
    const auto* figures = textItem(statistics);
    ASSERT_NE(figures, nullptr);
    EXPECT_EQ(fontOf(figures).pixelSize(), 10);
    EXPECT_EQ(colorOf(figures), theme->muted());
    window->grabWindow();
    EXPECT_EQ(placeOf(microphone()).left() - placeOf(figures).right(), 5);
    recorder->stop();
    time.settle();
    EXPECT_FALSE(shows(statistics));
    fail();
    EXPECT_FALSE(shows(statistics));
}

TEST_F(CaptureCardTest, MicrophoneIsGreenWhileRecorded)
{
    record();
    EXPECT_EQ(microphoneSymbol(), QStringLiteral("mic.fill"));
    EXPECT_EQ(colorOf(microphone()), theme->good());
    EXPECT_TRUE(showsToolTip(microphone(), QStringLiteral("Mikrofon kaydediliyor")));
}

TEST_F(CaptureCardTest, MicrophoneIsCrossedOutWhenUnavailable)
{
    fakes.audioServer->micProblem = QStringLiteral("Mikrofon bulunamadı.");
    record();
    EXPECT_EQ(microphoneSymbol(), QStringLiteral("mic.slash.fill"));
    EXPECT_EQ(colorOf(microphone()), theme->dim());
    EXPECT_TRUE(showsToolTip(microphone(), QStringLiteral("Mikrofon kapalı")));
}

TEST_F(CaptureCardTest, ErrorTextIsSmallAndRed)
{
    EXPECT_FALSE(shows(message));
    fail();
    const auto* words = textItem(message);
    ASSERT_NE(words, nullptr);
    EXPECT_EQ(fontOf(words).pixelSize(), 10);
    EXPECT_EQ(colorOf(words), QColor(0xFF, 0x3B, 0x3B));
    fakes.frames->error.reset();
    record();
    EXPECT_FALSE(shows(message));
}

TEST_F(CaptureCardTest, SaveButtonShowsItsShortcutAsKeyCaps)
{
    record();
    auto* button = item(save);
    EXPECT_TRUE(button->property("filled").toBool());
    const auto* scissors = test::symbolOn(button);
    EXPECT_EQ(scissors->property("symbol").toString(), QStringLiteral("scissors"));
    EXPECT_EQ(placeOf(test::labelOn(button, save)).left() - placeOf(scissors).right(), 8);
    EXPECT_EQ(descriptionOf(save), QStringLiteral("Alt+Shift+C"));
    for (const auto* word : {"Alt", "Shift", "C"}) {
        const auto* key = test::labelOn(button, QLatin1String(word));
        ASSERT_NE(key, nullptr) << word;
        EXPECT_EQ(fontOf(key).pixelSize(), 11);
        EXPECT_EQ(fontOf(key).weight(), QFont::Bold);
    }
    const auto* cap = test::enclosingRectangle(test::labelOn(button, QStringLiteral("Alt")));
    EXPECT_EQ(placeOf(cap).left(), placeOf(test::labelOn(button, save)).left());
    EXPECT_EQ(cap->parentItem()->opacity(), 0.85);
}

TEST_F(CaptureCardTest, KeysAreBesideTheTextOfTheSaveButtonIfTheyFit)
{
    record();
    const auto middle = [this](const QString& text) { return placeOf(test::labelOn(item(save), text)).center().y(); };
    EXPECT_GT(middle(QStringLiteral("Shift")), middle(save) + 10) << "below it";
    const auto tall = item(save)->height();
    settings.setHotkeyModifiers(0);
    settings.setHotkeyKeyName(QStringLiteral("F9"));
    drawFrame();
    EXPECT_NEAR(middle(QStringLiteral("F9")), middle(save), 1.5);
    EXPECT_EQ(placeOf(test::enclosingRectangle(test::labelOn(item(save), QStringLiteral("F9")))).right(),
              placeOf(item(save)).right() - 16);
    picture(QStringLiteral("window-short-shortcut"));
    EXPECT_LT(item(save)->height(), tall);
}

TEST_F(CaptureCardTest, ShortcutOfManyLongKeyNamesIsWrittenInsideTheSaveButton)
{
    record();
    settings.setHotkeyModifiers(256 + 512 + 2048 + 4096);
    settings.setHotkeyKeyName(QStringLiteral("⌫"));
    drawFrame();
    const auto* line =
        test::labelOn(item(save), QStringLiteral("Ctrl+\u200BAlt+\u200BShift+\u200BSuper+\u200BBackspace"));
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->property("lineCount").toInt(), 2);
    EXPECT_LE(line->property("contentWidth").toDouble(), line->width());
    EXPECT_TRUE(placeOf(item(save)).contains(placeOf(line)));
    picture(QStringLiteral("window-long-shortcut"));
}

TEST_F(CaptureCardTest, SaveButtonHasOnlyItsTextWhereNoKeysSaveAClip)
{
    record();
    const auto height = item(save)->height();
    auto& key = static_cast<test::FakeGlobalKey&>(*fakes.platform.globalKey);
    key.setState(GlobalKey::State::ReservedByDesktop);
    drawFrame();
    EXPECT_EQ(test::labelOn(item(save), QStringLiteral("Shift")), nullptr);
    EXPECT_LT(item(save)->height(), height);
    picture(QStringLiteral("card-without-shortcut"));
    key.bind(QStringLiteral("Press the red key of the other keyboard"));
    drawFrame();
    EXPECT_EQ(truncatedTexts(), QStringList());
    picture(QStringLiteral("card-unknown-shortcut"));
}

TEST_F(CaptureCardTest, SaveButtonIsDimmedUnlessTheRecorderIsActive)
{
    EXPECT_EQ(item(save)->opacity(), 0.45);
    EXPECT_FALSE(item(save)->isEnabled());
    recorder->start();
    EXPECT_EQ(item(save)->opacity(), 1);
    EXPECT_TRUE(item(save)->isEnabled());
    record();
    EXPECT_EQ(item(save)->opacity(), 1);
    recorder->stop();
    time.settle();
    fail();
    EXPECT_EQ(item(save)->opacity(), 0.45);
    EXPECT_FALSE(item(save)->isEnabled());
}

TEST_F(CaptureCardTest, SaveButtonShowsAWhiteSpinnerWhileSaving)
{
    record();
    recorder->saveClip();
    ASSERT_TRUE(recorder->isSaving());
    auto* button = item(save);
    EXPECT_FALSE(button->isEnabled());
    EXPECT_EQ(button->opacity(), 1);
    const auto* spinner = test::symbolOn(button);
    EXPECT_EQ(spinner->property("symbol").toString(), QStringLiteral("progress"));
    EXPECT_EQ(colorOf(spinner), QColor(Qt::white));
    const auto initialRotation = spinner->rotation();
    EXPECT_TRUE(QTest::qWaitFor([&] { return spinner->rotation() != initialRotation; }));
    time.advance(std::chrono::seconds(1));
    ASSERT_FALSE(recorder->isSaving());
    EXPECT_EQ(test::symbolOn(button)->property("symbol").toString(), QStringLiteral("scissors"));
}

TEST_F(CaptureCardTest, SaveButtonIsDimmedWhileAStoppedRecorderSaves)
{
    record();
    recorder->saveClip();
    recorder->stop();
    time.settle();
    ASSERT_FALSE(recorder->isActive());
    ASSERT_TRUE(recorder->isSaving());
    EXPECT_EQ(item(save)->opacity(), 0.45);
}

} // namespace
} // namespace quelto
