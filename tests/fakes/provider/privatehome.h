// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QTemporaryDir>

namespace TrivexTest {

/// Points HOME and the XDG directories of this process at a directory of its own. Make one before
/// the application object: as a constant of the test's file.
class PrivateHome {
public:
    PrivateHome()
    {
        set("HOME", QString());
        set("XDG_DATA_HOME", QStringLiteral("data"));
        set("XDG_CONFIG_HOME", QStringLiteral("config"));
        set("XDG_CACHE_HOME", QStringLiteral("cache"));
        set("XDG_RUNTIME_DIR", QStringLiteral("run"));
    }
    QString path() const { return m_directory.path(); }

private:
    void set(const char *name, const QString &subfolder)
    {
        QDir(m_directory.path()).mkpath(subfolder.isEmpty() ? QStringLiteral(".") : subfolder);
        qputenv(name, QFile::encodeName(m_directory.filePath(subfolder)));
        QFile::setPermissions(m_directory.filePath(subfolder),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QTemporaryDir m_directory;
};

} // namespace TrivexTest
