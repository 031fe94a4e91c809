// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/AudioCapture.h"

#include "base/language/T.h"

namespace quelto::pipewire {

namespace {

/// Right after login, the session manager may not have chosen a default device yet.
constexpr int FirstWarningMilliseconds = 1000;
/// While the default device changes there is briefly none, and a stream needs a moment to connect. Neither is worth a
/// warning.
constexpr int MissingMilliseconds = 500;
constexpr int RecoveryMilliseconds = 250;

} // namespace

AudioCapture::AudioCapture(PipeWireConnection& connection, const AudioTargetRule& rule, AudioDeliveryThread& delivery)
    : m_connection(connection)
    , m_rule(rule)
    , m_delivery(delivery)
    , m_links(rule.linkMode())
    , m_missing(connection.loop(), [this] { warn(problem()); })
    , m_recovery(connection.loop(), [this] { recover(); })
{
    m_connection.addListener(this);
    m_missing.arm(FirstWarningMilliseconds);
    if (m_connection.isReady()) {
        onGraphChanged();
    }
}

AudioCapture::~AudioCapture()
{
    m_connection.removeListener(this);
}

void AudioCapture::onGraphChanged()
{
    const std::optional<int> channels = m_rule.channels(m_connection.graph());
    if (!channels && m_rule.missingTarget() == MissingTarget::normal) {
        m_missing.disarm();
        m_recovery.disarm();
        endStream();
        warn(std::nullopt);
        return;
    }
    updateStream(channels);
    updateOutputLatency();
    updateLinks();
    reportApplications();
    if (!channels || m_stream->state() != CaptureStream::State::ready) {
        if (!m_missing.isArmed()) {
            m_missing.arm(MissingMilliseconds);
        }
        return;
    }
    m_missing.disarm();
    warn(std::nullopt);
}

QString AudioCapture::problem() const
{
    if (!m_connection.isReady()) {
        return m_rule.noServerMessage();
    }
    return m_rule.channels(m_connection.graph()) ? T("Ses akışı kesildi; yeniden bağlanılıyor.")
                                                 : m_rule.noDeviceMessage();
}

void AudioCapture::onServerLost()
{
    m_missing.disarm();
    m_recovery.disarm();
    endStream();
    warn(T("Ses sunucusu PipeWire yanıt vermiyor; geri gelmesi bekleniyor."));
}

void AudioCapture::endStream()
{
    if (m_stream) {
        m_links.clear();
        m_stream.reset();
        m_outputLatency.reset();
        m_delivery.flush();
    }
    reportApplications();
}

void AudioCapture::updateStream(std::optional<int> channels)
{
    // Without a device the existing stream stays, unlinked.
    if (!channels || (m_stream && m_stream->channels() == *channels)) {
        return;
    }
    m_links.clear();
    m_stream.reset();
    m_stream = std::make_unique<CaptureStream>(m_connection.core(),
                                               CaptureStream::Settings{.nodeName = m_rule.nodeName(),
                                                                       .channels = *channels,
                                                                       .timestamps = m_rule.timestamps()},
                                               m_delivery, m_outputLatency, [this] { handleStreamState(); });
    if (m_stream->state() == CaptureStream::State::broken) {
        m_recovery.arm(RecoveryMilliseconds);
    }
}

void AudioCapture::updateLinks()
{
    if (!m_stream || m_stream->state() != CaptureStream::State::ready) {
        return;
    }
    m_links.apply(m_connection.core(), m_rule.links(m_connection.graph(), m_stream->node()));
    if (m_links.hasFailures() && !m_recovery.isArmed()) {
        m_recovery.arm(RecoveryMilliseconds);
    }
}

void AudioCapture::updateOutputLatency()
{
    const Graph& graph = m_connection.graph();
    std::optional<ObjectId> port;
    if (const auto device = m_rule.playbackDevice(graph)) {
        const std::vector<ObjectId> ports = graph.portsOf(*device, PortDirection::input);
        port = ports.empty() ? std::nullopt : std::optional(ports.front());
    }
    m_outputLatency.track(m_connection.registry(), port);
}

void AudioCapture::handleStreamState()
{
    // Deferred: this runs inside a callback of the stream, and recovering may replace the stream.
    const bool isBroken = m_stream && m_stream->state() == CaptureStream::State::broken;
    m_recovery.arm(isBroken ? RecoveryMilliseconds : 0);
}

void AudioCapture::recover()
{
    if (m_stream && m_stream->state() == CaptureStream::State::broken) {
        warn(T("Ses akışı kesildi; yeniden bağlanılıyor."));
        endStream();
    }
    m_links.discardFailures();
    if (m_connection.isReady()) {
        onGraphChanged();
    }
}

void AudioCapture::reportApplications()
{
    const bool isRecording = m_stream && m_stream->state() == CaptureStream::State::ready;
    const QSet<QString> applications = isRecording ? m_rule.applications(m_connection.graph()) : QSet<QString>();
    if (applications != m_applications) {
        m_applications = applications;
        m_delivery.reportApplications(applications);
    }
}

void AudioCapture::warn(const std::optional<QString>& warning)
{
    if (warning != m_warning || !m_hasReported) {
        m_hasReported = true;
        m_warning = warning;
        m_delivery.warn(warning);
    }
}

} // namespace quelto::pipewire
