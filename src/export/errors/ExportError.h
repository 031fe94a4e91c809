// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <stdexcept>

namespace quelto {

/// A failure of an export. The message is translated, for the user.
class ExportError : public std::runtime_error {
public:
    /// The reason is a translated text, or the system's own.
    static ExportError failed(const QString& reason);
    /// The clip has no video track, or no duration.
    static ExportError noVideo();
    /// What the exception that is being handled means to the user, whatever its type.
    static ExportError fromCurrentException();

    const QString& message() const noexcept { return m_message; }
    /// The message without the words that it was an export.
    const QString& reason() const noexcept { return m_reason; }

private:
    ExportError(const QString& message, const QString& reason);

    QString m_message;
    QString m_reason;
};

} // namespace quelto
