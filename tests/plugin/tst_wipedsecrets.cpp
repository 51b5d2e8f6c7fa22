// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What is given back to the heap holds no PIN, no password and no private key any more: each block
// is looked through as it is freed.
#include "console/secretinput.h"
#include "keystores/keystoremodel.h"
#include "qca/base/providers.h"
#include "qca/base/secret.h"
#include "qca/base/securedtext.h"
#include "requests/certificaterequest.h"
#include "signing/signverify.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/support/systemlist.h"
#include "tests/support/testcertificates.h"
#include "tools/certificatefile.h"

#include <QTextCodec>
#include <QtTest>

#include <array>
#include <atomic>
#include <cstring>

#include <dlfcn.h>
#include <execinfo.h>
#include <malloc.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool IsHeapOurs = false;
#else
constexpr bool IsHeapOurs = true;
#endif

namespace {

/// The bytes that are looked for; none while null.
std::atomic<const char *> wanted{nullptr};
std::atomic<size_t> wantedSize{0};
std::atomic<int> found{0};

/// libcrypto's decoders and encoders leave copies of a key; nobody outside can wipe those.
bool isWithinCoding()
{
    std::array<void *, 40> frames;
    const int count = backtrace(frames.data(), int(frames.size()));
    for (int i = 0; i < count; ++i) {
        Dl_info info;
        if (dladdr(frames[size_t(i)], &info) != 0 && info.dli_sname
            && (qstrncmp(info.dli_sname, "OSSL_DECODER_", 13) == 0
                || qstrncmp(info.dli_sname, "OSSL_ENCODER_", 13) == 0))
            return true;
    }
    return false;
}

void look(void *block)
{
    const char *secret = wanted;
    if (!secret || !block || !memmem(block, malloc_usable_size(block), secret, wantedSize))
        return;
    wanted = nullptr; // to tell the way here frees memory too
    if (!isWithinCoding())
        ++found;
    wanted = secret;
}

} // namespace

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
extern "C" {
void __libc_free(void *block);
// In place of libc's, for all libraries of this process.
void free(void *block) // NOLINT
{
    look(block);
    __libc_free(block);
}
}
#endif

using namespace TrivexTest;

namespace {

const PrivateHome privateHome;

/// Looks for `secret` from its beginning to `count()`.
class Watch {
public:
    explicit Watch(const QByteArray &secret)
        : m_secret(secret)
    {
        found = 0;
        wantedSize = size_t(m_secret.size());
        wanted = m_secret.constData();
    }
    ~Watch() { wanted = nullptr; }
    Q_DISABLE_COPY(Watch)

    /// The blocks so far that held it.
    int count()
    {
        wanted = nullptr;
        return found;
    }

private:
    const QByteArray m_secret;
};

const QString Password = QStringLiteral("a password of this test alone");

} // namespace

class TestWipedSecrets : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void finds();
    void secrets();
    void typedText();
    void bundleOfTheModule_data();
    void bundleOfTheModule();
    void bundleOfTheWindow();
    void privateKeyInFiles_data();
    void privateKeyInFiles();
    void pinOfTheRequest();
    void pinOfTheSigner();
    void pinOfAFile();

private:
    QCA::Initializer m_initializer;
    TestAuthority m_authority;
    QString m_bundle;
};

void TestWipedSecrets::initTestCase()
{
    if (!IsHeapOurs)
        QSKIP("the sanitizer has a heap of its own");
    QVERIFY(m_authority.isValid());
    setSystemList();
    m_bundle =
        m_authority.bundle({QStringLiteral("-algorithm"), QStringLiteral("RSA"),
                            QStringLiteral("-pkeyopt"), QStringLiteral("rsa_keygen_bits:2048")},
                           QStringLiteral("/CN=Bundle"), Password, QStringLiteral("name"));
    QVERIFY(!m_bundle.isEmpty());
}

// Else none of the others says anything.
void TestWipedSecrets::finds()
{
    const QByteArray secret = Password.toUtf8();
    Watch watch(secret);
    {
        QByteArray copy(secret.constData(), secret.size());
        copy.append('x');
    }
    QVERIFY(watch.count() > 0);
}

void TestWipedSecrets::secrets()
{
    const QByteArray secret = Password.toUtf8();
    Watch watch(secret);
    {
        const Trivex::Secret one{QCA::SecureArray(secret)};
        Trivex::Secret other(one);
        other.truncate(3); // the rest goes with it all the same
        Trivex::Secret moved(std::move(other));
        moved = one;
    }
    QCOMPARE(watch.count(), 0);
}

void TestWipedSecrets::typedText()
{
    Watch watch(Password.toUtf8());
    QCOMPARE(Trivex::securedText(Password.toUtf8()).size(), Password.size());
    QCOMPARE(watch.count(), 0);
}

void TestWipedSecrets::bundleOfTheModule_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<QByteArray>("encoded");
    const QString other = QStringLiteral("another one, which is wrong");
    const QString cyrillic = QStringLiteral("неверный пароль этого теста");
    QTest::newRow("right") << Password << Password.toLocal8Bit();
    QTest::newRow("wrong") << other << other.toLocal8Bit();
    QTest::newRow("beyond ASCII") << cyrillic << cyrillic.toLocal8Bit();
    // The encoding of old writers, which is tried too.
    QTest::newRow("of old writers")
        << cyrillic << QTextCodec::codecForName("windows-1251")->fromUnicode(cyrillic);
}

void TestWipedSecrets::bundleOfTheModule()
{
    QFETCH(QString, password);
    QFETCH(QByteArray, encoded);
    KeyStoreModel model;
    model.keyBundleFromFile(m_bundle, Password); // what is made once
    Watch watch(encoded);
    QCOMPARE(model.keyBundleFromFile(m_bundle, password), password == Password);
    model.resetImportedKeyBundle();
    QCOMPARE(watch.count(), 0);
}

void TestWipedSecrets::bundleOfTheWindow()
{
    Trivex::CertificateFile file;
    file.setPath(m_bundle);
    Watch watch(Password.toUtf8());
    file.unlock(Password);
    QTRY_VERIFY(file.isUnlocked());
    QCOMPARE(watch.count(), 0);
}

void TestWipedSecrets::privateKeyInFiles_data()
{
    QTest::addColumn<QStringList>("arguments");
    const auto row = [](const char *name, const QStringList &arguments) {
        QTest::newRow(name) << arguments;
    };
    row("plain", {QStringLiteral("pkcs8"), QStringLiteral("-topk8"), QStringLiteral("-nocrypt")});
    row("encrypted",
        {QStringLiteral("pkcs8"), QStringLiteral("-topk8"), QStringLiteral("-passout"),
         QStringLiteral("pass:secret")});
    row("traditional", {QStringLiteral("rsa"), QStringLiteral("-traditional")});
    row("traditional, encrypted",
        {QStringLiteral("rsa"), QStringLiteral("-traditional"), QStringLiteral("-aes128"),
         QStringLiteral("-passout"), QStringLiteral("pass:secret")});
}

// The first factor of the key, in any place where it was decoded.
void TestWipedSecrets::privateKeyInFiles()
{
    QFETCH(QStringList, arguments);
    const QString key = m_authority.file(QStringLiteral("key.pem"));
    m_authority.openssl({QStringLiteral("genpkey"), QStringLiteral("-algorithm"),
                         QStringLiteral("RSA"), QStringLiteral("-out"), key});
    const QByteArray pem = m_authority.openssl(arguments + QStringList{QStringLiteral("-in"), key});
    QVERIFY(pem.startsWith("-----BEGIN"));
    const auto read = [&] {
        return QCA::PrivateKey::fromPEM(QString::fromLatin1(pem), QCA::SecureArray("secret"),
                                        nullptr, Trivex::opensslProviderName());
    };
    // As libcrypto and DER have it: with the highest octets first.
    const QByteArray factor = read().toRSA().p().toArray().toByteArray().mid(1, 24);
    QVERIFY(factor.size() == 24);
    const QByteArray text = pem.split('\n').value(8); // behind all headers
    QVERIFY(text.size() == 64);
    for (const QByteArray &secret : {factor, text}) {
        Watch watch(secret);
        QVERIFY(!read().isNull());
        QCOMPARE(watch.count(), 0);
    }
}

void TestWipedSecrets::pinOfTheRequest()
{
    const auto pin = Password;
    Watch watch(pin.toLocal8Bit());
    {
        KeyStoreModel model;
        CertificateRequest request;
        QVERIFY(request.setProperty("prKeyPin", pin));
    }
    QCOMPARE(watch.count(), 0);
}

void TestWipedSecrets::pinOfTheSigner()
{
    Watch watch(Password.toLocal8Bit());
    {
        SignVerify signer;
        QVERIFY(QMetaObject::invokeMethod(&signer, "pinAccepted", Q_ARG(QString, Password)));
    }
    QCOMPARE(watch.count(), 0);
}

// Programs without a window take it from there.
void TestWipedSecrets::pinOfAFile()
{
    const QString path = m_authority.file(QStringLiteral("pin"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(Password.toUtf8() + '\n') > 0);
    file.close();
    Watch watch(Password.toUtf8());
    const auto pin = Trivex::secretFromFile(path);
    QVERIFY(pin);
    QCOMPARE(pin->size(), Password.size());
    QCOMPARE(watch.count(), 0);
}

QTEST_GUILESS_MAIN(TestWipedSecrets)

#include "tst_wipedsecrets.moc"
