// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <grp.h>
#include <unistd.h>

namespace TrivexTest {

/// p11-kit reads no user's configuration for root: as root the test becomes nobody, where that
/// account can read `file` of this build. At the beginning of `main()`.
inline void leaveRoot(const char *file)
{
    constexpr uid_t Nobody = 65534;
    if (geteuid() != 0 || setgroups(0, nullptr) != 0 || setegid(Nobody) != 0
        || seteuid(Nobody) != 0)
        return;
    const bool canRun = eaccess(file, R_OK) == 0 && eaccess("/dev/shm", W_OK) == 0;
    if (seteuid(0) != 0 || setegid(0) != 0)
        _exit(2);
    if (canRun
        && (setresgid(Nobody, Nobody, Nobody) != 0 || setresuid(Nobody, Nobody, Nobody) != 0))
        _exit(2);
}

} // namespace TrivexTest
