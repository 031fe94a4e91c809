// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/types/VideoFrame.h"

#include <algorithm>
#include <cstdlib>

namespace quelto {

namespace {

// One cache line; also the width of the widest vector register in use.
constexpr std::size_t Alignment = 64;

struct FreeMemory {
    void operator()(std::uint8_t* memory) const noexcept { std::free(memory); }
};

} // namespace

struct FramePool::Store {
    explicit Store(int frameCount)
        : slots(static_cast<std::size_t>(frameCount))
    {
    }

    struct Slot {
        VideoFrame frame;
        std::unique_ptr<std::uint8_t, FreeMemory> memory;
    };

    std::mutex lock;
    std::vector<Slot> slots;
    std::vector<Slot*> free;
};

FramePool::FramePool(QSize size, int frameCount)
    : m_store(std::make_shared<Store>(frameCount))
{
    const auto stride = (static_cast<std::size_t>(size.width()) + Alignment - 1) / Alignment * Alignment;
    const auto rows = static_cast<std::size_t>(size.height());
    const auto bytes = (stride * (rows + (rows + 1) / 2) + Alignment - 1) / Alignment * Alignment;
    for (auto& slot : m_store->slots) {
        slot.memory.reset(static_cast<std::uint8_t*>(std::aligned_alloc(Alignment, bytes)));
        if (!slot.memory) {
            throw std::bad_alloc();
        }
        slot.frame.size = size;
        slot.frame.stride = static_cast<int>(stride);
        slot.frame.luma = slot.memory.get();
        slot.frame.chroma = slot.memory.get() + stride * rows;
        m_store->free.push_back(&slot);
    }
}

std::shared_ptr<VideoFrame> FramePool::tryAcquire()
{
    const std::scoped_lock guard(m_store->lock);
    if (m_store->free.empty()) {
        return nullptr;
    }
    auto* slot = m_store->free.back();
    m_store->free.pop_back();
    return {&slot->frame, [store = m_store, slot](VideoFrame*) {
                const std::scoped_lock releaseGuard(store->lock);
                store->free.push_back(slot);
            }};
}

} // namespace quelto
