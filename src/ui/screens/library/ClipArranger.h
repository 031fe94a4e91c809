// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"
#include "ui/screens/library/ArrangedClips.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

namespace quelto {

/// Arranges the clips of a library whenever they or the filter change. A large library is arranged on a work queue, so
/// that typing a search never waits for it. The newest request wins: older ones that are not shown yet are dropped.
///
/// Thread: main.
class ClipArranger {
public:
    /// Up to this number, clips are arranged before the call returns, so that a new page is complete at once.
    static constexpr qsizetype MaxClipsAtOnce = 2'000;

    /// Both outlive the arranger and its tasks.
    struct Queues {
        TaskQueue& main;
        TaskQueue& work;
    };
    using OnArranged = std::function<void(const ArrangedClips& arranged)>;

    /// Without queues, clips of any number are arranged at once.
    ClipArranger(std::optional<Queues> queues, OnArranged onArranged);
    ~ClipArranger();
    ClipArranger(const ClipArranger&) = delete;
    ClipArranger& operator=(const ClipArranger&) = delete;

    /// Takes effect with the next call of arrange.
    void setClips(const QList<Clip>& clips);
    /// Calls onArranged once, within the call or from the main queue, unless a newer request follows.
    void arrange(const ClipFilter& filter);

private:
    std::optional<Queues> m_queues;
    OnArranged m_onArranged;
    /// Used by one task at a time.
    std::shared_ptr<SearchableClips> m_clips = std::make_shared<SearchableClips>();
    /// The number of the newest request. Shared with the tasks, which stop when theirs is an older one.
    std::shared_ptr<std::atomic<std::uint64_t>> m_newest = std::make_shared<std::atomic<std::uint64_t>>(0);
};

} // namespace quelto
