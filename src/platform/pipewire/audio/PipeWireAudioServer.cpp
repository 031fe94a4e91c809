// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/PipeWireAudioServer.h"

#include "base/tasks/SerialQueue.h"
#include "platform/pipewire/audio/MicrophoneRule.h"
#include "platform/pipewire/audio/PipeWireAudioSource.h"
#include "platform/pipewire/audio/SystemAudioRule.h"
#include "platform/pipewire/audio/VoiceChatRule.h"

namespace quelto {

namespace {

using namespace pipewire;

constexpr std::chrono::milliseconds ListTimeout(500);

class PipeWireAudioServer final : public AudioServer {
public:
    std::unique_ptr<AudioSource> systemAudio() override
    {
        return std::make_unique<PipeWireAudioSource>(m_connection, std::make_unique<SystemAudioRule>());
    }

    std::unique_ptr<AudioSource> microphone(const QString& id) override
    {
        return std::make_unique<PipeWireAudioSource>(m_connection, std::make_unique<MicrophoneRule>(id));
    }

    std::unique_ptr<AudioSource> voiceChat() override
    {
        return std::make_unique<PipeWireAudioSource>(m_connection, std::make_unique<VoiceChatRule>());
    }

    void listMicrophones(std::function<void(QList<MicrophoneInfo>)> reply) override
    {
        m_requests.post([this, reply = std::move(reply)] { reply(microphones()); });
    }

private:
    QList<MicrophoneInfo> microphones()
    {
        if (!m_connection->waitUntilReady(ListTimeout)) {
            return {};
        }
        const PipeWireConnection::Lock lock(*m_connection);
        // The server may be gone again.
        return m_connection->isReady() ? microphonesIn(m_connection->graph()) : QList<MicrophoneInfo>();
    }

    std::shared_ptr<PipeWireConnection> m_connection = std::make_shared<PipeWireConnection>();
    SerialQueue m_requests{QStringLiteral("quelto.devices")};
};

} // namespace

std::unique_ptr<AudioServer> makePipeWireAudioServer()
{
    return std::make_unique<PipeWireAudioServer>();
}

} // namespace quelto
