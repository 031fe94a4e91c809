// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FrontApplication.h"

#include <mutex>

namespace quelto {

/// The application that a thread which follows the active window has last found.
///
/// Thread: any.
class CurrentApplication {
public:
    std::optional<FrontApplicationInfo> get() const
    {
        const std::scoped_lock guard(m_lock);
        return m_info;
    }
    void set(std::optional<FrontApplicationInfo> info)
    {
        const std::scoped_lock guard(m_lock);
        m_info = std::move(info);
    }

private:
    mutable std::mutex m_lock;
    std::optional<FrontApplicationInfo> m_info;
};

} // namespace quelto
