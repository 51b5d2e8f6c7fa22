// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <optional>

namespace TrivexTest {

/// A home of the test's own, with no tokens but those that the test brings. Make it before the
/// application object. With `path` that of another process.
class Home {
public:
    explicit Home(const QString &path = QString())
        : m_path(path)
    {
        // None for another process's home: killed, this one could not take it away.
        if (m_path.isEmpty())
            m_path = m_directory.emplace().path();
        const QByteArray home = QFile::encodeName(m_path);
        qputenv("HOME", home);
        qputenv("XDG_CONFIG_HOME", home + "/.config");
        qputenv("XDG_DATA_HOME", home + "/.local/share");
        qputenv("XDG_CACHE_HOME", home + "/.cache");
        qputenv("XDG_RUNTIME_DIR", home);
        qputenv("TRIVEX_PKCS11_MODULES", "/nonexistent");
    }

    QString path() const { return m_path; }
    QDir requests() const { return QDir(m_path + QLatin1String("/CertificateRequest")); }
    QStringList requestFiles() const
    {
        return requests().entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    void clearRequests() const
    {
        requests().removeRecursively();
        QDir().mkpath(requests().path());
    }

private:
    std::optional<QTemporaryDir> m_directory;
    QString m_path;
};

} // namespace TrivexTest
