// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificate.h"
#include "certificates/keystoreentry.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "qca/x509/certificateinfo.h"
#include "signing/signverify.h"
#include "tests/pkcs11/gostfixture.h"

using namespace TrivexTest;

/// What GOST keys on a token are for: signatures, requests, certificates of their own.
class TestGostUses : public GostFixture {
    Q_OBJECT
private Q_SLOTS:
    void signature_data();
    void signature();
    void unusableSignature();
    void requests_data();
    void requests();
    void bareKeyIsFound();
    void restoredEntrySigns();
    void selfSigned();
    void signVerifyNeedsRsa();
};

void TestGostUses::signature_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<QByteArray>("habit");
    for (const char *curve : {"gost2012-256", "gost2012-512"}) {
        for (const char *habit : {"", "digest-only", "no-digest", "message-only", "no-digest vague",
                                  "message-only vague"})
            newRow({curve, habit}) << QString::fromLatin1(curve) << QByteArray(habit);
    }
}

void TestGostUses::signature()
{
    QFETCH(QString, curve);
    QFETCH(QByteArray, habit);
    QCA::PrivateKey key = generate(curve, QStringLiteral("signs"));
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Signs")).isEmpty());
    if (!habit.isEmpty())
        m_token->control("gost " + habit);
    const QByteArray signature = key.signMessage(data(), signatureFor(key), QCA::DefaultFormat);
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), signature));
    const bool verifies =
        key.toPublicKey().verifyMessage(data(), signature, signatureFor(key), QCA::DefaultFormat);
    QCOMPARE(verifies, !qEnvironmentVariableIsSet("TRIVEX_NO_GOST_ENGINE"));
    QVERIFY(!key.toPublicKey().verifyMessage(QByteArray(data()).append('x'), signature,
                                             signatureFor(key), QCA::DefaultFormat));
    // In pieces, and through a copy.
    key.startSign(signatureFor(key), QCA::DefaultFormat);
    key.update(data().left(3));
    QCA::PrivateKey copy = key;
    copy.update(data().mid(3));
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), copy.signature()));
}

void TestGostUses::unusableSignature()
{
    QCA::PrivateKey key = generate(QStringLiteral("gost2012-256"), QStringLiteral("unusable"));
    QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Unusable")).isEmpty());
    // Of a digest that is as long, a signature can be made; of others it can't.
    QVERIFY(key.signMessage(data(), QCA::EMSA3_SHA1, QCA::DefaultFormat).isEmpty());
    QVERIFY(key.signMessage(data(), QCA::SignatureUnknown, QCA::DefaultFormat).isEmpty());
    QVERIFY(key.signMessage(data(), QCA::EMSA3_Raw, QCA::DefaultFormat).isEmpty());
    QVERIFY(key.toRSA().isNull());
}

void TestGostUses::requests_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<QString>("algorithm");
    QTest::addColumn<QByteArray>("habit");
    const QString with256 = QStringLiteral("GOST R 34.10-2012 with GOST R 34.11-2012 (256 bit)");
    const QString with512 = QStringLiteral("GOST R 34.10-2012 with GOST R 34.11-2012 (512 bit)");
    for (const char *habit : {"", "gost message-only", "gost no-digest"}) {
        const QByteArray name(habit);
        newRow({"256", habit}) << QStringLiteral("gost2012-256") << with256 << name;
        newRow({"256 B", habit}) << QStringLiteral("id-tc26-gost-3410-2012-256-paramSetB")
                                 << with256 << name;
        newRow({"512", habit}) << QStringLiteral("gost2012-512") << with512 << name;
    }
}

void TestGostUses::requests()
{
    QFETCH(QString, curve);
    QFETCH(QString, algorithm);
    QFETCH(QByteArray, habit);
    const QCA::PrivateKey key = generate(curve, QStringLiteral("request"));
    QVERIFY(!key.isNull());
    m_token->control(habit);
    QCA::CertificateInfo subject;
    subject.insert(QCA::CommonName, QStringLiteral("Анна Ивановна"));
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(subject);
    const QCA::CertificateRequest request(options, key, pkcs11Provider());
    QVERIFY(!request.isNull());
    const QString file = m_authority->file(QStringLiteral("request.csr"));
    QVERIFY(request.toPEMFile(file));
    const QByteArray text = m_authority->openssl({QStringLiteral("req"), QStringLiteral("-verify"),
                                                  QStringLiteral("-noout"), QStringLiteral("-text"),
                                                  QStringLiteral("-in"), file});
    QVERIFY(!text.isNull());
    QVERIFY2(text.contains("Signature Algorithm: " + algorithm.toUtf8()), text.constData());
    m_token->control();
    const QByteArray issued = m_authority->issueForRequest(file);
    QVERIFY(!issued.isEmpty());
    const QString id =
        m_stores->write(m_store, QCA::Certificate::fromDER(issued, nullptr, opensslProvider()));
    const QCA::KeyStoreEntry entry = entryWithId(id);
    QCOMPARE(entry.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QVERIFY(Trivex::isSamePublicKey(entry.keyBundle().privateKey().toPublicKey(),
                                    request.subjectPublicKey()));
}

void TestGostUses::bareKeyIsFound()
{
    for (const char *curve : {"gost2012-256", "gost2012-512"}) {
        const QCA::PrivateKey key = generate(QString::fromLatin1(curve), QStringLiteral("bare"));
        QVERIFY(m_token->replug(m_store->id()));
        QCA::PrivateKey found = Trivex::findTokenKey(m_store->id(), Trivex::publicKeyOf(key));
        QVERIFY(!found.isNull());
        QVERIFY(Trivex::isSamePublicKey(Trivex::publicKeyOf(found), Trivex::publicKeyOf(key)));
        QVERIFY(!found.signMessage(data(), signatureFor(key), QCA::DefaultFormat).isEmpty());
        QVERIFY(!issueAndImport(key, QStringLiteral("/CN=Bare")).isEmpty());
        cleanup();
    }
}

void TestGostUses::restoredEntrySigns()
{
    const QString id = issueAndImport(generate(QStringLiteral("gost2012-512"), QString()),
                                      QStringLiteral("/CN=Restored"));
    QVERIFY(!id.isEmpty());
    const auto entry = QCA::KeyStoreEntry(entryWithId(id).toString());
    QVERIFY(!entry.isNull());
    QCA::PrivateKey key = entry.keyBundle().privateKey();
    const QByteArray signature = key.signMessage(data(), signatureFor(key), QCA::DefaultFormat);
    QVERIFY(opensslVerifies(Trivex::encodedPublicKey(key), signature));
}

void TestGostUses::selfSigned()
{
    QCA::PrivateKey key = generate(QStringLiteral("gost2012-512"), QStringLiteral("self"));
    QCA::CertificateInfo subject;
    subject.insert(QCA::CommonName, QStringLiteral("Self"));
    QCA::CertificateOptions options;
    options.setInfo(subject);
    options.setValidityPeriod(QDateTime::currentDateTime(),
                              QDateTime::currentDateTime().addDays(1));
    options.setSerialNumber(QCA::BigInteger(1));
    const QCA::Certificate certificate(options, key, opensslProvider());
    QVERIFY(!certificate.isNull());
    if (!qEnvironmentVariableIsSet("TRIVEX_NO_GOST_ENGINE"))
        QVERIFY(certificate.isSelfSigned());
    const QString file = m_authority->file(QStringLiteral("self.pem"));
    QVERIFY(certificate.toPEMFile(file));
    QVERIFY(m_authority
                ->openssl({QStringLiteral("verify"), QStringLiteral("-check_ss_sig"),
                           QStringLiteral("-CAfile"), file, file})
                .contains(": OK"));
    const QString id = m_stores->write(m_store, certificate);
    QCOMPARE(entryWithId(id).type(), QCA::KeyStoreEntry::TypeKeyBundle);
}

void TestGostUses::signVerifyNeedsRsa()
{
    const QString id =
        issueAndImport(generate(QStringLiteral("gost2012-256"), QStringLiteral("signer")),
                       QStringLiteral("/CN=Signer"));
    KeyStoreEntry entry(entryWithId(id));
    SignVerify signer;
    SignVerify verifier;
    const QString file = m_authority->file(QStringLiteral("data.sig"));
    QVERIFY(write(QStringLiteral("data.sig"), QByteArray(64, 'x')));
    signer.sign(data(), m_authority->file(QStringLiteral("new.sig")), &entry);
    verifier.verify(data(), file, &entry);
    QTRY_COMPARE(verifier.error(), int(SignVerify::ErrorVerify));
    QTRY_COMPARE(signer.error(), int(SignVerify::ErrorSign));
    QVERIFY(!QFile::exists(m_authority->file(QStringLiteral("new.sig"))));
}

QTEST_GUILESS_MAIN(TestGostUses)
#include "tst_gostuses.moc"
