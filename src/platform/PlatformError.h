// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <stdexcept>

namespace quelto {

/// A desktop service failed. The message is a translated sentence for the user.
class PlatformError : public std::runtime_error {
public:
    explicit PlatformError(const QString& message)
        : std::runtime_error(message.toStdString())
        , m_message(message)
    {
    }

    const QString& message() const noexcept { return m_message; }

private:
    QString m_message;
};

} // namespace quelto
