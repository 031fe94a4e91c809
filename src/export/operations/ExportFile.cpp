// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/operations/ExportFile.h"

#include "base/failures/WriteFailure.h"
#include "base/files/AtomicFile.h"
#include "base/language/T.h"
#include "export/errors/ExportError.h"
#include "library/naming/ClipName.h"
#include "media/mux/Mp4Muxer.h"

#include <QDir>

#include <system_error>

namespace quelto {

namespace {

using namespace std::chrono_literals;

/// How often the sources are compared with what they were.
constexpr HostDuration CheckInterval = 1s;

void requireUnchanged(std::span<const std::unique_ptr<SourceFile>> sources)
{
    for (const auto& source : sources) {
        source->requireUnchanged();
    }
}

class ExportRun {
public:
    ExportRun(const TranscodeJob& job, std::span<const std::unique_ptr<SourceFile>> sources, const ExportTarget& target,
              const ExportControl& control, const OpenExportEncoder& openEncoder)
        : m_job(job)
        , m_sources(sources)
        , m_target(target)
        , m_control(control)
        , m_openEncoder(openEncoder)
    {
    }

    QString run()
    {
        // Before the work.
        usableName(1);
        try {
            return tryWith(EncoderChoice::any);
        } catch (const HardwareEncoderError&) {
            return tryWith(EncoderChoice::software);
        }
    }

private:
    QString tryWith(EncoderChoice encoder)
    {
        AtomicFile file(m_target.folder);
        transcode(m_job, file,
                  {.stop = m_control.stop,
                   .progress = [this](double done) { progressed(done); },
                   .encoder = encoder,
                   .openEncoder = m_openEncoder});
        m_control.throwIfStopped();
        requireUnchanged(m_sources);
        file.flush();
        m_control.throwIfStopped();
        const auto name = publish(file);
        report(1);
        return QDir(m_target.folder).filePath(name);
    }

    QString usableName(int attempt) const
    {
        auto name = m_target.name(attempt);
        if (!hasRoomForSidecar(name)) {
            throw ExportError::failed(T("Klibin adı çok uzun. Önce yeniden adlandırın."));
        }
        return name;
    }

    QString publish(AtomicFile& file) const
    {
        if (m_target.existing == ExportTarget::Existing::replace) {
            auto name = usableName(1);
            file.publish(name);
            return name;
        }
        for (int attempt = 1;; ++attempt) {
            auto name = usableName(attempt);
            if (file.tryPublish(name)) {
                return name;
            }
        }
    }

    void progressed(double done)
    {
        const auto now = HostClock::now();
        if (now - m_lastCheck >= CheckInterval) {
            m_lastCheck = now;
            requireUnchanged(m_sources);
        }
        report(done);
    }

    /// Does not go back when the work starts again.
    void report(double done)
    {
        m_reported = std::max(m_reported, done);
        if (m_control.progress) {
            m_control.progress(m_reported);
        }
    }

    const TranscodeJob& m_job;
    std::span<const std::unique_ptr<SourceFile>> m_sources;
    const ExportTarget& m_target;
    const ExportControl& m_control;
    const OpenExportEncoder& m_openEncoder;
    HostTime m_lastCheck = HostClock::now();
    double m_reported = 0;
};

} // namespace

QString writeExport(const TranscodeJob& job, std::span<const std::unique_ptr<SourceFile>> sources,
                    const ExportTarget& target, const ExportControl& control, const OpenExportEncoder& openEncoder)
{
    try {
        return ExportRun(job, sources, target, control, openEncoder).run();
    } catch (const TranscodeStopped&) {
        throw ExportStopped();
    } catch (const std::system_error& error) {
        throw ExportError::failed(writeFailureText(error.code().value()));
    } catch (const ExportError&) {
        throw;
    } catch (const EncoderError&) {
        throw ExportError::failed(T("yazma hatası"));
    } catch (const MuxError&) {
        throw ExportError::failed(T("yazma hatası"));
    } catch (const std::runtime_error&) {
        // A source that changes while it is read fails in many ways; the change is what the user must know.
        requireUnchanged(sources);
        throw ExportError::failed(T("okuma hatası"));
    }
}

} // namespace quelto
