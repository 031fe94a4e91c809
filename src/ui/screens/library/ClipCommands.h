// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "library/clips/ClipLibrary.h"
#include "platform/FileManager.h"
#include "platform/Pasteboard.h"
#include "ui/shared/Navigation.h"

#include <QImage>
#include <QObject>

namespace quelto {

class ThumbnailItem;

/// Scales the picture to fit a square of 200 logical pixels, for display at the pointer during a drag. Returns a null
/// image for a null picture.
///
/// Units: `scale` is the number of device pixels per logical pixel.
QImage dragPicture(const QImage& picture, qreal scale);

/// The commands on a clip that its card offers, other than opening it.
///
/// Thread: main.
class ClipCommands : public QObject {
    Q_OBJECT

public:
    struct Dependencies {
        ClipLibrary& library;
        FileManager& files;
        Pasteboard& pasteboard;
        const AppSettings& settings;
        Navigation& navigation;
        /// Runs a drag of the file to another program and returns when it has ended. A null picture leaves the drag
        /// icon to the desktop.
        std::function<void(const QString& path, const QImage& picture)> drag = dragFile;
    };

    explicit ClipCommands(Dependencies dependencies, QObject* parent = nullptr);

    /// Copies the file to the clipboard and shows a toast.
    Q_INVOKABLE void copy(const QString& path);
    Q_INVOKABLE void reveal(const QString& path);
    Q_INVOKABLE void trash(const QString& path);
    /// Opens the save folder in the file manager.
    Q_INVOKABLE void openFolder();
    /// Starts a drag of the clip that the item shows. The mouse button must be pressed. Returns immediately.
    Q_INVOKABLE void drag(quelto::ThumbnailItem* picture);

private:
    static void dragFile(const QString& path, const QImage& picture);

    Dependencies m_dependencies;
};

} // namespace quelto
