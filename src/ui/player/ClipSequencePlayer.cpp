// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/player/ClipSequencePlayer.h"

namespace quelto {

ClipSequencePlayer::ClipSequencePlayer(QObject* parent)
    : QObject(parent)
    , m_current(addPlayer())
{
}

QVariantList ClipSequencePlayer::playersForQml() const
{
    QVariantList list;
    for (auto* player : m_players) {
        list.append(QVariant::fromValue(player));
    }
    return list;
}

ClipPlayer* ClipSequencePlayer::addPlayer()
{
    auto* const added = new ClipPlayer(this);
    connect(&added->player(), &Player::changed, this, &ClipSequencePlayer::openFollowing);
    m_players.append(added);
    return added;
}

ClipPlayer* ClipSequencePlayer::other() const
{
    return m_players.size() < 2 ? nullptr : m_players.at(m_current == m_players.first() ? 1 : 0);
}

void ClipSequencePlayer::show(const QString& path)
{
    m_path = path;
    if (!isOpenAhead(path)) {
        m_current->load(path);
        return;
    }
    m_opened.clear();
    auto* const previous = m_current;
    m_current = other();
    m_current->setRate(previous->rate());
    m_current->setVolume(previous->volume());
    previous->pause();
    m_current->play();
    Q_EMIT currentChanged();
    openFollowing();
}

bool ClipSequencePlayer::isOpenAhead(const QString& path) const
{
    // A file that could not be played then may be complete now.
    return !m_opened.isEmpty() && path == m_opened && (other()->player().isOpening() || other()->duration() > 0);
}

void ClipSequencePlayer::setFollowing(const QString& path)
{
    if (path == m_following) {
        return;
    }
    m_following = path;
    if (m_opened.isEmpty()) {
        openFollowing();
    } else {
        scheduleOpening();
    }
    Q_EMIT followingChanged();
}

void ClipSequencePlayer::scheduleOpening()
{
    if (std::exchange(m_isOpeningScheduled, true)) {
        return;
    }
    // Later, because a page may name the clip after the next one just before it shows the next one.
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isOpeningScheduled = false;
            openFollowing();
        },
        Qt::QueuedConnection);
}

void ClipSequencePlayer::openFollowing()
{
    const bool isCurrentOnScreen = !m_path.isEmpty() && !m_current->player().isOpening() && m_current->duration() > 0;
    if (!isCurrentOnScreen || m_isOpeningScheduled || m_following == m_opened || m_following == m_path) {
        return;
    }
    m_opened = m_following;
    if (m_opened.isEmpty()) {
        other()->stop();
        return;
    }
    if (other() == nullptr) {
        addPlayer();
        Q_EMIT playersChanged();
    }
    other()->prepare(m_opened);
}

void ClipSequencePlayer::stop()
{
    m_path.clear();
    m_opened.clear();
    for (auto* player : m_players) {
        player->stop();
    }
}

} // namespace quelto
