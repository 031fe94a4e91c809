// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileMimeData.h"

#include "base/files/FileName.h"

namespace quelto {

QByteArray fileUri(const QString& path)
{
    return "file://" + encodeFileName(path).toPercentEncoding("/!$&'()*+,;=:@");
}

std::unique_ptr<QMimeData> fileMimeData(const QString& path)
{
    const QByteArray uri = fileUri(path);
    auto data = std::make_unique<QMimeData>();
    data->setData(QStringLiteral("text/uri-list"), uri + "\r\n");
    data->setData(QStringLiteral("x-special/gnome-copied-files"), "copy\n" + uri);
    data->setData(QStringLiteral("application/x-kde-cutselection"), "0");
    return data;
}

} // namespace quelto
