// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include <dirent.h>
#include <unistd.h>

namespace Trivex {

/// Owns one file descriptor: a file, a directory, an end of a pipe. Closes it at the end of its
/// life; move-only.
class Descriptor {
public:
    /// `descriptor` is what the system's call returned; negative for a call that failed.
    explicit Descriptor(int descriptor = -1) noexcept
        : m_descriptor(descriptor)
    {
    }
    ~Descriptor() { reset(); }
    Descriptor(Descriptor &&other) noexcept
        : m_descriptor(other.release())
    {
    }
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        if (this != &other) {
            reset();
            m_descriptor = other.release();
        }
        return *this;
    }

    bool isOpen() const { return m_descriptor >= 0; }
    /// -1 without a descriptor.
    int get() const { return m_descriptor; }
    /// Hands the descriptor to the caller, who closes it from then on.
    int release() { return std::exchange(m_descriptor, -1); }
    /// Closes the descriptor now. An error is not reported: what has to be on the disk is flushed
    /// before.
    void reset()
    {
        if (isOpen())
            ::close(release());
    }

private:
    int m_descriptor;
};

/// Closes the stream of a directory.
struct CloseDirectory {
    void operator()(DIR *stream) const noexcept { closedir(stream); }
};
/// Owns the stream of an open directory.
using DirectoryStream = std::unique_ptr<DIR, CloseDirectory>;

} // namespace Trivex
