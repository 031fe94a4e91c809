// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/surface/VideoSurface.h"

#include "playback/mpv/MpvPlayer.h"
#include "playback/surface/ItemTasks.h"
#include "playback/surface/VideoNode.h"

#include <stdexcept>

namespace quelto {

VideoSurface::VideoSurface(QQuickItem* parent)
    : QQuickItem(parent)
    , m_tasks(std::make_shared<ItemTasks>(*this))
{
    setFlag(ItemHasContents);
}

VideoSurface::~VideoSurface()
{
    m_tasks->end();
    setPlayer(nullptr);
}

void VideoSurface::setPlayer(MpvPlayer* player)
{
    if (m_player) {
        m_player->setOutputLost();
    }
    disconnect(m_outdating);
    m_player = player;
    m_isPlayerNew = true;
    if (player != nullptr) {
        m_outdating = connect(player, &MpvPlayer::pictureOutdated, this, [this] {
            m_isPictureOutdated = true;
            update();
        });
    }
    update();
}

QSGNode* VideoSurface::updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* /*data*/)
{
    auto* node = static_cast<VideoNode*>(oldNode);
    if (std::exchange(m_isPlayerNew, false)) {
        delete node;
        node = nullptr;
    }
    const auto* player = m_player.data();
    if (player == nullptr) {
        delete node;
        return nullptr;
    }
    if (node == nullptr) {
        node = newNode();
    }
    if (node != nullptr) {
        showPicture(*node, *player);
    }
    return node;
}

void VideoSurface::showPicture(VideoNode& node, const MpvPlayer& player)
{
    if (std::exchange(m_isPictureOutdated, false)) {
        node.discard();
    }
    if (player.isBlank()) {
        node.skip(boundingRect());
    } else {
        node.update(boundingRect());
    }
}

VideoNode* VideoSurface::newNode()
{
    const auto onReady = [tasks = m_tasks, this, player = m_player] {
        tasks->post([this, player] {
            if (player && player == m_player) {
                player->setOutputReady();
            }
        });
    };
    const auto onPicture = [tasks = m_tasks, this] { tasks->post([this] { update(); }); };
    try {
        return VideoNode::create(*window(), m_player->handle(), {.onReady = onReady, .onPicture = onPicture}).release();
    } catch (const std::runtime_error&) {
        // The clip has sound, and the surface stays black.
        onReady();
        return nullptr;
    }
}

void VideoSurface::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    update();
}

} // namespace quelto
