// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QQuickItem>

#include <memory>

namespace quelto {

class ItemTasks;
class MpvPlayer;
class VideoNode;

/// Shows the pictures of a player, as large as fits, on black. Draws with OpenGL in a window that does, and with the
/// processor in any other. A player has one surface at a time. Without one its sound goes on, and its picture comes
/// back in the next one. It is transparent after the player closed its file, until the first picture of the next file
/// is there.
///
/// Thread: main.
class VideoSurface : public QQuickItem {
    Q_OBJECT

public:
    explicit VideoSurface(QQuickItem* parent = nullptr);
    ~VideoSurface() override;

    void setPlayer(MpvPlayer* player);

protected:
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    VideoNode* newNode();
    void showPicture(VideoNode& node, const MpvPlayer& player);

    const std::shared_ptr<ItemTasks> m_tasks;
    QPointer<MpvPlayer> m_player;
    QMetaObject::Connection m_outdating;
    bool m_isPlayerNew = false;
    bool m_isPictureOutdated = false;
};

} // namespace quelto
