// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/DisplayChoices.h"

#include "base/language/L10n.h"

#include "tests/capture/recorder/RecorderFixture.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quelto {
namespace {

std::string textsOf(const QVariantList& choices)
{
    QStringList texts;
    for (const auto& each : choices) {
        const auto choice = each.toMap();
        texts.append(choice.value(QStringLiteral("value")).toString() + u'=' +
                     choice.value(QStringLiteral("text")).toString());
    }
    return texts.join(QStringLiteral(", ")).toStdString();
}

class DisplayChoicesTest : public testing::Test {
protected:
    DisplayChoicesTest() { L10n::use(QStringLiteral("tr")); }

    QTemporaryDir folder;
    AppSettings settings{folder.filePath(QStringLiteral("Quelto.conf"))};
    test::FakeDisplays displays;
};

TEST_F(DisplayChoicesTest, StartWithTheMainDisplay)
{
    displays.displays.append({.id = 9, .name = QStringLiteral("DELL"), .pixelSize = {2560, 1440}});
    EXPECT_EQ(textsOf(DisplayChoices(settings, displays, nullptr).choices()), "0=Ana ekran, 7=one, 9=DELL");
    displays.displays.clear();
    EXPECT_EQ(textsOf(DisplayChoices(settings, displays, nullptr).choices()), "0=Ana ekran");
}

TEST_F(DisplayChoicesTest, FollowDisplaysThatComeAndGo)
{
    const DisplayChoices choices(settings, displays, nullptr);
    QSignalSpy changes(&choices, &DisplayChoices::choicesChanged);
    displays.displays.append({.id = 9, .name = QStringLiteral("DELL"), .pixelSize = {2560, 1440}});
    Q_EMIT qGuiApp->screenAdded(QGuiApplication::primaryScreen());
    EXPECT_EQ(textsOf(choices.choices()), "0=Ana ekran, 7=one, 9=DELL");
    displays.displays.removeFirst();
    Q_EMIT qGuiApp->screenRemoved(nullptr);
    EXPECT_EQ(textsOf(choices.choices()), "0=Ana ekran, 9=DELL");
    // A change that does not concern the list.
    Q_EMIT qGuiApp->primaryScreenChanged(QGuiApplication::primaryScreen());
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(DisplayChoicesTest, KeepADisplayThatIsNotConnected)
{
    settings.setDisplayID(42);
    DisplayChoices choices(settings, displays, nullptr);
    EXPECT_EQ(choices.selected(), QVariant(42U));
    EXPECT_EQ(textsOf(choices.choices()), "0=Ana ekran, 7=one");
    choices.setSelected(7);
    EXPECT_EQ(settings.displayID(), 7U);
    QSignalSpy changes(&choices, &DisplayChoices::selectedChanged);
    settings.setDisplayID(0);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(choices.selected(), QVariant(0U));
}

TEST_F(DisplayChoicesTest, ADesktopThatChoosesIsKnown)
{
    EXPECT_FALSE(DisplayChoices(settings, displays, nullptr).areMadeByTheDesktop());
    displays.areChosen = true;
    EXPECT_TRUE(DisplayChoices(settings, displays, nullptr).areMadeByTheDesktop());
}

TEST_F(DisplayChoicesTest, TellsWhyTheDesktopDidNotAskUntilItIsAskedAgain)
{
    auto choices = std::make_unique<DisplayChoices>(settings, displays, nullptr);
    QSignalSpy changes(choices.get(), &DisplayChoices::errorChanged);
    choices->chooseAgain();
    EXPECT_EQ(choices->error(), QString());
    displays.choice.onFailed(QStringLiteral("no portal"));
    EXPECT_EQ(choices->error(), QStringLiteral("no portal"));
    choices->chooseAgain();
    EXPECT_EQ(choices->error(), QString());
    EXPECT_EQ(changes.size(), 2);
    choices.reset();
    displays.choice.onFailed(QStringLiteral("after the page was left"));
}

class NewDisplayChoiceTest : public test::RecorderFixture {
protected:
    int starts() const { return fakes.frames->starts; }
};

TEST_F(NewDisplayChoiceTest, RestartsTheRecordingWhenTheUserHasChosen)
{
    record();
    auto choices = std::make_unique<DisplayChoices>(settings, *fakes.displays, recorder.get());
    choices->chooseAgain();
    time.settle();
    EXPECT_EQ(fakes.displays->newChoices, 1);
    EXPECT_EQ(starts(), 1) << "the recording goes on while the user chooses";
    // The page may be closed meanwhile.
    choices.reset();
    fakes.displays->choice.onChosen();
    time.settle();
    EXPECT_EQ(starts(), 2);
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
}

TEST_F(NewDisplayChoiceTest, StartsNoRecording)
{
    DisplayChoices(settings, *fakes.displays, recorder.get()).chooseAgain();
    fakes.displays->choice.onChosen();
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Idle);
}

TEST_F(NewDisplayChoiceTest, RecordsAgainAfterAFailure)
{
    fakes.frames->error = QStringLiteral("cancelled");
    recorder->start();
    time.settle();
    ASSERT_EQ(recorder->stateKind(), CaptureState::Error);
    fakes.frames->error.reset();
    DisplayChoices(settings, *fakes.displays, recorder.get()).chooseAgain();
    fakes.displays->choice.onChosen();
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
}

} // namespace
} // namespace quelto
