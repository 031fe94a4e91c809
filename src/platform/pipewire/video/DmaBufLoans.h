// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/VideoFrame.h"
#include "platform/pipewire/video/StreamBuffer.h"

#include <map>

namespace quelto::pipewire {

/// Makes frames of a stream's DMA-BUFs without copying them. The stream gets a buffer back when the last reference to
/// its frame is released, on any thread. A frame may outlive the stream: it has descriptors of its own.
///
/// Thread: the loop's lock held.
class DmaBufLoans {
public:
    /// onRejected: called on the loop's thread when the encoder cannot read DMA-BUFs.
    DmaBufLoans(pw_loop* loop, std::function<void()> onRejected);
    ~DmaBufLoans();
    DmaBufLoans(const DmaBufLoans&) = delete;
    DmaBufLoans& operator=(const DmaBufLoans&) = delete;

    /// Takes the buffer, which must be a DMA-BUF with a picture. Null while so many are lent that the source needs the
    /// rest, or if the process has no descriptors left; the buffer then stays with the caller.
    std::shared_ptr<VideoFrame> tryLend(StreamBuffer& buffer);
    /// The stream has removed the buffer.
    void forget(const pw_buffer* buffer);

private:
    struct Loan;
    struct Returns;

    void takeReturns();

    std::function<void()> m_onRejected;
    std::shared_ptr<Returns> m_returns;
    /// By number and not by address: a stream creates new buffers at the addresses of removed ones.
    std::map<std::uint64_t, StreamBuffer> m_lent;
    std::uint64_t m_lastNumber = 0;
};

} // namespace quelto::pipewire
