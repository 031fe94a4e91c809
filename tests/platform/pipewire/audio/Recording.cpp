// SPDX-License-Identifier: GPL-3.0-or-later
#include "Recording.h"

#include <cstring>
#include <numbers>

namespace quelto::pipewire {

namespace {

/// Units: frames.
constexpr std::size_t TenthOfASecond = 4800;

std::chrono::duration<double> toDuration(double seconds)
{
    return std::chrono::duration<double>(seconds);
}

} // namespace

AudioSourceEvents Recording::events()
{
    return {
        .onBuffer =
            [this](AudioBufferPtr buffer) {
                const std::lock_guard guard(m_mutex);
                m_frames += buffer->isSilence() ? 0 : buffer->frames;
                auto& list = buffer->isSilence() ? m_silence : m_buffers;
                list.append(std::move(buffer));
                m_changed.notify_all();
            },
        .onWarning =
            [this](std::optional<QString> warning) {
                const std::lock_guard guard(m_mutex);
                m_warnings.push_back(std::move(warning));
                m_changed.notify_all();
            },
        .onApplications =
            [this](const QSet<QString>& applications) {
                const std::lock_guard guard(m_mutex);
                m_applications.push_back(applications);
            },
    };
}

// Real copies: Qt's shared ones are released without a memory order that the thread sanitizer could see.
AudioBuffers Recording::buffers() const
{
    const std::lock_guard guard(m_mutex);
    return {m_buffers.cbegin(), m_buffers.cend()};
}

AudioBuffers Recording::silence() const
{
    const std::lock_guard guard(m_mutex);
    return {m_silence.cbegin(), m_silence.cend()};
}

std::vector<std::optional<QString>> Recording::warnings() const
{
    const std::lock_guard guard(m_mutex);
    return m_warnings;
}

std::vector<QSet<QString>> Recording::applications() const
{
    const std::lock_guard guard(m_mutex);
    return m_applications;
}

void Recording::clear()
{
    const std::lock_guard guard(m_mutex);
    m_buffers.clear();
    m_silence.clear();
    m_warnings.clear();
}

bool Recording::waitForAudio(double seconds, double timeoutSeconds)
{
    std::unique_lock lock(m_mutex);
    const std::int64_t wanted = m_frames + static_cast<std::int64_t>(seconds * 48000);
    return m_changed.wait_for(lock, toDuration(timeoutSeconds), [&] { return m_frames >= wanted; });
}

bool Recording::waitForSilence(double seconds, double timeoutSeconds)
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, toDuration(timeoutSeconds), [&] {
        double total = 0;
        for (const auto& buffer : m_silence) {
            total += toSeconds(endOf(*buffer) - buffer->presentationTime);
        }
        return total >= seconds;
    });
}

bool Recording::waitForWarnings(std::size_t count, double timeoutSeconds)
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, toDuration(timeoutSeconds), [&] { return m_warnings.size() >= count; });
}

std::vector<float> channelOf(const AudioBuffers& buffers, int channel)
{
    std::vector<float> values;
    for (const AudioBufferPtr& buffer : buffers) {
        const auto stride = static_cast<std::size_t>(buffer->format.channels) * sizeof(float);
        for (int i = 0; i < buffer->frames; ++i) {
            float value = 0;
            std::memcpy(&value,
                        buffer->data.data() + static_cast<std::size_t>(i) * stride +
                            static_cast<std::size_t>(channel) * sizeof(float),
                        sizeof value);
            values.push_back(value);
        }
    }
    return values;
}

HostTime endOf(const AudioBuffer& buffer)
{
    return buffer.presentationTime + HostDuration(std::int64_t(buffer.frames) * 1'000'000'000 / 48000);
}

std::vector<HostTime> beepsIn(const AudioBuffers& buffers)
{
    std::vector<HostTime> starts;
    int silentFrames = 0;
    for (const AudioBufferPtr& buffer : buffers) {
        const std::vector<float> values = channelOf({buffer}, 0);
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (std::abs(values[i]) < 0.05F) {
                ++silentFrames;
                continue;
            }
            if (silentFrames > 4800) {
                starts.push_back(buffer->presentationTime + HostDuration(std::int64_t(i) * 1'000'000'000 / 48000));
            }
            silentFrames = 0;
        }
    }
    return starts;
}

BeepOffsets beepOffsets(const std::vector<HostTime>& recorded, const std::vector<HostTime>& played)
{
    BeepOffsets result = {.count = recorded.size()};
    for (const HostTime time : recorded) {
        double nearest = 1000;
        for (const HostTime candidate : played) {
            const double distance = toSeconds(time - candidate) * 1000;
            nearest = std::abs(distance) < std::abs(nearest) ? distance : nearest;
        }
        result.mean += nearest / static_cast<double>(recorded.size());
        result.worst = std::max(result.worst, std::abs(nearest));
    }
    return result;
}

double largestTimestampError(const AudioBuffers& buffers)
{
    double worst = 0;
    for (qsizetype i = 1; i < buffers.size(); ++i) {
        worst = std::max(worst, std::abs(toSeconds(buffers[i]->presentationTime - endOf(*buffers[i - 1]))) * 1000);
    }
    return worst;
}

double amplitudeOf(std::span<const float> values, double hertz)
{
    double cosine = 0;
    double sine = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double phase = 2 * std::numbers::pi * hertz * static_cast<double>(i) / 48000;
        cosine += std::cos(phase) * static_cast<double>(values[i]);
        sine += std::sin(phase) * static_cast<double>(values[i]);
    }
    return values.empty() ? 0 : 2 * std::hypot(cosine, sine) / static_cast<double>(values.size());
}

double steadyAmplitudeOf(std::span<const float> values, double hertz)
{
    std::vector<double> tenths;
    for (; values.size() >= TenthOfASecond; values = values.subspan(TenthOfASecond)) {
        tenths.push_back(amplitudeOf(values.first(TenthOfASecond), hertz));
    }
    if (tenths.empty()) {
        return 0;
    }
    const auto middle = tenths.begin() + static_cast<std::ptrdiff_t>(tenths.size() / 2);
    std::ranges::nth_element(tenths, middle);
    return *middle;
}

} // namespace quelto::pipewire
