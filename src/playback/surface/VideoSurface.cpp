// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/surface/VideoSurface.h"

#include "playback/mpv/MpvPlayer.h"
#include "playback/surface/Redraw.h"
#include "playback/surface/VideoNode.h"

#include <stdexcept>

namespace quelto {

VideoSurface::VideoSurface(QQuickItem* parent)
    : QQuickItem(parent)
    , m_redraw(std::make_shared<Redraw>(*this))
{
    setFlag(ItemHasContents);
}

VideoSurface::~VideoSurface()
{
    m_redraw->end();
}

void VideoSurface::setPlayer(MpvPlayer* player)
{
    m_player = player;
    m_isPlayerNew = true;
    update();
}

QSGNode* VideoSurface::updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* /*data*/)
{
    auto* node = static_cast<VideoNode*>(oldNode);
    if (std::exchange(m_isPlayerNew, false)) {
        delete node;
        node = nullptr;
    }
    if (!m_player) {
        delete node;
        return nullptr;
    }
    if (node == nullptr) {
        try {
            node =
                VideoNode::create(*window(), m_player->handle(), [redraw = m_redraw] { redraw->request(); }).release();
        } catch (const std::runtime_error&) {
            // The clip has sound, and the surface stays black.
            return nullptr;
        }
        QMetaObject::invokeMethod(m_player, &MpvPlayer::setOutputReady, Qt::QueuedConnection);
    }
    node->update(boundingRect());
    return node;
}

void VideoSurface::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    update();
}

} // namespace quelto
