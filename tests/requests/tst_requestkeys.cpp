// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Requests with public keys of every kind: which bundle belongs to which, and what is shown.
#include "keystores/keystoremodel.h"
#include "qca/base/providers.h"
#include "requests/certificaterequest.h"
#include "requests/certificaterequestmodel.h"
#include "requests/requestsigning.h"
#include "tests/requests/home.h"
#include "tests/support/testcertificates.h"

#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

const Home *home = nullptr;

// Just enough DER (X.690) to write requests for keys that nobody has.

QByteArray element(int tag, const QByteArray &content)
{
    QByteArray length(1, char(content.size()));
    if (content.size() >= 128) {
        length = QByteArray(1, char(0x82));
        length += char(content.size() >> 8);
        length += char(content.size());
    }
    return QByteArray(1, char(tag)) + length + content;
}

QByteArray sequence(const QByteArray &content)
{
    return element(0x30, content);
}

QByteArray bits(const QByteArray &content)
{
    return element(0x03, QByteArray(1, '\0') + content);
}

/// A positive number of `bytes` bytes, each of them odd.
QByteArray number(int bytes, char each)
{
    return element(0x02, QByteArray(bytes, char(each | 1)));
}

QByteArray algorithm(const char *oidHex, const QByteArray &parameters)
{
    return sequence(element(0x06, QByteArray::fromHex(oidHex)) + parameters);
}

QByteArray rsa(char modulus, char exponent)
{
    return sequence(algorithm("2a864886f70d010101", element(0x05, {}))
                    + bits(sequence(number(256, modulus) + number(1, exponent))));
}

QByteArray dsa(char y)
{
    const QByteArray parameters = sequence(number(256, 0x55) + number(32, 0x33) + number(1, 3));
    return sequence(algorithm("2a8648ce380401", parameters) + bits(number(255, y)));
}

QByteArray dh(char y)
{
    const QByteArray parameters = sequence(number(256, 0x55) + number(1, 3));
    return sequence(algorithm("2a864886f70d010301", parameters) + bits(number(255, y)));
}

/// Of no known algorithm, so that only the encoding is there to compare.
QByteArray unknown(char value)
{
    return sequence(algorithm("2a0304", {}) + bits(QByteArray(32, value)));
}

/// By the openssl program: points must lie on their curves.
QByteArray generated(const QStringList &arguments)
{
    const TestAuthority authority;
    const QString key = authority.file(QStringLiteral("k.pem"));
    authority.openssl(QStringList{QStringLiteral("genpkey"), QStringLiteral("-out"), key}
                      + arguments);
    return authority.openssl({QStringLiteral("pkey"), QStringLiteral("-in"), key,
                              QStringLiteral("-pubout"), QStringLiteral("-outform"),
                              QStringLiteral("DER")});
}

QByteArray curve(const char *name)
{
    return generated({QStringLiteral("-algorithm"), QStringLiteral("EC"),
                      QStringLiteral("-pkeyopt"),
                      QStringLiteral("ec_paramgen_curve:") + QLatin1String(name)});
}

QByteArray edwards()
{
    return generated({QStringLiteral("-algorithm"), QStringLiteral("ED25519")});
}

/// A request for that key, with a signature that nobody made.
QString makeRequestFile(const char *name, const QByteArray &publicKeyInfo)
{
    const QByteArray commonName =
        sequence(element(0x06, QByteArray::fromHex("550403")) + element(0x0c, "Name"));
    const QByteArray body =
        sequence(element(0x02, QByteArray(1, '\0')) + sequence(element(0x31, commonName))
                 + publicKeyInfo + element(0xa0, {}));
    const QByteArray der = sequence(body + algorithm("2a864886f70d01010b", element(0x05, {}))
                                    + bits(QByteArray(256, 'x')));
    QFile file(home->requests().filePath(QLatin1String(name)));
    file.open(QIODevice::WriteOnly);
    file.write("-----BEGIN CERTIFICATE REQUEST-----\n" + der.toBase64()
               + "\n-----END CERTIFICATE REQUEST-----\n");
    return file.fileName();
}

} // namespace

class TestRequestKeys : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void shown_data();
    void shown();
    void arrives_data();
    void arrives();
    void undecodableKey_data();
    void undecodableKey();
    void ownKeyIsNoOther();
};

void TestRequestKeys::init()
{
    home->clearRequests();
}

void TestRequestKeys::shown_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("text");
    QTest::newRow("RSA") << rsa(0x55, 3) << "RSA";
    QTest::newRow("DSA") << dsa(0x11) << "DSA";
    QTest::newRow("DH") << dh(0x11) << "DH";
    QTest::newRow("EC") << curve("P-384") << "Elliptic Curve";
    QTest::newRow("Ed25519") << edwards() << "";
    QTest::newRow("unknown") << unknown(1) << "";
    QTest::newRow("nothing") << sequence({}) << "";
}

void TestRequestKeys::shown()
{
    QFETCH(QByteArray, key);
    QFETCH(QString, text);
    const CertificateRequest request(makeRequestFile("a.csr", key), nullptr);
    QCOMPARE(request.commonName(), QStringLiteral("Name"));
    QCOMPARE(request.publicKeyTypeAlgorithm(), text);
    QCOMPARE(request.privateKeyAvailability(), QString());
}

void TestRequestKeys::arrives_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("other");
    QTest::newRow("RSA, other modulus") << rsa(0x55, 3) << rsa(0x57, 3);
    QTest::newRow("RSA, other exponent") << rsa(0x55, 3) << rsa(0x55, 5);
    QTest::newRow("DSA") << dsa(0x11) << dsa(0x13);
    QTest::newRow("DH") << dh(0x11) << dh(0x13);
    QTest::newRow("EC") << curve("P-384") << curve("P-384");
    QTest::newRow("EC, other curve") << curve("P-256") << curve("P-384");
    QTest::newRow("Ed25519") << edwards() << edwards();
    QTest::newRow("unknown") << unknown(1) << unknown(2);
    QTest::newRow("of another kind") << dsa(0x11) << dh(0x11);
}

/// The first request of exactly that key goes, and none else.
void TestRequestKeys::arrives()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, other);
    makeRequestFile("1.csr", other);
    makeRequestFile("2.csr", key);
    makeRequestFile("3.csr", key);
    KeyStoreModel stores;
    CertificateRequestModel model;
    model.setKeyStoreModel(&stores);
    QCOMPARE(model.rowCount(), 3);
    const QCA::PublicKey arrived =
        QCA::PublicKey::fromDER(key, nullptr, Trivex::opensslProviderName());
    QVERIFY(!arrived.isNull());
    Q_EMIT stores.keyBundleWritten(arrived);
    QCOMPARE(home->requestFiles(), QStringList({QStringLiteral("1.csr"), QStringLiteral("3.csr")}));
}

void TestRequestKeys::undecodableKey_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("nothing") << sequence({});
    QTest::newRow("RSA of nothing")
        << sequence(algorithm("2a864886f70d010101", element(0x05, {})) + bits({}));
    QTest::newRow("EC without a curve") << sequence(algorithm("2a8648ce3d0201", {}) + bits("x"));
}

/// It belongs to no private key, and stays a request all the same.
void TestRequestKeys::undecodableKey()
{
    QFETCH(QByteArray, key);
    KeyStoreModel stores;
    CertificateRequest request(makeRequestFile("a.csr", key), &stores);
    QSignalSpy missing(&request, &CertificateRequest::missingPrivateKey);
    QTest::ignoreMessage(QtWarningMsg, "PrivateKey of certificate request: Name.csr is null");
    request.setEditMode(true);
    QCOMPARE(missing.count(), 1);
    // Written again as it was, under the name that follows its subject.
    QCOMPARE(home->requestFiles(), QStringList({QStringLiteral("Name.csr")}));
}

// Without a store the object's own key is all there is: it signs for its own request alone.
void TestRequestKeys::ownKeyIsNoOther()
{
    const auto made = [] {
        return QCA::KeyGenerator().createRSA(2048, 65537, Trivex::opensslProviderName());
    };
    const QCA::PrivateKey own = made();
    const QCA::PrivateKey other = made();
    QVERIFY(!own.isNull() && !other.isNull());
    QVERIFY(Trivex::findPrivateKey(own.toPublicKey(), own, {}) == own);
    QVERIFY(Trivex::findPrivateKey(other.toPublicKey(), own, {}).isNull());
    QVERIFY(Trivex::findPrivateKey(QCA::PublicKey(), own, {}).isNull());
    QVERIFY(Trivex::findPrivateKey(own.toPublicKey(), QCA::PrivateKey(), {}).isNull());
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const Home place;
    home = &place;
    home->clearRequests();
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TestRequestKeys test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestkeys.moc"
