// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/pkcs11/tokenfixture.h"

namespace TrivexTest {

/// A row whose name is those words.
QTestData &newRow(std::initializer_list<const char *> words);

/// How that key signs: with the digest of its own standard.
QCA::SignatureAlgorithm signatureFor(const QCA::PKey &key);

/// A token with the GOST mechanisms of TC26, checked by the openssl program with its engine "gost".
/// Each test program runs twice: with that engine in this process, and with TRIVEX_NO_GOST_ENGINE.
/// Each test leaves the token empty.
class GostFixture : public TokenFixture {
    Q_OBJECT
public:
    GostFixture();

protected:
    static QString storeName();
    /// What is signed.
    static QByteArray data();
    static QString pkcs11Provider() { return QStringLiteral("qca-norvel-pkcs11"); }
    static QString gostProvider() { return QStringLiteral("qca-norvel-gost"); }
    static QString opensslProvider() { return QStringLiteral("qca-norvel-openssl"); }

    QCA::PrivateKey generate(const QString &curve, const QString &label)
    {
        return generateCurve(curve, label, 60000);
    }
    QCA::KeyStoreEntry entryWithId(const QString &id) const
    {
        return withId(m_stores->currentEntries(storeName()), id);
    }
    /// The keys that the token holds, both halves counted.
    int keyObjects() const;
    /// Writes a file where openssl runs.
    bool write(const QString &name, const QByteArray &bytes) const;
    /// Whether openssl accepts `signature` of `data()` by that key.
    bool opensslVerifies(const QByteArray &publicInfo, const QByteArray &signature);
    /// A bundle with a new key of that algorithm and parameter set; the path of its file.
    QString bundle(const QString &algorithm, const QString &set) const;

protected Q_SLOTS:
    /// After each test, and within one that needs an empty token.
    void cleanup();

private Q_SLOTS:
    void initTestCase();
};

} // namespace TrivexTest
