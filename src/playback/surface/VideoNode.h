// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSGImageNode>

#include <functional>
#include <memory>

class QQuickWindow;

namespace quelto {

class MpvHandle;

/// The scene graph's part of a VideoSurface: an output of a player, and the node that shows its picture.
///
/// Thread: the scene graph's.
class VideoNode : public QSGNode {
public:
    /// Calls the function on any thread when there is a new picture. Errors: std::runtime_error if the player already
    /// has an output.
    static std::unique_ptr<VideoNode> create(QQuickWindow& window, const std::shared_ptr<MpvHandle>& mpv,
                                             const std::function<void()>& onPicture);

    /// Shows the latest picture. Units: logical pixels.
    void update(const QRectF& rect);

protected:
    explicit VideoNode(QQuickWindow& window)
        : m_window(window)
    {
    }

    QQuickWindow& window() const { return m_window; }

private:
    /// A new texture, or null to keep the present one. Units: pixels.
    virtual std::unique_ptr<QSGTexture> newTexture(QSize size) = 0;

    QQuickWindow& m_window;
    QSGImageNode* m_image = nullptr;
};

} // namespace quelto
