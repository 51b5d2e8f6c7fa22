// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QObject>
#include <QTemporaryDir>

#include <memory>

namespace TrivexTest {

bool write(const QString &path, const QByteArray &bytes);
/// The fingerprint that the program shows.
QString hash(const QByteArray &der);

/// A test of the program without its window, beside a token with one key and its certificate.
class ConsoleTest : public QObject {
protected:
    /// Skips the test where there are no tokens.
    void prepare();
    /// Gives the key a second certificate; DER, empty on failure.
    QByteArray writeSecond();
    /// The command line that signs it with the only key.
    QStringList signing(const QString &document) const;
    QString path(const QString &name) const { return m_files.filePath(name); }

    QTemporaryDir m_files;
    std::unique_ptr<TestToken> m_token;
    std::unique_ptr<TestAuthority> m_authority;
    QByteArray m_certificate;
};

} // namespace TrivexTest
