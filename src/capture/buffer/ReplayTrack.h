// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>

#include <cstdint>
#include <memory>

namespace quelto {

/// One track of the replay buffer: samples in time order, oldest first.
///
/// A snapshot shares the list, and the first change after a snapshot copies it. The track remembers whether it handed
/// out the list instead of using the list's reference count, because another thread may be releasing a snapshot.
///
/// Thread: one at a time. Snapshots may be read and released on any thread.
template <typename Sample> class ReplayTrack {
public:
    using Samples = QList<std::shared_ptr<const Sample>>;

    const Samples& samples() const { return m_samples; }
    std::int64_t bytes() const { return m_bytes; }

    void append(std::shared_ptr<const Sample> sample)
    {
        keepToItself();
        m_bytes += static_cast<std::int64_t>(sample->totalSize());
        m_samples.append(std::move(sample));
    }

    void removeOldest(qsizetype count)
    {
        if (count <= 0) {
            return;
        }
        keepToItself();
        for (qsizetype i = 0; i < count; ++i) {
            m_bytes -= static_cast<std::int64_t>(m_samples.at(i)->totalSize());
        }
        m_samples.remove(0, count);
    }

    /// Copies one reference.
    Samples snapshot()
    {
        m_isShared = true;
        return m_samples;
    }

private:
    void keepToItself()
    {
        if (std::exchange(m_isShared, false)) {
            m_samples = Samples(m_samples.cbegin(), m_samples.cend());
        }
    }

    Samples m_samples;
    std::int64_t m_bytes = 0;
    bool m_isShared = false;
};

} // namespace quelto
