// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/operations/SourceFile.h"
#include "export/queue/ExportControl.h"
#include "media/transcode/Transcoder.h"

#include <functional>
#include <span>

namespace quelto {

/// The file that an export makes.
struct ExportTarget {
    QString folder;
    /// The file name of each attempt, from 1 on. A name that is taken leads to the next attempt.
    std::function<QString(int attempt)> name;
    enum class Existing {
        /// Stays; the next name is tried.
        keep,
        replace,
    };
    Existing existing = Existing::keep;
};

/// Runs a transcoding into a hidden file, which gets its name when it is complete. If a hardware encoder fails, starts
/// again in software. Returns the path. After an error no file is left behind.
///
/// Progress stays below 1 until the file has its name. Errors: ExportError, ExportStopped, std::bad_alloc.
QString writeExport(const TranscodeJob& job, std::span<const std::unique_ptr<SourceFile>> sources,
                    const ExportTarget& target, const ExportControl& control,
                    const OpenExportEncoder& openEncoder = openExportEncoder);

} // namespace quelto
