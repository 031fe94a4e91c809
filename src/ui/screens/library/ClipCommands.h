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

class ClipPicture;

/// What goes along with the pointer: the picture made to fit a square of 200. Null for none.
///
/// Units: logical pixels; the picture has `scale` times as many.
QImage dragPicture(const QImage& picture, qreal scale);

/// What a user can do with a clip wherever a card shows it, beside opening it.
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
        /// Lets the user carry the file to another program; returns when it was dropped or not. The picture goes along
        /// as it is; without one the desktop has its own sign.
        std::function<void(const QString& path, const QImage& picture)> drag = dragFile;
    };

    explicit ClipCommands(Dependencies parts, QObject* parent = nullptr);

    /// Says so, and how to paste it.
    Q_INVOKABLE void copy(const QString& path);
    Q_INVOKABLE void reveal(const QString& path);
    Q_INVOKABLE void trash(const QString& path);
    /// Shows the folder with all clips.
    Q_INVOKABLE void openFolder();
    /// Begins to drag the clip that the picture shows; the pointer's button must be down. Returns at once.
    Q_INVOKABLE void drag(quelto::ClipPicture* picture);

private:
    static void dragFile(const QString& path, const QImage& picture);

    Dependencies m_dependencies;
};

} // namespace quelto
