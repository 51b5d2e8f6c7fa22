// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/cms/documentsignature.h"
#include "qca/cms/messagereport.h"
#include "tests/support/testcertificates.h"

#include <QObject>
#include <QtCrypto>

#include <memory>

namespace TrivexTest {

/// A key with its certificate and chain.
struct Signer {
    QCA::PrivateKey key;
    QList<QByteArray> chain; ///< the signer's first, DER
    bool isNull() const { return key.isNull() || chain.isEmpty(); }
};

/// Signed messages: ours and those of other programs, checked by ours and by them.
class CmsFixture : public QObject {
    Q_OBJECT
public:
    CmsFixture();
    ~CmsFixture() override;

protected:
    /// The arguments of `openssl genpkey` for a kind of key: "rsa:2048", "ec:P-256", "ed25519",
    /// "rsa-pss:2048", "rsa-pss:2048:sha384".
    static QStringList keyArguments(const QString &kind);
    /// A software key whose certificate the authority issued; it, its bundle and its PEM files stay
    /// in the authority's directory as "bundle.*" until the next one.
    Signer makeSigner(const QString &kind, const QString &subject = QStringLiteral("/CN=Signer"));
    QString file(const QString &name) const { return m_authority->file(name); }
    QString write(const QString &name, const QByteArray &contents) const;
    static QByteArray read(const QString &path);

    /// All steps of a signature.
    static Trivex::DocumentSignature::Problem sign(const Signer &signer,
                                                   const Trivex::DocumentSignature::Files &files,
                                                   bool mayReplace = false);
    /// What we say of a message and its document.
    static Trivex::MessageReport check(const QString &message, const QString &document = {},
                                       const QList<QByteArray> &known = {});
    /// The verdict of the one signer; -1 where there is another number of them.
    static int verdict(const QString &message, const QString &document = {});
    /// Whether the openssl program takes it for good; with a document for a detached one.
    bool opensslAccepts(const QString &message, const QString &document = {},
                        const QStringList &further = {}) const;
    /// Runs a program where the authority's files are; its exit code, -1 when it did not start.
    int run(const QString &program, const QStringList &arguments,
            QByteArray *output = nullptr) const;

    std::unique_ptr<TestAuthority> m_authority;
    QCA::Initializer m_qca;
};

} // namespace TrivexTest
