// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

namespace quelto::test {

/// Drops root privileges while it exists, because root can read every file.
class UnprivilegedUser {
public:
    UnprivilegedUser() { setUser(m_user == 0 ? Nobody : m_user); }
    ~UnprivilegedUser() { setUser(m_user); }
    UnprivilegedUser(const UnprivilegedUser&) = delete;
    UnprivilegedUser& operator=(const UnprivilegedUser&) = delete;

private:
    static constexpr uid_t Nobody = 65534;
    static void setUser(uid_t user) { EXPECT_EQ(::seteuid(user), 0); }

    const uid_t m_user = ::geteuid();
};

} // namespace quelto::test
