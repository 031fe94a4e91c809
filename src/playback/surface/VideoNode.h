// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "playback/mpv/VideoEvents.h"

#include <QSGImageNode>
#include <QSGTransformNode>

#include <memory>

class QQuickWindow;

namespace quelto {

class MpvHandle;

/// The scene graph's part of a VideoSurface: an output of a player, and the node that shows its picture.
///
/// A transform node, because Qt's software renderer forgets the place of the item for nodes that are added below any
/// other kind of node later.
///
/// Thread: the scene graph's.
class VideoNode : public QSGTransformNode {
public:
    /// Errors: std::runtime_error if the window cannot draw the video.
    static std::unique_ptr<VideoNode> create(QQuickWindow& window, const std::shared_ptr<MpvHandle>& mpv,
                                             const VideoEvents& events);

    /// Shows the latest picture. Units: logical pixels.
    void update(const QRectF& rect);
    /// Takes the latest picture without showing it: libmpv waits until its pictures are taken.
    void skip(const QRectF& rect);
    /// Shows nothing, and after that only pictures that are drawn from now on.
    void discard();

protected:
    explicit VideoNode(QQuickWindow& window)
        : m_window(window)
    {
    }

    QQuickWindow& window() const { return m_window; }

private:
    QSize pixels(const QRectF& rect) const { return (rect.size() * m_window.effectiveDevicePixelRatio()).toSize(); }
    /// A new texture, or null to keep the present one. Units: pixels.
    virtual std::unique_ptr<QSGTexture> newTexture(QSize size) = 0;
    virtual void discardTexture() { }

    QQuickWindow& m_window;
    QSGImageNode* m_image = nullptr;
};

} // namespace quelto
