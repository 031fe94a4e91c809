// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>
#include <stop_token>
#include <utility>

namespace quelto {

/// Hands items from one thread to another in order. The producer waits while the queue is full, the consumer while it
/// is empty.
template <typename T> class BoundedQueue {
public:
    explicit BoundedQueue(std::size_t capacity)
        : m_capacity(capacity)
    {
    }

    /// Thread: the producer. False after a stop request, without the item in the queue.
    bool push(T item, const std::stop_token& stop)
    {
        {
            std::unique_lock guard(m_lock);
            if (!m_changed.wait(guard, stop, [this] { return m_items.size() < m_capacity; })) {
                return false;
            }
            m_items.push_back(std::move(item));
        }
        m_changed.notify_all();
        return true;
    }

    /// Ends the queue after the items in it, with an error if there is one. Thread: the producer.
    void close(std::exception_ptr failure = {})
    {
        {
            const std::scoped_lock guard(m_lock);
            m_failure = std::move(failure);
            m_isClosed = true;
        }
        m_changed.notify_all();
    }

    /// Nothing after the last item. Thread: the consumer. Errors: that of close.
    std::optional<T> pop()
    {
        std::unique_lock guard(m_lock);
        m_changed.wait(guard, [this] { return !m_items.empty() || m_isClosed; });
        if (m_items.empty()) {
            if (m_failure) {
                std::rethrow_exception(m_failure);
            }
            return std::nullopt;
        }
        std::optional<T> item(std::move(m_items.front()));
        m_items.pop_front();
        guard.unlock();
        m_changed.notify_all();
        return item;
    }

private:
    const std::size_t m_capacity;
    std::mutex m_lock;
    std::condition_variable_any m_changed;
    std::deque<T> m_items;
    bool m_isClosed = false;
    std::exception_ptr m_failure;
};

} // namespace quelto
