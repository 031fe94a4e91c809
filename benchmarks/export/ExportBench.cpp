// SPDX-License-Identifier: GPL-3.0-or-later
// Runs one export and prints the time in seconds, how often progress began anew, and the path of the new file.
//
//   bench_export trim CLIP START END        seconds
//   bench_export shrink CLIP MEGABYTES
//   bench_export aspect CLIP 9:16 blur      or crop
#include "base/language/L10n.h"
#include "export/errors/ExportError.h"
#include "export/operations/Exporter.h"
#include "export/operations/VideoTools.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

namespace {

using namespace quelto;

/// Nothing for arguments that are wrong.
std::optional<QString> run(const QStringList& arguments, const ExportControl& control)
{
    const auto what = arguments.value(1);
    const auto clip = arguments.value(2);
    if (what == QLatin1String("trim") && arguments.size() == 5) {
        return Exporter::trim(clip, {.start = arguments[3].toDouble(), .end = arguments[4].toDouble()}, control);
    }
    if (what == QLatin1String("shrink") && arguments.size() == 4) {
        return Exporter::compressForDiscord(clip, arguments[3].toInt(), control);
    }
    const auto aspect = aspectRatioFromRawValue(arguments.value(3));
    const auto fill = fillModeFromRawValue(arguments.value(4));
    if (what == QLatin1String("aspect") && aspect && fill) {
        return VideoTools::exportAspect(clip, *aspect, *fill, control);
    }
    return std::nullopt;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    L10n::use(QStringLiteral("en"));
    int passes = 0;
    double last = 1;
    const ExportControl control{.stop = {}, .progress = [&](double done) {
                                    passes += done < last ? 1 : 0;
                                    last = done;
                                }};
    const auto start = std::chrono::steady_clock::now();
    try {
        const auto path = run(QCoreApplication::arguments(), control);
        if (!path) {
            std::fputs("usage: bench_export trim CLIP START END | shrink CLIP MEGABYTES | aspect CLIP RATIO FILL\n",
                       stderr);
            return 64;
        }
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        std::printf("%.3f %d %s\n", seconds.count(), passes, qPrintable(*path));
        return 0;
    } catch (const ExportError& error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.message()));
        return 1;
    }
}
