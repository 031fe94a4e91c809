// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <stdexcept>

namespace quelto {

/// A failure of a recording or of a save. The message is translated, for the user.
class RecorderError : public std::runtime_error {
public:
    static RecorderError encoder(int status);
    /// The encoder takes frames and outputs none.
    static RecorderError silentEncoder();
    static RecorderError writer(const QString& text);
    /// Reading the screen is not permitted.
    static RecorderError permission();
    static RecorderError noDisplay();
    static RecorderError emptyBuffer();

    const QString& message() const noexcept { return m_message; }
    /// The message without words that only say that the clip was not saved, for places that say so themselves.
    const QString& reason() const noexcept { return m_reason; }

private:
    explicit RecorderError(const QString& message);
    RecorderError(const QString& message, const QString& reason);

    QString m_message;
    QString m_reason;
};

} // namespace quelto
