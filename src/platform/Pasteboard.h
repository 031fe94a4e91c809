// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QImage;

namespace quelto {

/// The desktop's clipboard.
///
/// Thread: main.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Replaces the contents with the file, so that pasting into a folder or a chat inserts the file itself.
    virtual void setFile(const QString& path) = 0;
    /// Replaces the contents with the picture.
    virtual void setImage(const QImage& image) = 0;
    /// Replaces the contents with the text.
    virtual void setText(const QString& text) = 0;
};

} // namespace quelto
