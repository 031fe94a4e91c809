// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/mic/MicCapture.h"

#include "capture/mix/PeakLevel.h"

namespace quelto {

namespace {

constexpr auto LevelInterval = std::chrono::milliseconds(80);

} // namespace

MicCapture::MicCapture(AudioServer& server, Clock clock)
    : m_server(server)
    , m_clock(std::move(clock))
{
}

MicCapture::~MicCapture()
{
    stop();
}

void MicCapture::start(const QString& deviceID)
{
    stop();
    auto source = m_server.microphone(deviceID);
    source->start({.onBuffer = [this](const AudioBufferPtr& sample) { deliver(sample); },
                   .onWarning =
                       [this](const std::optional<QString>& warning) {
                           if (onWarning) {
                               onWarning(warning);
                           }
                       }});
    m_source = std::move(source);
}

void MicCapture::stop() noexcept
{
    if (m_source) {
        m_source->stop();
        m_source.reset();
    }
}

void MicCapture::deliver(const AudioBufferPtr& sample)
{
    if (!sample) {
        return;
    }
    if (onBuffer) {
        onBuffer(sample);
    }
    if (const auto now = m_clock(); now - m_lastLevelTime > LevelInterval) {
        m_lastLevelTime = now;
        if (onLevel) {
            onLevel(peakLevel(*sample));
        }
    }
}

} // namespace quelto
