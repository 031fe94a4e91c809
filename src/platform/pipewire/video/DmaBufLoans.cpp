// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/DmaBufLoans.h"

#include "base/files/FileDescriptor.h"

#include <fcntl.h>

namespace quelto::pipewire {

namespace {

// Of eight buffers, as a rule.
constexpr std::size_t MaxLoans = 4;

} // namespace

/// What other threads report to the loop.
struct DmaBufLoans::Returns {
    Returns(pw_loop* loop, std::function<void()> onReport)
        : event(std::in_place, loop, std::move(onReport))
    {
    }

    void signalLocked()
    {
        if (event) {
            event->signal();
        }
    }

    std::mutex lock;
    /// Ends with the DmaBufLoans, before the loop.
    std::optional<LoopEvent> event;
    std::vector<std::uint64_t> returned;
    bool isRejected = false;
};

struct DmaBufLoans::Loan {
    ~Loan()
    {
        const std::scoped_lock guard(returns->lock);
        returns->returned.push_back(number);
        returns->signalLocked();
    }

    std::shared_ptr<Returns> returns;
    std::uint64_t number = 0;
    std::vector<FileDescriptor> descriptors;
    DmaBufImage image;
    VideoFrame frame;
};

DmaBufLoans::DmaBufLoans(pw_loop* loop, std::function<void()> onRejected)
    : m_onRejected(std::move(onRejected))
    , m_returns(std::make_shared<Returns>(loop, [this] { takeReturns(); }))
{
}

DmaBufLoans::~DmaBufLoans()
{
    const std::scoped_lock guard(m_returns->lock);
    m_returns->event.reset();
}

std::shared_ptr<VideoFrame> DmaBufLoans::tryLend(StreamBuffer& buffer)
{
    if (m_lent.size() >= MaxLoans) {
        return nullptr;
    }
    const VideoFormat& format = buffer.format();
    std::vector<FileDescriptor> descriptors;
    std::vector<DmaBufImage::Plane> planes;
    for (const spa_data& data : std::span(buffer.contents().datas, buffer.contents().n_datas)) {
        descriptors.emplace_back(fcntl(static_cast<int>(data.fd), F_DUPFD_CLOEXEC, 0));
        if (descriptors.back().get() < 0) {
            return nullptr;
        }
        planes.push_back({.descriptor = descriptors.back().get(),
                          .offset = data.chunk->offset,
                          .stride = static_cast<std::uint32_t>(data.chunk->stride)});
    }
    const auto loan = std::make_shared<Loan>();
    loan->returns = m_returns;
    loan->number = ++m_lastNumber;
    loan->descriptors = std::move(descriptors);
    loan->image.size = format.size;
    loan->image.format = format.dmaBuf->format;
    loan->image.modifier = format.dmaBuf->modifier;
    loan->image.planes = std::move(planes);
    loan->image.reject = [returns = m_returns] {
        const std::scoped_lock guard(returns->lock);
        returns->isRejected = true;
        returns->signalLocked();
    };
    loan->frame.dmaBuf = &loan->image;
    m_lent.emplace(loan->number, std::move(buffer));
    return {loan, &loan->frame};
}

void DmaBufLoans::forget(const pw_buffer* buffer)
{
    for (auto& [number, lent] : m_lent) {
        if (lent.is(buffer)) {
            lent.forget();
        }
    }
}

void DmaBufLoans::takeReturns()
{
    std::vector<std::uint64_t> returned;
    bool isRejected = false;
    {
        const std::scoped_lock guard(m_returns->lock);
        returned.swap(m_returns->returned);
        isRejected = std::exchange(m_returns->isRejected, false);
    }
    for (const std::uint64_t number : returned) {
        m_lent.erase(number);
    }
    if (isRejected) {
        m_onRejected();
    }
}

} // namespace quelto::pipewire
