// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/filereading.h"

#include "qca/base/detachedwork.h"

#include <QFileInfo>

namespace Trivex {

namespace {

/// Bytes of a file that is read at once: no signature is longer, and no more than a few objects
/// have room in it.
constexpr qint64 SmallFile = 4096;

} // namespace

FileReading::FileReading(const QString &path)
    : m_path(path)
{
}

void FileReading::start()
{
    if (QFileInfo(m_path).size() <= SmallFile)
        run();
    else
        startDetached([self = shared_from_this()] { self->run(); });
}

void FileReading::run()
{
    auto bytes = readRegularFile(m_path, &m_problem);
    if (bytes) {
        m_wasEmpty = bytes->isEmpty();
        m_contents = readFileContents(*bytes, &m_stopped);
        if (m_contents.has(FileObject::PrivateKey))
            bytes->fill(0);
    }
    m_waiter.resolve();
}

} // namespace Trivex
