// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ThumbnailItem.h"

#include "ui/screens/library/LibraryForQml.h"

#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>
#include <QSGImageNode>

namespace quelto {

QImage coveringPicture(const QImage& picture, QSize size, qreal radius)
{
    if (picture.isNull() || size.isEmpty()) {
        return {};
    }
    const auto covering = picture.size().scaled(size, Qt::KeepAspectRatioByExpanding);
    const auto scaled = picture.scaled(covering, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QPoint corner((covering.width() - size.width()) / 2, (covering.height() - size.height()) / 2);
    if (radius <= 0) {
        return scaled.copy(QRect(corner, size)).convertToFormat(QImage::Format_RGB32);
    }
    QImage rounded(size, QImage::Format_ARGB32_Premultiplied);
    rounded.fill(Qt::transparent);
    QPainterPath shape;
    // The shape is taller than the picture, so that its lower round corners are cut off.
    shape.addRoundedRect(QRectF(0, 0, size.width(), size.height() + 2 * radius), radius, radius);
    QPainter painter(&rounded);
    painter.setRenderHint(QPainter::Antialiasing);
    QBrush brush(scaled);
    brush.setTransform(QTransform::fromTranslate(-corner.x(), -corner.y()));
    painter.fillPath(shape, brush);
    return rounded;
}

ThumbnailItem::ThumbnailItem(QQuickItem* parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void ThumbnailItem::setPath(const QString& path)
{
    if (m_path == path) {
        return;
    }
    m_path = path;
    m_requestedVersion.reset();
    setThumbnail({}, {});
    m_ticket = {};
    requestThumbnail();
    Q_EMIT pathChanged();
}

void ThumbnailItem::setVersion(int version)
{
    if (m_version != version) {
        m_version = version;
        requestAgainIfChanged();
        Q_EMIT versionChanged();
    }
}

void ThumbnailItem::setCacheOnly(bool isCacheOnly)
{
    if (m_isCacheOnly != isCacheOnly) {
        m_isCacheOnly = isCacheOnly;
        requestThumbnail();
        Q_EMIT cacheOnlyChanged();
    }
}

void ThumbnailItem::setRadius(qreal radius)
{
    if (m_radius != radius) {
        m_radius = radius;
        invalidateTexture();
        Q_EMIT radiusChanged();
    }
}

QString ThumbnailItem::durationText() const
{
    return m_info.duration > 0 ? m_info.durationText() : QString();
}

void ThumbnailItem::requestThumbnail()
{
    auto* const cache = ThumbnailsForQml::instance;
    if (m_path.isEmpty() || m_requestedVersion || cache == nullptr) {
        return;
    }
    if (m_isCacheOnly) {
        setThumbnail(cache->cachedImage(m_path), cache->cachedInfo(m_path).value_or(ClipInfo{}));
        return;
    }
    m_requestedVersion = m_version;
    m_isRequestDone = false;
    // Destroying the ticket cancels the callback, so `this` outlives it.
    m_ticket = cache->load(m_path, [this](const QImage& picture, const ClipInfo& info) {
        m_isRequestDone = true;
        setThumbnail(picture, info);
        requestAgainIfChanged();
    });
}

void ThumbnailItem::requestAgainIfChanged()
{
    // A change during a read takes effect after it: the reader may have missed the change.
    if (m_requestedVersion && m_requestedVersion != m_version && m_isRequestDone && !hasPicture()) {
        m_requestedVersion.reset();
        requestThumbnail();
    }
}

void ThumbnailItem::setThumbnail(const QImage& picture, const ClipInfo& info)
{
    if (m_picture.cacheKey() == picture.cacheKey() && m_info == info) {
        return;
    }
    m_picture = picture;
    m_info = info;
    invalidateTexture();
    Q_EMIT loaded();
}

void ThumbnailItem::invalidateTexture()
{
    m_isTextureOutdated = true;
    update();
}

void ThumbnailItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        invalidateTexture();
    }
}

void ThumbnailItem::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) {
        invalidateTexture();
    }
}

QSGNode* ThumbnailItem::updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* /*data*/)
{
    if (m_picture.isNull() || width() <= 0 || height() <= 0) {
        delete oldNode;
        return nullptr;
    }
    auto* node = static_cast<QSGImageNode*>(oldNode);
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
        m_isTextureOutdated = true;
    }
    if (m_isTextureOutdated) {
        m_isTextureOutdated = false;
        const auto scale = window()->effectiveDevicePixelRatio();
        const auto image = coveringPicture(m_picture, (size() * scale).toSize(), m_radius * scale);
        node->setTexture(window()->createTextureFromImage(image));
        node->setRect(boundingRect());
    }
    return node;
}

} // namespace quelto
