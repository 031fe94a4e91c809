// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileManager.h"
#include "platform/Pasteboard.h"

#include <QImage>
#include <QStringList>

namespace quelto::test {

/// Records the paths it is asked to show.
class RecordingFileManager final : public FileManager {
public:
    void reveal(const QString& path) override { revealed.append(path); }
    void openFolder(const QString& path) override { opened.append(path); }

    QStringList revealed;
    QStringList opened;
};

/// Records the file and the picture that were copied last.
class RecordingPasteboard final : public Pasteboard {
public:
    void setFile(const QString& path) override { file = path; }
    void setImage(const QImage& picture) override { image = picture; }

    QString file;
    QImage image;
};

} // namespace quelto::test
