// SPDX-License-Identifier: GPL-3.0-or-later
#include "playback/surface/VideoNode.h"

#include "playback/mpv/OpenGlVideo.h"
#include "playback/mpv/SoftwareVideo.h"

#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QSGTexture>

namespace quelto {

namespace {

class SoftwareNode final : public VideoNode {
public:
    SoftwareNode(QQuickWindow& window, const std::shared_ptr<MpvHandle>& mpv, const VideoEvents& events)
        : VideoNode(window)
        , m_video(mpv, events)
    {
    }

private:
    void discardTexture() override { m_video.discard(); }

    std::unique_ptr<QSGTexture> newTexture(QSize size) override
    {
        m_video.setSize(size);
        const auto picture = m_video.picture();
        if (picture.isNull() || picture.cacheKey() == m_shown) {
            return nullptr;
        }
        m_shown = picture.cacheKey();
        return std::unique_ptr<QSGTexture>(window().createTextureFromImage(picture, QQuickWindow::TextureIsOpaque));
    }

    SoftwareVideo m_video;
    qint64 m_shown = 0;
};

class OpenGlNode final : public VideoNode {
public:
    OpenGlNode(QQuickWindow& window, const std::shared_ptr<MpvHandle>& mpv, const VideoEvents& events)
        : VideoNode(window)
        , m_video(mpv, events)
    {
    }

private:
    std::unique_ptr<QSGTexture> newTexture(QSize size) override
    {
        const auto texture = m_video.draw(size);
        return std::unique_ptr<QSGTexture>(QNativeInterface::QSGOpenGLTexture::fromNative(texture, &window(), size));
    }

    OpenGlVideo m_video;
};

} // namespace

std::unique_ptr<VideoNode> VideoNode::create(QQuickWindow& window, const std::shared_ptr<MpvHandle>& mpv,
                                             const VideoEvents& events)
{
    if (window.rendererInterface()->graphicsApi() == QSGRendererInterface::OpenGL) {
        return std::make_unique<OpenGlNode>(window, mpv, events);
    }
    return std::make_unique<SoftwareNode>(window, mpv, events);
}

void VideoNode::update(const QRectF& rect)
{
    const auto size = pixels(rect);
    if (size.isEmpty()) {
        return;
    }
    if (auto texture = newTexture(size)) {
        const bool isFirst = m_image == nullptr;
        if (isFirst) {
            m_image = m_window.createImageNode();
            m_image->setOwnsTexture(true);
            m_image->setFlag(OwnedByParent);
        }
        m_image->setTexture(texture.release());
        m_image->setRect(rect);
        if (isFirst) {
            // The software renderer accepts only complete nodes.
            appendChildNode(m_image);
        }
    } else if (m_image != nullptr && m_image->rect() != rect) {
        m_image->setRect(rect);
    }
}

void VideoNode::discard()
{
    delete std::exchange(m_image, nullptr);
    discardTexture();
}

void VideoNode::skip(const QRectF& rect)
{
    if (const auto size = pixels(rect); !size.isEmpty()) {
        newTexture(size);
    }
}

} // namespace quelto
