// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace quelto::test {

/// Sets the time zone of the process while it exists.
class TimeZone {
public:
    /// A value of TZ. In "UTC-3", negative offsets are east of Greenwich.
    explicit TimeZone(const QByteArray& value)
        : m_previous(qgetenv("TZ"))
        , m_hadValue(qEnvironmentVariableIsSet("TZ"))
    {
        qputenv("TZ", value);
    }
    ~TimeZone()
    {
        if (m_hadValue) {
            qputenv("TZ", m_previous);
        } else {
            qunsetenv("TZ");
        }
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    QByteArray m_previous;
    bool m_hadValue;
};

} // namespace quelto::test
