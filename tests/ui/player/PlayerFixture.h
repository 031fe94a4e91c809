// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/player/ClipPlayer.h"

#include "tests/base/tasks/ManualQueue.h"
#include "tests/playback/model/FakePlayer.h"
#include "tests/ui/QmlFixture.h"

namespace quelto::test {

/// The player's view with a player whose time the test moves.
class PlayerFixture : public QmlFixture {
protected:
    void SetUp() override;

    /// Shows the player with a clip of ten seconds that has these events.
    void showPlayer(const QList<ClipMeta::Event>& events = {}, QSize size = {640, 460});
    /// The visible item with that accessible name.
    QQuickItem* named(const QString& name) const;
    ClipPlayer& model() const { return *qobject_cast<ClipPlayer*>(object(QStringLiteral("model"))); }
    QQuickItem* timeline() const { return named(QStringLiteral("Konum")); }
    /// A point of the timeline. Units: seconds, and pixels from the top.
    QPoint onTimeline(double seconds, int y) const;
    void tick() { time.advance(std::chrono::milliseconds(34)); }

    ManualTime time;
    ManualQueue queue{time};
    /// All that were created, owned by their models.
    QList<FakePlayer*> players;
    /// The latest one.
    FakePlayer* player = nullptr;
};

} // namespace quelto::test
