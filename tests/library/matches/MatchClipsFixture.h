// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/matches/MatchClips.h"
#include "tests/base/tasks/ManualQueue.h"
#include "tests/library/clips/LibraryFixture.h"

namespace quelto::test {

/// A library with a tracker of matches and their clips, on manual queues.
class MatchClipsFixture : public LibraryFixture {
protected:
    MatchClipsFixture() { settle(); }

    /// Runs the tasks of all queues until there are none.
    void settle()
    {
        for (int i = 0; i < 5; ++i) {
            QCoreApplication::processEvents();
            libraryTime.settle();
            matchTime.settle();
            lookUpTime.settle();
            time.settle();
        }
    }

    /// Plays a match with these clips to its end.
    QUuid playMatch(const QStringList& paths)
    {
        tracker.gameStarted(game, QStringLiteral("Ahri"));
        for (const auto& each : paths) {
            tracker.clipSaved(each);
        }
        tracker.gameEnded(game);
        time.advance(std::chrono::seconds(10));
        settle();
        return tracker.sessions().first().id;
    }

    QStringList pathsOf(const QUuid& match) const
    {
        QStringList paths;
        for (const auto& clip : clips.clipsOf(match)) {
            paths.append(clip.path);
        }
        return paths;
    }

    const QString game = QStringLiteral("League of Legends");
    ManualTime time;
    ManualQueue main{time};
    ManualTime matchTime;
    ManualQueue matchWork{matchTime};
    ManualTime lookUpTime;
    ManualQueue lookUpWork{lookUpTime};
    MatchTracker tracker{MatchTracker::Dependencies{.library = library,
                                                    .main = main,
                                                    .work = matchWork,
                                                    .store = MatchStore(folder.filePath(QStringLiteral("m.json")))}};
    MatchClips clips{{.tracker = tracker, .library = library, .main = main, .work = lookUpWork}};
};

} // namespace quelto::test
