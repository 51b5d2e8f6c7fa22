// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/gostfixture.h"

#include "qca/keys/keys.h"
#include "qca/keys/signaturenumbers.h"
#include "tests/support/needtokens.h"
#include "tests/support/testcertificates.h"

#include <QDirIterator>

#include <openssl/crypto.h>

namespace TrivexTest {

QTestData &newRow(std::initializer_list<const char *> words)
{
    QByteArray name;
    for (const char *word : words)
        name.append(word).append(' ');
    return QTest::newRow(name.trimmed().constData());
}

QCA::SignatureAlgorithm signatureFor(const QCA::PKey &key)
{
    return QCA::SignatureAlgorithm(Trivex::keyType(key) == Trivex::Gost2012Key512
                                       ? Trivex::Gost2012Signature512
                                       : Trivex::Gost2012Signature256);
}

GostFixture::GostFixture()
    : TokenFixture(storeName())
{
}

QString GostFixture::storeName()
{
    return QStringLiteral("Гост");
}

QByteArray GostFixture::data()
{
    return QByteArrayLiteral("Подписанные данные");
}

void GostFixture::initTestCase()
{
    if (!hasGostEngine())
        QSKIP("the openssl engine gost is not installed");
    // The engine is for the openssl programs: this process has read its configuration by then.
    OPENSSL_init_crypto(OPENSSL_INIT_LOAD_CONFIG, nullptr);
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(write(QStringLiteral("openssl.cnf"),
                  "openssl_conf = conf\n[conf]\nengines = engines\n[engines]\ngost = gost\n"
                  "[gost]\nengine_id = gost\ndefault_algorithms = ALL\n"
                  "[req]\ndistinguished_name = name\n[name]\n"));
    qputenv("OPENSSL_CONF", QFile::encodeName(m_authority->file(QStringLiteral("openssl.cnf"))));
    m_token->useInThisProcess();
    qputenv("TRIVEX_FAULTY_GOST",
            QFile::encodeName(m_token->token().path() + QStringLiteral("/gost")));
    QVERIFY(start(0));
}

/// Each test leaves the token empty: bundles go with their keys, bare keys are removed by hand.
void GostFixture::cleanup()
{
    if (!m_store)
        return;
    m_token->control();
    m_prompt->setPin(TestToken::pin());
    m_prompt->resetCount();
    const auto entries = m_stores->currentEntries(storeName());
    for (const QCA::KeyStoreEntry &entry : entries)
        QVERIFY(m_stores->remove(m_store, entry.id()));
    QVERIFY(m_stores->waitForEntries(storeName(), 0));
    QCOMPARE(keyObjects(), 0);
    m_token->forget();
}

int GostFixture::keyObjects() const
{
    QDirIterator files(m_token->token().path() + QStringLiteral("/gost"), {QStringLiteral("*.key")},
                       QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    for (; files.hasNext(); files.next())
        ++count;
    return count;
}

bool GostFixture::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(m_authority->file(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool GostFixture::opensslVerifies(const QByteArray &publicInfo, const QByteArray &signature)
{
    const QString pem = m_authority->file(QStringLiteral("key.pem"));
    if (!write(QStringLiteral("key.der"), publicInfo) || !write(QStringLiteral("data"), data())
        || !write(QStringLiteral("signature"), signature)
        || m_authority
               ->openssl({QStringLiteral("pkey"), QStringLiteral("-pubin"),
                          QStringLiteral("-inform"), QStringLiteral("DER"), QStringLiteral("-in"),
                          QStringLiteral("key.der"), QStringLiteral("-out"), pem})
               .isNull())
        return false;
    const QString digest = signature.size() == 128 ? QStringLiteral("-md_gost12_512")
                                                   : QStringLiteral("-md_gost12_256");
    return m_authority
        ->openssl({QStringLiteral("dgst"), digest, QStringLiteral("-verify"), pem,
                   QStringLiteral("-signature"), QStringLiteral("signature"),
                   QStringLiteral("data")})
        .contains("Verified OK");
}

QString GostFixture::bundle(const QString &algorithm, const QString &set) const
{
    return m_authority->bundle({QStringLiteral("-algorithm"), algorithm, QStringLiteral("-pkeyopt"),
                                QStringLiteral("paramset:") + set},
                               QStringLiteral("/CN=Пётр"), QStringLiteral("пароль"),
                               QStringLiteral("Мой ключ"));
}

} // namespace TrivexTest
