// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/providers.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QSignalSpy>
#include <QTimer>

using namespace Trivex;
using namespace TrivexTest;

/// QCA's messages (`QCA::CMS`, `QCA::SecureMessage`) as other applications use them: with keys of
/// a token and of files, by our context and by the stock one, in every pairing of the two.
class TestSecureMessage : public TokenFixture {
    Q_OBJECT
public:
    TestSecureMessage()
        : TokenFixture(QStringLiteral("Mail"))
    {
    }

private Q_SLOTS:
    void initTestCase();
    void isOurs();
    void tokenSigns_data();
    void tokenSigns();
    void fileSigns_data();
    void fileSigns();
    void encrypts_data();
    void encrypts();
    void stockObjects();
    void encryptsForEveryKind();
    void documentBesideCounts();
    void purposes_data();
    void purposes();
    void saysWhatIsWrong();
    void withoutSigner();
    void refusals();
    void damaged();
    void waitsForEvents();
    void againAfterReset();
    void letGo();
    void pinIsLeft();

private:
    QCA::SecureMessageKey tokenKey(const QString &name) const;
    QByteArray contents(const QString &name) const;
    QString write(const QString &name, const QByteArray &bytes) const;
    /// What openssl finds in the message; null when it does not accept it.
    QByteArray opensslReads(const QByteArray &message, QCA::SecureMessage::Format format,
                            const QByteArray &document = {}) const;
    bool verifies(QCA::CMS &cms, const QByteArray &message, const QByteArray &signature,
                  QCA::SecureMessage::Format format) const;

    QCA::SecureMessageKey m_file; ///< an RSA key that belongs to no token
    QCA::SecureMessageKey m_curve;
    QCA::CertificateCollection m_trusted;
};

namespace {

using Message = QCA::SecureMessage;

const QByteArray Text = "Pay 100 to Mary\n";

QString stockProvider()
{
    return QStringLiteral("qca-ossl");
}

QCA::SecureMessageKey keyOf(const QCA::KeyBundle &bundle)
{
    QCA::SecureMessageKey key;
    if (!bundle.isNull())
        key.setX509KeyBundle(bundle);
    return key;
}

bool finish(Message &message, const QByteArray &text)
{
    message.update(text);
    message.end();
    message.waitForFinished(-1);
    return message.success();
}

struct Signed {
    QByteArray message;
    QByteArray signature;
};

Signed sign(QCA::CMS &cms, const QCA::SecureMessageKey &key, Message::SignMode mode,
            Message::Format format, bool bundle = true)
{
    Message message(&cms);
    message.setSigner(key);
    message.setFormat(format);
    message.setBundleSignerEnabled(bundle);
    message.startSign(mode);
    if (!finish(message, Text))
        return {};
    return {message.read(), message.signature()};
}

} // namespace

void TestSecureMessage::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    const QStringList kinds = {QStringLiteral("rsa:2048"), QStringLiteral("EC:secp256r1"),
                               QStringLiteral("EC:secp384r1")};
    for (int i = 0; i < kinds.size(); ++i)
        QVERIFY(addKey(kinds.at(i), QStringLiteral("0%1").arg(i + 1), kinds.at(i)));
    m_token->useInThisProcess();
    QVERIFY(start(kinds.size()));
    m_prompt->setPin(TestToken::pin());
    m_trusted.addCertificate(root());
    m_file = keyOf(makeBundle(QStringLiteral("rsa"), QStringLiteral("rsa_keygen_bits:2048"),
                              QStringLiteral("/CN=File")));
    QVERIFY(m_file.havePrivate());
    m_curve = keyOf(makeCurveBundle(QStringLiteral("/CN=Curve")));
    QVERIFY(m_curve.havePrivate());
}

QCA::SecureMessageKey TestSecureMessage::tokenKey(const QString &name) const
{
    const QCA::KeyStoreEntry entry = m_stores->entry(QStringLiteral("Mail"), name);
    return entry.isNull() ? QCA::SecureMessageKey() : keyOf(entry.keyBundle());
}

QByteArray TestSecureMessage::contents(const QString &name) const
{
    QFile file(m_authority->file(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString TestSecureMessage::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(m_authority->file(name));
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    return isWritten ? file.fileName() : QString();
}

QByteArray TestSecureMessage::opensslReads(const QByteArray &message, Message::Format format,
                                           const QByteArray &document) const
{
    QStringList arguments = {QStringLiteral("cms"),
                             QStringLiteral("-verify"),
                             QStringLiteral("-binary"),
                             QStringLiteral("-inform"),
                             format == Message::Ascii ? QStringLiteral("PEM")
                                                      : QStringLiteral("DER"),
                             QStringLiteral("-in"),
                             write(QStringLiteral("message"), message),
                             QStringLiteral("-CAfile"),
                             m_authority->certificateFile()};
    if (!document.isNull())
        arguments += {QStringLiteral("-content"), write(QStringLiteral("document"), document)};
    return m_authority->openssl(arguments);
}

bool TestSecureMessage::verifies(QCA::CMS &cms, const QByteArray &message,
                                 const QByteArray &signature, Message::Format format) const
{
    cms.setTrustedCertificates(m_trusted);
    Message verifier(&cms);
    verifier.setFormat(format);
    verifier.startVerify(signature);
    finish(verifier, message);
    return verifier.verifySuccess();
}

void TestSecureMessage::isOurs()
{
    QCA::CMS cms;
    QCOMPARE(cms.provider()->name(), opensslProviderName());
    const Message message(&cms);
    QCOMPARE(int(message.type()), int(Message::CMS));
    QVERIFY(!message.canClearsign());
    QVERIFY(!message.canSignAndEncrypt());
    QVERIFY(!message.canSignMultiple());
}

void TestSecureMessage::tokenSigns_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("verifier");
    for (const char *name : {"rsa:2048", "EC:secp256r1", "EC:secp384r1"}) {
        for (const int mode : {Message::Detached, Message::Message}) {
            for (const int format : {Message::Binary, Message::Ascii}) {
                for (const QString &verifier : {QString(), stockProvider()})
                    QTest::addRow("%s, %d, %d, %s", name, mode, format, qPrintable(verifier))
                        << QString::fromLatin1(name) << mode << format << verifier;
            }
        }
    }
}

void TestSecureMessage::tokenSigns()
{
    QFETCH(const QString, name);
    QFETCH(const int, mode);
    QFETCH(const int, format);
    QFETCH(const QString, verifier);
    QCA::CMS cms;
    const Signed made = sign(cms, tokenKey(name), Message::SignMode(mode), Message::Format(format));
    const bool isDetached = mode == Message::Detached;
    QCOMPARE(made.signature.isEmpty(), !isDetached);
    QCOMPARE(made.message.isEmpty(), isDetached);
    const QByteArray &whole = isDetached ? made.signature : made.message;
    QCOMPARE(opensslReads(whole, Message::Format(format), isDetached ? Text : QByteArray()), Text);

    QCA::CMS other(nullptr, verifier);
    const QByteArray shown = isDetached ? Text : made.message;
    QVERIFY(verifies(other, shown, made.signature, Message::Format(format)));
    if (isDetached)
        QVERIFY(!verifies(other, Text + " ", made.signature, Message::Format(format)));
}

void TestSecureMessage::fileSigns_data()
{
    QTest::addColumn<QString>("signer");
    QTest::addColumn<QString>("verifier");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("format");
    for (const QString &signer : {QString(), stockProvider()}) {
        for (const QString &verifier : {QString(), stockProvider()}) {
            for (const int mode : {Message::Detached, Message::Message}) {
                for (const int format : {Message::Binary, Message::Ascii})
                    QTest::addRow("%s to %s, %d, %d", qPrintable(signer), qPrintable(verifier),
                                  mode, format)
                        << signer << verifier << mode << format;
            }
        }
    }
}

// What stock code says of the messages is what ours says, whoever has made them.
void TestSecureMessage::fileSigns()
{
    QFETCH(const QString, signer);
    QFETCH(const QString, verifier);
    QFETCH(const int, mode);
    QFETCH(const int, format);
    QCA::CMS maker(nullptr, signer);
    const Signed made = sign(maker, m_file, Message::SignMode(mode), Message::Format(format));
    const bool isDetached = mode == Message::Detached;
    QCOMPARE(made.signature.isEmpty(), !isDetached);
    const QByteArray &whole = isDetached ? made.signature : made.message;
    QCOMPARE(opensslReads(whole, Message::Format(format), isDetached ? Text : QByteArray()), Text);

    QCA::CMS cms(nullptr, verifier);
    cms.setTrustedCertificates(m_trusted);
    Message message(&cms);
    message.setFormat(Message::Format(format));
    message.startVerify(made.signature);
    finish(message, isDetached ? Text : made.message);
    QVERIFY(message.verifySuccess());
    QCOMPARE(message.signers().size(), 1);
    const QCA::SecureMessageSignature signature = message.signer();
    QCOMPARE(int(signature.identityResult()), int(QCA::SecureMessageSignature::Valid));
    QCOMPARE(int(signature.keyValidity()), int(QCA::ValidityGood));
    QCOMPARE(signature.key().x509CertificateChain().primary().toDER(),
             m_file.x509CertificateChain().primary().toDER());
    QVERIFY(qAbs(signature.timestamp().secsTo(QDateTime::currentDateTime())) < 60);
    if (verifier.isEmpty() && !isDetached)
        QCOMPARE(message.read(), Text);

    // Nobody vouches for the signer.
    cms.setTrustedCertificates({});
    Message again(&cms);
    again.setFormat(Message::Format(format));
    again.startVerify(made.signature);
    finish(again, isDetached ? Text : made.message);
    QVERIFY(!again.verifySuccess());
}

void TestSecureMessage::encrypts_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<int>("format");
    for (const QString &from : {QString(), stockProvider()}) {
        for (const QString &to : {QString(), stockProvider()}) {
            for (const int format : {Message::Binary, Message::Ascii})
                QTest::addRow("%s to %s, %d", qPrintable(from), qPrintable(to), format)
                    << from << to << format;
        }
    }
}

void TestSecureMessage::encrypts()
{
    QFETCH(const QString, from);
    QFETCH(const QString, to);
    QFETCH(const int, format);
    QCA::CMS sender(nullptr, from);
    Message message(&sender);
    QCA::SecureMessageKey recipient;
    recipient.setX509CertificateChain(m_file.x509CertificateChain());
    message.setRecipient(recipient);
    message.setFormat(Message::Format(format));
    message.startEncrypt();
    QVERIFY(finish(message, Text));
    const QByteArray encrypted = message.read();
    QVERIFY(!encrypted.isEmpty());
    QVERIFY(!encrypted.contains("Mary"));

    QCA::CMS receiver(nullptr, to);
    receiver.setPrivateKeys({m_file});
    Message opened(&receiver);
    opened.setFormat(Message::Format(format));
    opened.startDecrypt();
    QVERIFY(finish(opened, encrypted));
    QCOMPARE(opened.read(), Text);
}

// An application may have asked the stock provider for its keys and certificates by name.
void TestSecureMessage::stockObjects()
{
    const auto certificate = [](const QCA::Certificate &one) {
        return QCA::Certificate::fromDER(one.toDER(), nullptr, stockProvider());
    };
    QCA::SecureMessageKey key;
    QCA::CertificateChain chain;
    chain += certificate(m_file.x509CertificateChain().primary());
    key.setX509CertificateChain(chain);
    key.setX509PrivateKey(
        QCA::PrivateKey::fromPEM(m_file.x509PrivateKey().toPEM(), {}, nullptr, stockProvider()));
    QVERIFY(key.havePrivate());
    QCA::CMS cms;
    const Signed made = sign(cms, key, Message::Detached, Message::Ascii);
    QCOMPARE(opensslReads(made.signature, Message::Ascii, Text), Text);
    QCA::CertificateCollection trusted;
    trusted.addCertificate(certificate(root()));
    cms.setTrustedCertificates(trusted);
    Message verifier(&cms);
    verifier.startVerify(made.signature);
    finish(verifier, Text);
    QVERIFY(verifier.verifySuccess());

    Message message(&cms);
    message.setRecipient(key);
    message.startEncrypt();
    QVERIFY(finish(message, Text));
    cms.setPrivateKeys({key});
    Message opened(&cms);
    opened.startDecrypt();
    QVERIFY(finish(opened, message.read()));
    QCOMPARE(opened.read(), Text);
}

void TestSecureMessage::encryptsForEveryKind()
{
    QCA::SecureMessageKeyList recipients = {m_file, m_curve, tokenKey(QStringLiteral("rsa:2048"))};
    QCA::CMS cms;
    Message message(&cms);
    message.setRecipients(recipients);
    message.startEncrypt();
    QVERIFY(finish(message, Text));
    const QByteArray encrypted = message.read();
    for (const QCA::SecureMessageKey &key : {m_file, m_curve}) {
        cms.setPrivateKeys({key});
        Message opened(&cms);
        opened.startDecrypt();
        QVERIFY(finish(opened, encrypted));
        QCOMPARE(opened.read(), Text);
    }
    cms.setPrivateKeys({});
    Message closed(&cms);
    closed.startDecrypt();
    QVERIFY(!finish(closed, encrypted));
    QVERIFY(closed.read().isEmpty());
}

// A good message inside of the signature says nothing about the document beside it.
void TestSecureMessage::documentBesideCounts()
{
    for (const QString &provider : {QString(), stockProvider()}) {
        QCA::CMS cms(nullptr, provider);
        const Signed made = sign(cms, m_file, Message::Message, Message::Binary);
        QVERIFY(verifies(cms, made.message, {}, Message::Binary));
        QVERIFY(verifies(cms, Text, made.message, Message::Binary));
        QVERIFY(!verifies(cms, "Pay 900 to Mary\n", made.message, Message::Binary));
    }
}

void TestSecureMessage::purposes_data()
{
    QTest::addColumn<QString>("extension");
    QTest::addColumn<bool>("isGood");
    QTest::newRow("mail") << QStringLiteral("extendedKeyUsage=emailProtection") << true;
    QTest::newRow("signatures") << QStringLiteral("keyUsage=digitalSignature") << true;
    QTest::newRow("server") << QStringLiteral("extendedKeyUsage=serverAuth") << false;
    QTest::newRow("encryption") << QStringLiteral("keyUsage=keyEncipherment") << false;
}

void TestSecureMessage::purposes()
{
    QFETCH(const QString, extension);
    QFETCH(const bool, isGood);
    const QStringList make = {QStringLiteral("req"),
                              QStringLiteral("-x509"),
                              QStringLiteral("-newkey"),
                              QStringLiteral("rsa:2048"),
                              QStringLiteral("-nodes"),
                              QStringLiteral("-subj"),
                              QStringLiteral("/CN=Self"),
                              QStringLiteral("-keyout"),
                              QStringLiteral("self.key"),
                              QStringLiteral("-out"),
                              QStringLiteral("self.pem"),
                              QStringLiteral("-addext"),
                              extension};
    QVERIFY(!m_authority->openssl(make).isNull());
    const auto certificate =
        QCA::Certificate::fromPEM(QString::fromLatin1(contents(QStringLiteral("self.pem"))));
    QCA::SecureMessageKey key;
    QCA::CertificateChain chain;
    chain += certificate;
    key.setX509CertificateChain(chain);
    key.setX509PrivateKey(
        QCA::PrivateKey::fromPEM(QString::fromLatin1(contents(QStringLiteral("self.key")))));
    for (const QString &provider : {QString(), stockProvider()}) {
        QCA::CMS cms(nullptr, provider);
        const Signed made = sign(cms, key, Message::Detached, Message::Binary);
        QCA::CertificateCollection trusted;
        trusted.addCertificate(certificate);
        cms.setTrustedCertificates(trusted);
        Message message(&cms);
        message.startVerify(made.signature);
        finish(message, Text);
        QCOMPARE(message.verifySuccess(), isGood);
        if (provider.isEmpty())
            QCOMPARE(int(message.signer().keyValidity()),
                     int(isGood ? QCA::ValidityGood : QCA::ErrorInvalidPurpose));
    }
}

void TestSecureMessage::saysWhatIsWrong()
{
    QCA::CMS cms;
    const Signed made = sign(cms, m_file, Message::Detached, Message::Binary);
    using Signature = QCA::SecureMessageSignature;
    struct Case {
        bool isTrusted;
        QByteArray document;
        Signature::IdentityResult identity;
    };
    const Case cases[] = {{true, Text, Signature::Valid},
                          {true, "other", Signature::InvalidSignature},
                          {false, Text, Signature::InvalidKey},
                          {false, "other", Signature::InvalidSignature}};
    for (const Case &one : cases) {
        cms.setTrustedCertificates(one.isTrusted ? m_trusted : QCA::CertificateCollection());
        Message message(&cms);
        message.startVerify(made.signature);
        finish(message, one.document);
        QCOMPARE(int(message.signer().identityResult()), int(one.identity));
        QCOMPARE(message.signer().keyValidity() == QCA::ValidityGood, one.isTrusted);
    }
}

void TestSecureMessage::withoutSigner()
{
    for (const QString &provider : {QString(), stockProvider()}) {
        QCA::CMS maker(nullptr, provider);
        const Signed made = sign(maker, m_file, Message::Detached, Message::Binary, false);
        QVERIFY(!made.signature.isEmpty());
        QVERIFY(!made.signature.contains(m_file.x509CertificateChain().primary().toDER()));
        QCA::CMS cms;
        QVERIFY(!verifies(cms, Text, made.signature, Message::Binary));
        QCA::CertificateCollection known;
        known.addCertificate(m_file.x509CertificateChain().primary());
        cms.setUntrustedCertificates(known);
        QVERIFY(verifies(cms, Text, made.signature, Message::Binary));
    }
}

void TestSecureMessage::refusals()
{
    QCA::CMS cms;
    QCA::SecureMessageKey publicOnly;
    publicOnly.setX509CertificateChain(m_file.x509CertificateChain());
    QCA::SecureMessageKey mismatched = publicOnly;
    mismatched.setX509PrivateKey(
        keyOf(makeBundle(QStringLiteral("rsa"), QStringLiteral("rsa_keygen_bits:2048"),
                         QStringLiteral("/CN=Other")))
            .x509PrivateKey());
    for (const QCA::SecureMessageKey &key : {QCA::SecureMessageKey(), publicOnly, mismatched}) {
        Message message(&cms);
        message.setSigner(key);
        message.startSign(Message::Detached);
        QVERIFY(!finish(message, Text));
        QVERIFY(message.signature().isEmpty());
    }
    Message message(&cms);
    message.setRecipient(QCA::SecureMessageKey());
    message.startEncrypt();
    QVERIFY(!finish(message, Text));
}

void TestSecureMessage::damaged()
{
    QCA::CMS cms;
    cms.setPrivateKeys({m_file});
    const QByteArray whole = sign(cms, m_file, Message::Message, Message::Binary).message;
    QList<QByteArray> messages = {QByteArray(), "x", "0",
                                  "-----BEGIN PKCS7-----\nAAAA\n-----END PKCS7-----\n"};
    for (int size = 1; size < whole.size(); size += 37)
        messages += whole.left(size);
    for (const QByteArray &message : std::as_const(messages)) {
        QVERIFY(!verifies(cms, message, {}, Message::Binary));
        QVERIFY(message.isEmpty() || !verifies(cms, Text, message, Message::Ascii));
        Message opened(&cms);
        opened.startDecrypt();
        QVERIFY(!finish(opened, message));
    }
}

void TestSecureMessage::waitsForEvents()
{
    QCA::CMS cms;
    Message message(&cms);
    QSignalSpy finished(&message, &Message::finished);
    QSignalSpy written(&message, &Message::bytesWritten);
    message.setSigner(tokenKey(QStringLiteral("EC:secp256r1")));
    message.startSign(Message::Detached);
    message.update(Text.left(5));
    message.update(Text.mid(5));
    message.end();
    QVERIFY(finished.isEmpty());
    QVERIFY(finished.wait(20000));
    QVERIFY(message.success());
    QCOMPARE(message.hashName(), QStringLiteral("sha256"));
    QCOMPARE(opensslReads(message.signature(), Message::Binary, Text), Text);
    // No second signal must come in this time.
    QTest::qWait(100);
    QCOMPARE(finished.size(), 1);
    int count = 0;
    for (const QList<QVariant> &one : std::as_const(written))
        count += one.first().toInt();
    QCOMPARE(count, Text.size());
}

void TestSecureMessage::againAfterReset()
{
    QCA::CMS cms;
    Message message(&cms);
    for (const QByteArray &text : {QByteArray("one"), QByteArray("another")}) {
        message.reset();
        message.setSigner(m_file);
        message.startSign(Message::Message);
        QVERIFY(finish(message, text));
        QCOMPARE(opensslReads(message.read(), Message::Binary), text);
    }
}

// Whoever signs may close the letter while the token works.
void TestSecureMessage::letGo()
{
    m_token->control("delay C_Sign * 500");
    QCA::CMS cms;
    auto message = std::make_unique<Message>(&cms);
    message->setSigner(tokenKey(QStringLiteral("rsa:2048")));
    message->startSign(Message::Detached);
    message->update(Text);
    message->end();
    QTimer::singleShot(200, this, [&message] { message.reset(); });
    QTRY_VERIFY(!message);
    // The signature ends in the meantime, and must meet nobody.
    QTest::qWait(800);
    m_token->control();
    QVERIFY(!sign(cms, tokenKey(QStringLiteral("rsa:2048")), Message::Detached, Message::Binary)
                 .signature.isEmpty());
}

void TestSecureMessage::pinIsLeft()
{
    QVERIFY(m_token->replug(m_store->id()));
    QVERIFY(m_stores->waitForEntries(QStringLiteral("Mail"), 3));
    m_prompt->setPin({});
    QCA::CMS cms;
    const QCA::SecureMessageKey key = tokenKey(QStringLiteral("rsa:2048"));
    QVERIFY(sign(cms, key, Message::Detached, Message::Binary).signature.isEmpty());
    m_prompt->setPin(TestToken::pin());
    QVERIFY(!sign(cms, key, Message::Detached, Message::Binary).signature.isEmpty());
}

QTEST_GUILESS_MAIN(TestSecureMessage)
#include "tst_securemessage.moc"
