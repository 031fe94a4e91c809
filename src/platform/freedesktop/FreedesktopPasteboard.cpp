// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/FreedesktopPasteboard.h"

#include "platform/FileMimeData.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

namespace quelto {

void FreedesktopPasteboard::setFile(const QString& path)
{
    QGuiApplication::clipboard()->setMimeData(fileMimeData(path).release());
}

void FreedesktopPasteboard::setImage(const QImage& image)
{
    QGuiApplication::clipboard()->setImage(image);
}

void FreedesktopPasteboard::setText(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace quelto
