// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/AudioCapture.h"

#include "base/language/T.h"

namespace quelto::pipewire {

namespace {

/// A change of the default device leaves a moment without one, which is no news for the user.
constexpr int MissingDeviceMilliseconds = 500;
constexpr int RecoveryMilliseconds = 250;

} // namespace

AudioCapture::AudioCapture(PipeWireConnection& connection, const CaptureRule& rule, AudioDeliveryThread& handOver)
    : m_connection(connection)
    , m_rule(rule)
    , m_handOver(handOver)
    , m_links(rule.linkWeight())
    , m_missingDevice(connection.loop(), [this] { warn(m_rule.noDevice()); })
    , m_recovery(connection.loop(), [this] { recover(); })
{
    m_connection.addListener(this);
    if (m_connection.isReady()) {
        onGraphChanged();
    }
}

AudioCapture::~AudioCapture()
{
    m_connection.removeListener(this);
}

bool AudioCapture::hasDevice() const
{
    return m_connection.isReady() && m_rule.channels(m_connection.graph());
}

void AudioCapture::onGraphChanged()
{
    const std::optional<int> channels = m_rule.channels(m_connection.graph());
    keepStream(channels);
    keepOutputLatency();
    keepLinks();
    if (!channels) {
        if (!m_missingDevice.isArmed()) {
            m_missingDevice.arm(MissingDeviceMilliseconds);
        }
        return;
    }
    m_missingDevice.disarm();
    if (m_stream->state() == CaptureStream::State::ready) {
        warn(std::nullopt);
    }
}

void AudioCapture::onServerLost()
{
    m_missingDevice.disarm();
    m_recovery.disarm();
    m_links.clear();
    m_stream.reset();
    m_outputLatency.forget();
    m_handOver.flush();
    warn(T("Ses sunucusu PipeWire yanıt vermiyor; geri gelmesi bekleniyor."));
}

void AudioCapture::keepStream(std::optional<int> channels)
{
    // Without a device the stream waits unlinked.
    if (!channels || (m_stream && m_stream->channels() == *channels)) {
        return;
    }
    m_links.clear();
    m_stream.reset();
    const StampMeaning stamps = m_rule.heardThrough(m_connection.graph()) ? StampMeaning::heard : StampMeaning::spoken;
    m_stream = std::make_unique<CaptureStream>(
        m_connection.core(),
        CaptureStream::Settings{.nodeName = m_rule.nodeName(), .channels = *channels, .stamps = stamps}, m_handOver,
        m_outputLatency, [this] { handleStreamState(); });
    if (m_stream->state() == CaptureStream::State::broken) {
        m_recovery.arm(RecoveryMilliseconds);
    }
}

void AudioCapture::keepLinks()
{
    if (!m_stream || m_stream->state() != CaptureStream::State::ready) {
        return;
    }
    m_links.apply(m_connection.core(), m_rule.links(m_connection.graph(), m_stream->node()));
    if (m_links.hasFailures() && !m_recovery.isArmed()) {
        m_recovery.arm(RecoveryMilliseconds);
    }
}

void AudioCapture::keepOutputLatency()
{
    const Graph& graph = m_connection.graph();
    std::optional<ObjectId> port;
    if (const auto device = m_rule.heardThrough(graph)) {
        const std::vector<ObjectId> ports = graph.portsOf(*device, PortDirection::input);
        port = ports.empty() ? std::nullopt : std::optional(ports.front());
    }
    m_outputLatency.follow(m_connection.registry(), port);
}

void AudioCapture::handleStreamState()
{
    // Not at once: this runs inside one of the stream's own callbacks, and what follows may replace the stream.
    const bool isBroken = m_stream && m_stream->state() == CaptureStream::State::broken;
    m_recovery.arm(isBroken ? RecoveryMilliseconds : 0);
}

void AudioCapture::recover()
{
    if (m_stream && m_stream->state() == CaptureStream::State::broken) {
        warn(T("Ses akışı kesildi; yeniden bağlanılıyor."));
        m_links.clear();
        m_stream.reset();
    }
    m_links.forgetFailures();
    if (m_connection.isReady()) {
        onGraphChanged();
    }
}

void AudioCapture::warn(const std::optional<QString>& warning)
{
    if (warning != m_warning) {
        m_warning = warning;
        m_handOver.warn(warning);
    }
}

} // namespace quelto::pipewire
