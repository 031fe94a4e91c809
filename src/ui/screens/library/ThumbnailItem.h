// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/thumbnails/ThumbnailCache.h"

#include <QImage>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// Scales the picture to cover the size, crops the excess and rounds the upper corners.
///
/// Units: pixels.
QImage coveringPicture(const QImage& picture, QSize size, qreal radius);

/// Shows the thumbnail of a clip. Requests it from the thumbnail cache when a path is set; a change of path clears the
/// old thumbnail at once.
///
/// Thread: main; the scene graph calls updatePaintNode.
class ThumbnailItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// The clip's file; empty for no clip.
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    /// Changes when the file at the path changes. Without a thumbnail so far, as for a clip that is still being copied,
    /// a new version requests it again.
    Q_PROPERTY(int version READ version WRITE setVersion NOTIFY versionChanged)
    /// While true, shows cached thumbnails and requests none. Set during fast scrolling.
    Q_PROPERTY(bool isCacheOnly READ isCacheOnly WRITE setCacheOnly NOTIFY cacheOnlyChanged)
    /// The radius of the upper corners.
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(bool hasPicture READ hasPicture NOTIFY loaded)
    /// Empty while the duration is unknown.
    Q_PROPERTY(QString durationText READ durationText NOTIFY loaded)

public:
    explicit ThumbnailItem(QQuickItem* parent = nullptr);

    QString path() const { return m_path; }
    void setPath(const QString& path);
    int version() const { return m_version; }
    void setVersion(int version);
    bool isCacheOnly() const { return m_isCacheOnly; }
    void setCacheOnly(bool isCacheOnly);
    qreal radius() const { return m_radius; }
    void setRadius(qreal radius);
    bool hasPicture() const { return !m_picture.isNull(); }
    QString durationText() const;

    QImage picture() const { return m_picture; }

Q_SIGNALS:
    void pathChanged();
    void versionChanged();
    void cacheOnlyChanged();
    void radiusChanged();
    void loaded();

protected:
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void requestThumbnail();
    void requestAgainIfChanged();
    void setThumbnail(const QImage& picture, const ClipInfo& info);
    void invalidateTexture();

    QString m_path;
    QImage m_picture;
    ClipInfo m_info;
    ThumbnailCache::Ticket m_ticket;
    qreal m_radius = 0;
    int m_version = 0;
    /// The version for which the thumbnail was requested; unset before the request.
    std::optional<int> m_requestedVersion;
    bool m_isRequestDone = false;
    bool m_isCacheOnly = false;
    bool m_isTextureOutdated = false;
};

} // namespace quelto
