// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/frame/SaveFrame.h"

#include "base/files/AtomicFile.h"
#include "base/files/FileName.h"
#include "base/language/T.h"
#include "export/errors/ExportError.h"
#include "export/operations/SourceFile.h"
#include "export/queue/ExportControl.h"
#include "export/rules/FrameName.h"
#include "media/reader/ShownFrame.h"

#include <QBuffer>

#include <system_error>

namespace quelto {

namespace {

void throwIfStopped(const std::stop_token& stop)
{
    if (stop.stop_requested()) {
        throw ExportStopped();
    }
}

QImage readFrame(const SourceFile& clip, double seconds, const std::stop_token& stop)
{
    QImage image;
    try {
        image = readShownFrame(clip.readPath(), seconds, stop);
    } catch (const std::runtime_error&) {
        // Reported like a frame that cannot be decoded.
    }
    throwIfStopped(stop);
    return image.isNull() ? throw ExportError::failed(T("okuma hatası")) : image;
}

QByteArray encodePng(const QImage& image)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? png : throw ExportError::failed(T("yazma hatası"));
}

QString publish(AtomicFile& file, const QString& clipFileName, double seconds, qsizetype maxBytes)
{
    for (int attempt = 1;; ++attempt) {
        auto name = frameFileName(clipFileName, seconds, attempt, maxBytes);
        if (file.tryPublish(name)) {
            return name;
        }
    }
}

/// Some file systems take shorter names than others. They take the clip's name, so they take one of its length.
QString publishFitting(AtomicFile& file, const QString& clipFileName, double seconds)
{
    try {
        return publish(file, clipFileName, seconds, MaxFileNameBytes);
    } catch (const std::system_error& error) {
        if (error.code() != std::errc::filename_too_long) {
            throw;
        }
    }
    return publish(file, clipFileName, seconds, encodeFileName(clipFileName).size());
}

} // namespace

SavedFrame saveFrame(const QString& clip, double seconds, const std::stop_token& stop)
{
    const SourceFile source(clip);
    auto image = readFrame(source, seconds, stop);
    const auto png = encodePng(image);
    AtomicFile file(source.folder());
    file.write(std::as_bytes(std::span(png)));
    file.flush();
    throwIfStopped(stop);
    const auto name = publishFitting(file, source.fileName(), seconds);
    return {.path = source.folder() + u'/' + name, .image = std::move(image)};
}

} // namespace quelto
