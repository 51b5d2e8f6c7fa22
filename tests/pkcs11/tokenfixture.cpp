// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/tokenfixture.h"

#include "qca/adapter/keygenerator.h"
#include "qca/keys/keys.h"

#include <QFile>
#include <QSignalSpy>

namespace TrivexTest {

namespace {

const QString OpenSsl = QStringLiteral("qca-norvel-openssl");
const QString Signer = QStringLiteral("signer");

/// The key that `begin` has the generator make on the token.
template <class Begin>
QCA::PrivateKey generate(const QCA::KeyStore &store, const QString &name, int patience,
                         const Begin &begin)
{
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    generator.setTarget(store.id(), name);
    QSignalSpy finished(&generator, &Trivex::KeyGenerator::finished);
    begin(generator);
    if (finished.isEmpty() && !finished.wait(patience))
        qFatal("a generation did not end");
    return generator.key();
}

} // namespace

TokenFixture::TokenFixture(const QString &storeName)
    : m_storeName(storeName)
{
}

bool TokenFixture::makeToken()
{
    m_token = std::make_unique<FaultyToken>(m_storeName);
    const TestToken &token = m_token->token();
    if (!token.isValid()) {
        qWarning("%s", qPrintable(token.problem()));
        return false;
    }
    m_authority = std::make_unique<TestAuthority>();
    return m_authority->isValid();
}

bool TokenFixture::addKey(const QString &type, const QString &id, const QString &name)
{
    const TestToken &token = m_token->token();
    if (!token.generateKeyPair(type, id, name))
        return false;
    const QByteArray der = m_authority->issue(token.publicKey(id), QStringLiteral("/CN=Signer"));
    return token.writeObject(QStringLiteral("cert"), der, id, name);
}

bool TokenFixture::addSigner()
{
    return addKey(QStringLiteral("rsa:2048"), QStringLiteral("01"), Signer);
}

bool TokenFixture::start(int entries)
{
    m_qca = std::make_unique<QCA::Initializer>();
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    m_stores = std::make_unique<Stores>();
    m_store = m_stores->waitFor(m_storeName);
    return m_store && m_stores->waitForEntries(m_storeName, entries);
}

QCA::PrivateKey TokenFixture::generateRsa(int bits, int exponent, const QString &name, int patience)
{
    return generate(*m_store, name, patience, [&](Trivex::KeyGenerator &generator) {
        generator.createRSA(bits, exponent, QStringLiteral("qca-norvel-pkcs11"));
    });
}

QCA::PrivateKey TokenFixture::generateCurve(const QString &curve, const QString &name, int patience)
{
    return generate(*m_store, name, patience, [&](Trivex::KeyGenerator &generator) {
        generator.createEC(curve, QStringLiteral("qca-norvel-gost"));
    });
}

void TokenFixture::removeGenerated()
{
    for (const char *type : {"privkey", "pubkey"})
        m_token->token().tool({QStringLiteral("--delete-object"), QStringLiteral("--type"),
                               QString::fromLatin1(type), QStringLiteral("--label"),
                               QStringLiteral("made")});
}

QByteArray TokenFixture::signature(QCA::PrivateKey key)
{
    return key.isNull()
        ? QByteArray()
        : key.signMessage(QByteArray("data"), QCA::EMSA3_SHA256, QCA::DefaultFormat);
}

bool TokenFixture::signs(const Stores &stores, const QString &storeName, const QString &entryName)
{
    const QCA::KeyStoreEntry entry = stores.entry(storeName, entryName);
    return !entry.isNull() && !signature(entry.keyBundle().privateKey()).isEmpty();
}

QByteArray TokenFixture::encryptedTo(const QCA::PrivateKey &key, const QByteArray &plain) const
{
    const QString publicFile = m_authority->file(QStringLiteral("public.der"));
    const QString plainFile = m_authority->file(QStringLiteral("plain"));
    const auto write = [&](const QString &name, const QByteArray &bytes) {
        QFile file(name);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    };
    if (!write(publicFile, Trivex::encodedPublicKey(key)) || !write(plainFile, plain))
        return {};
    return m_authority->openssl({QStringLiteral("pkeyutl"), QStringLiteral("-encrypt"),
                                 QStringLiteral("-pubin"), QStringLiteral("-keyform"),
                                 QStringLiteral("DER"), QStringLiteral("-inkey"), publicFile,
                                 QStringLiteral("-in"), plainFile});
}

QString TokenFixture::issueAndImport(const QCA::PrivateKey &key, const QString &subject)
{
    const QByteArray der = m_authority->issue(Trivex::encodedPublicKey(key), subject);
    const QString id = m_stores->write(m_store, QCA::Certificate::fromDER(der, nullptr, OpenSsl));
    const auto isListed = [&] { return !withId(m_stores->entries(m_storeName), id).isNull(); };
    return QTest::qWaitFor(isListed) ? id : QString();
}

QCA::KeyBundle TokenFixture::makeBundle(const QString &algorithm, const QString &option,
                                        const QString &subject) const
{
    const QString file = m_authority->bundle(
        {QStringLiteral("-algorithm"), algorithm, QStringLiteral("-pkeyopt"), option}, subject,
        QStringLiteral("x"), QStringLiteral("bundle"));
    return QCA::KeyBundle::fromFile(file, QCA::SecureArray("x"), nullptr, OpenSsl);
}

QCA::KeyBundle TokenFixture::makeCurveBundle(const QString &subject) const
{
    return makeBundle(QStringLiteral("EC"), QStringLiteral("ec_paramgen_curve:P-256"), subject);
}

QCA::Certificate TokenFixture::root() const
{
    return QCA::Certificate::fromDER(m_authority->certificate(), nullptr, OpenSsl);
}

bool TokenFixture::removeOthers()
{
    bool isGood = true;
    const auto entries = m_stores->currentEntries(m_storeName);
    for (const QCA::KeyStoreEntry &entry : entries) {
        if (entry.name() != Signer)
            isGood = m_stores->remove(m_store, entry.id()) && isGood;
    }
    return isGood;
}

} // namespace TrivexTest
