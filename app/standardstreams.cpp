// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/standardstreams.h"

#include "qca/base/descriptor.h"

#include <fcntl.h>
#include <unistd.h>

namespace Trivex {

void occupyStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) >= 0)
            continue;
        // The other way round than the stream is used. The lowest free number is this one.
        const int mode = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        Descriptor closed(open("/dev/null", mode));
        if (closed.get() == stream)
            closed.release(); // until the process ends
    }
}

} // namespace Trivex
