// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <utility>
#include <vector>

namespace quelto::test {

/// Changes environment variables, and restores them when it is destroyed.
class ScopedEnvironment {
public:
    ScopedEnvironment() = default;
    ~ScopedEnvironment()
    {
        for (auto change = m_before.rbegin(); change != m_before.rend(); ++change) {
            apply(change->first, change->second);
        }
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

    /// A null value removes the variable.
    void set(const char* name, const QByteArray& value)
    {
        m_before.emplace_back(name, qgetenv(name));
        apply(name, value);
    }

private:
    static void apply(const char* name, const QByteArray& value)
    {
        if (value.isNull()) {
            qunsetenv(name);
        } else {
            qputenv(name, value);
        }
    }

    std::vector<std::pair<const char*, QByteArray>> m_before;
};

} // namespace quelto::test
