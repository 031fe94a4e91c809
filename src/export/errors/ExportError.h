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

    const QString& message() const noexcept { return m_message; }

private:
    explicit ExportError(const QString& message);

    QString m_message;
};

} // namespace quelto
