// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/pkcs11/spylog.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace Faulty {
namespace {

// Opened for each line: a test may take the file away to begin a new count.
class LogFile {
public:
    explicit LogFile(const char *path)
        : m_descriptor(::open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600))
    {
    }
    ~LogFile()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    void append(const std::string &text) const
    {
        if (m_descriptor >= 0 && ::write(m_descriptor, text.data(), text.size()) < 0)
            return;
    }

private:
    int m_descriptor;
};

} // namespace

void writeLog(const std::string &line)
{
    const char *path = std::getenv("TRIVEX_FAULTY_LOG");
    if (path && *path)
        LogFile(path).append(line + '\n');
}

} // namespace Faulty
