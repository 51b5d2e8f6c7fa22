// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "requests/requestreading.h"

#include "qca/base/requestfiles.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

// A thousand entries take some milliseconds, and so do 32 requests or a megabyte of anything.
constexpr int PartEntries = 1000;
constexpr int PartFiles = 32;
constexpr qint64 PartBytes = 1 << 20;

} // namespace

RequestReading::RequestReading(const QString &directory)
    : m_directory(directory)
    // Names are chosen here: the iterator would pass any number of others over in one step.
    , m_entries(directory, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
{
}

/// What `QDir` calls a visible file that fits "*.csr".
bool RequestReading::isRequest() const
{
    const QString name = m_entries.fileName();
    return !name.startsWith(QLatin1Char('.'))
        && name.endsWith(QLatin1Char('.') + Trivex::requestExtension(), Qt::CaseInsensitive)
        && m_entries.fileInfo().isFile();
}

bool RequestReading::list()
{
    for (int i = 0; i < PartEntries && m_entries.hasNext(); ++i) {
        m_entries.next();
        if (isRequest())
            m_names.append(m_entries.fileName());
    }
    m_isListed = !m_entries.hasNext();
    if (m_isListed)
        std::sort(m_names.begin(), m_names.end());
    return m_isListed;
}

void RequestReading::beginPart()
{
    m_filesLeft = PartFiles;
    m_bytesLeft = PartBytes;
}

QString RequestReading::next()
{
    if (m_names.isEmpty() || m_filesLeft <= 0 || m_bytesLeft <= 0)
        return {};
    const QString path = QDir(m_directory).filePath(m_names.takeFirst());
    --m_filesLeft;
    m_bytesLeft -= QFileInfo(path).size();
    return path;
}
