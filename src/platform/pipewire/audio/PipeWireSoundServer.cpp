// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/audio/PipeWireSoundServer.h"

#include "platform/pipewire/audio/MicrophoneRule.h"
#include "platform/pipewire/audio/PipeWireSource.h"
#include "platform/pipewire/audio/SystemSoundRule.h"

namespace quelto {

namespace {

using namespace pipewire;

/// The main thread waits for the list.
constexpr std::chrono::milliseconds ListPatience(500);

class PipeWireSoundServer final : public SoundServer {
public:
    std::unique_ptr<SoundSource> systemSound() override
    {
        return std::make_unique<PipeWireSource>(m_connection, std::make_unique<SystemSoundRule>());
    }

    std::unique_ptr<SoundSource> microphone(const QString& id) override
    {
        return std::make_unique<PipeWireSource>(m_connection, std::make_unique<MicrophoneRule>(id));
    }

    QList<MicrophoneInfo> microphones() override
    {
        if (!m_connection->waitUntilReady(ListPatience)) {
            return {};
        }
        const PipeWireConnection::Lock lock(*m_connection);
        // The server may have left since.
        return m_connection->isReady() ? microphonesIn(m_connection->graph()) : QList<MicrophoneInfo>();
    }

private:
    std::shared_ptr<PipeWireConnection> m_connection = std::make_shared<PipeWireConnection>();
};

} // namespace

std::unique_ptr<SoundServer> makePipeWireSoundServer()
{
    return std::make_unique<PipeWireSoundServer>();
}

} // namespace quelto
