// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/queue/ExportControl.h"
#include "export/rules/TimeRange.h"

#include <QString>

#include <memory>
#include <span>

namespace quelto {

class SourceFile;

/// Makes copies of a clip beside it: a part of it, or a smaller file. Neither touches the clip or writes a sidecar.
///
/// Thread: any; blocks for the whole time. Errors: ExportError, ExportStopped, std::bad_alloc. No partial file is left
/// behind then. If a later pass of a shrink fails, the file of the pass before stays.
class Exporter {
public:
    /// A copy of the time range, frame by frame and with all audio tracks. Returns its path.
    static QString trim(const QString& clip, const TimeRange& range, const ExportControl& control);

    /// A copy below an upload limit, or the clip itself if it is small enough. After three passes the copy may still
    /// be too large. Progress goes from 0 to 1 in each pass. Returns the path of the file to upload. Units: megabytes
    /// of 1,000,000 bytes.
    static QString compressForDiscord(const QString& clip, int limitMB, const ExportControl& control);

private:
    static QString encode(std::span<const std::unique_ptr<SourceFile>> sources, double targetBytes,
                          const ExportControl& control);
};

} // namespace quelto
