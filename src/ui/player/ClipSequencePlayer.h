// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/player/ClipPlayer.h"

namespace quelto {

/// Plays one clip after the other without a gap: while one plays, a second player opens the clip that follows. The
/// speed and the volume that the user chose apply to both.
///
/// Thread: main. Nothing blocks.
class ClipSequencePlayer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The player of the clip on screen.
    Q_PROPERTY(quelto::ClipPlayer* current READ current NOTIFY currentChanged)
    /// All ClipPlayers. Each needs a surface of its own. The second one comes when the first clip is opened ahead.
    Q_PROPERTY(QVariantList players READ playersForQml NOTIFY playersChanged)
    /// The clip to open ahead; empty for none. It is opened after the first picture of the current one is on screen, so
    /// that it does not delay that. A current clip that cannot be played opens none ahead.
    Q_PROPERTY(QString following READ following WRITE setFollowing NOTIFY followingChanged)

public:
    explicit ClipSequencePlayer(QObject* parent = nullptr);

    ClipPlayer* current() const { return m_current; }
    const QList<ClipPlayer*>& players() const { return m_players; }
    QVariantList playersForQml() const;
    const QString& following() const { return m_following; }
    void setFollowing(const QString& path);

    /// Plays the clip from its start: at once if it was opened ahead.
    Q_INVOKABLE void show(const QString& path);
    /// Closes all files.
    Q_INVOKABLE void stop();

Q_SIGNALS:
    void currentChanged();
    void playersChanged();
    void followingChanged();

private:
    ClipPlayer* addPlayer();
    bool isOpenAhead(const QString& path) const;
    /// Null before the first clip is opened ahead.
    ClipPlayer* other() const;
    void openFollowing();
    void scheduleOpening();

    QList<ClipPlayer*> m_players;
    ClipPlayer* m_current;
    QString m_path;
    QString m_following;
    /// The clip that the other player has opened ahead.
    QString m_opened;
    bool m_isOpeningScheduled = false;
};

} // namespace quelto
