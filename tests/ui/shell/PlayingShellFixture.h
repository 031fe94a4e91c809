// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/BackgroundThreads.h"
#include "playback/mpv/MpvPlayer.h"
#include "ui/player/ClipPlayer.h"

#include "tests/ui/SceneryClips.h"
#include "tests/ui/shell/ShellFixture.h"

#include <clocale>

namespace quelto::test {

/// The main window with the real player and real clips.
class PlayingShellFixture : public ShellFixture {
protected:
    void SetUp() override
    {
        // The constructor of the application takes the user's.
        std::setlocale(LC_NUMERIC, "C");
        ShellFixture::SetUp();
        record();
        PlaybackForQml::instance.emplace(PlaybackForQml::Parts{
            .model = {.main = realTime, .work = [](const Task& task) { task(); }}, .createPlayer = [this] {
                return std::make_unique<MpvPlayer>(MpvPlayer::Dependencies{
                    .main = realTime, .work = [this](Task task) { threads.post(std::move(task)); }});
            }});
        addSceneryClips(settings.saveFolder());
        reloadLibrary();
    }

    /// Saves a picture, after thumbnails and animations are complete.
    void show(const QString& name)
    {
        QTest::qWait(700);
        EXPECT_FALSE(picture(name).isNull());
    }

    MainQueue realTime;
    BackgroundThreads threads{QStringLiteral("clips"), 1};
};

} // namespace quelto::test
