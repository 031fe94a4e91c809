// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <stdexcept>

namespace quelto {

/// Why a recording or a clip did not come to be. The message is translated and meant for the user.
class RecorderError : public std::runtime_error {
public:
    static RecorderError encoder(int status);
    static RecorderError writer(const QString& text);
    /// No right to read the screen.
    static RecorderError permission();
    static RecorderError noDisplay();
    static RecorderError emptyBuffer();

    const QString& message() const noexcept { return m_message; }

private:
    explicit RecorderError(const QString& message);

    QString m_message;
};

} // namespace quelto
