// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

#include <stop_token>

namespace quelto {

struct SavedFrame {
    QString path;
    QImage image;
};

/// Writes the frame that a clip shows at a time as a PNG file beside the clip. The file appears when it is complete,
/// and replaces none.
///
/// Units: seconds. Thread: any; blocks for the whole time. Errors: ExportError, ExportStopped, std::system_error for
/// what cannot be written, std::bad_alloc.
SavedFrame saveFrame(const QString& clip, double seconds, const std::stop_token& stop = {});

} // namespace quelto
