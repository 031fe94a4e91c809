// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/thumbnails/ThumbnailCache.h"

#include <QImage>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// The picture scaled until it covers the size, what stands over cut off, with round upper corners.
///
/// Units: pixels.
QImage coveringPicture(const QImage& picture, QSize size, qreal radius);

/// Draws a clip's picture, which it asks for while it has a path. It never shows another clip's.
///
/// Thread: main; the scene graph calls updatePaintNode.
class ClipPicture : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Empty for none.
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    /// Another one when the file at the path has changed: a clip that is still being copied has no picture yet.
    Q_PROPERTY(int version READ version WRITE setVersion NOTIFY versionChanged)
    /// Nobody will look: it shows what is at hand and asks for nothing.
    Q_PROPERTY(bool isPassing READ isPassing WRITE setPassing NOTIFY passingChanged)
    /// Of the upper corners.
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(bool hasPicture READ hasPicture NOTIFY loaded)
    /// Empty while the length is not known.
    Q_PROPERTY(QString durationText READ durationText NOTIFY loaded)

public:
    explicit ClipPicture(QQuickItem* parent = nullptr);

    QString path() const { return m_path; }
    void setPath(const QString& path);
    int version() const { return m_version; }
    void setVersion(int version);
    bool isPassing() const { return m_isPassing; }
    void setPassing(bool isPassing);
    qreal radius() const { return m_radius; }
    void setRadius(qreal radius);
    bool hasPicture() const { return !m_picture.isNull(); }
    QString durationText() const;

    QImage picture() const { return m_picture; }

Q_SIGNALS:
    void pathChanged();
    void versionChanged();
    void passingChanged();
    void radiusChanged();
    void loaded();

protected:
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void ask();
    void askAgainIfChanged();
    void take(const QImage& picture, const ClipInfo& info);
    void redraw();

    QString m_path;
    QImage m_picture;
    ClipInfo m_info;
    ThumbnailCache::Ticket m_ticket;
    qreal m_radius = 0;
    int m_version = 0;
    /// Of the file that was asked for; nothing before that.
    std::optional<int> m_askedVersion;
    bool m_isAnswered = false;
    bool m_isPassing = false;
    bool m_isChanged = false;
};

} // namespace quelto
