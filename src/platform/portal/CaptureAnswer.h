// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>
#include <QString>

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <stop_token>
#include <variant>

namespace quelto {

/// What PortalCapture::open() waits for. Each question has a number, so that an answer to an earlier one is ignored.
///
/// Thread: any.
class CaptureAnswer {
public:
    using Question = std::uint64_t;
    /// The size of the screen in pixels, or a sentence for the user.
    using Answer = std::variant<QSize, QString>;

    void ask(Question question)
    {
        const std::scoped_lock guard(m_lock);
        m_question = question;
        m_answer.reset();
    }

    /// The first answer counts.
    void answer(Question question, Answer answer)
    {
        const std::scoped_lock guard(m_lock);
        if (question == m_question && !m_answer) {
            m_answer = std::move(answer);
            m_changed.notify_all();
        }
    }

    /// Nothing if the token was told to stop.
    std::optional<Answer> wait(const std::stop_token& cancelled)
    {
        std::unique_lock guard(m_lock);
        m_changed.wait(guard, cancelled, [this] { return m_answer.has_value(); });
        return m_answer;
    }

private:
    std::mutex m_lock;
    std::condition_variable_any m_changed;
    Question m_question = 0;
    std::optional<Answer> m_answer;
};

} // namespace quelto
