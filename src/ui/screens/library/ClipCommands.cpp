// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ClipCommands.h"

#include "base/language/T.h"
#include "platform/FileMimeData.h"
#include "ui/screens/library/ThumbnailItem.h"

#include <QCoreApplication>
#include <QDrag>
#include <QPixmap>
#include <QQuickWindow>

namespace quelto {

namespace {

// Units: logical pixels.
constexpr int DragPictureSize = 200;

} // namespace

QImage dragPicture(const QImage& picture, qreal scale)
{
    if (picture.isNull()) {
        return {};
    }
    const auto size = qRound(DragPictureSize * scale);
    auto scaled = picture.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(scale);
    return scaled;
}

ClipCommands::ClipCommands(Dependencies dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(std::move(dependencies))
{
}

void ClipCommands::copy(const QString& path)
{
    m_dependencies.pasteboard.setFile(path);
    m_dependencies.navigation.showToast(TOnDesktop("Klip panoya kopyalandı — Discord'da ⌘V ile yapıştırın"));
}

void ClipCommands::reveal(const QString& path)
{
    m_dependencies.files.reveal(path);
}

void ClipCommands::trash(const QString& path)
{
    m_dependencies.library.trash(Clip(path));
}

void ClipCommands::openFolder()
{
    m_dependencies.files.openFolder(m_dependencies.settings.saveFolder());
}

void ClipCommands::drag(ThumbnailItem* picture)
{
    const auto* window = picture->window();
    const auto scale = window == nullptr ? 1 : window->effectiveDevicePixelRatio();
    // A drag runs a nested event loop; the pointer handler that started it must return first.
    QMetaObject::invokeMethod(
        this,
        [this, path = picture->path(), image = dragPicture(picture->picture(), scale)] {
            m_dependencies.drag(path, image);
        },
        Qt::QueuedConnection);
}

void ClipCommands::dragFile(const QString& path, const QImage& picture)
{
    // QDrag deletes itself. Its parent is not the card, which may show another clip before the drag ends.
    auto* drag = new QDrag(qApp);
    drag->setMimeData(fileMimeData(path).release());
    if (!picture.isNull()) {
        drag->setPixmap(QPixmap::fromImage(picture));
        drag->setHotSpot(QRectF(QPointF(), picture.deviceIndependentSize()).center().toPoint());
    }
    drag->exec(Qt::CopyAction);
}

} // namespace quelto
