// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/bounds.h"
#include "qca/base/providers.h"
#include "qca/keys/bignumbers.h"
#include "qca/keys/eckeycontext.h"
#include "qca/keys/gostpublickey.h"
#include "qca/keys/keys.h"
#include "qca/keys/pkeycontainer.h"
#include "qca/keys/rsakeycontext.h"
#include "qca/x509/certificateinfo.h"
#include "tests/x509/corpus.h"

#include <QRegularExpression>
#include <QTemporaryFile>
#include <QtTest>

using namespace Trivex;

namespace {

QString fileWith(QTemporaryFile &file, const QByteArray &data)
{
    if (!file.open() || file.write(data) != data.size())
        qFatal("No temporary file");
    file.close();
    return file.fileName();
}

QCA::PrivateKey key(const char *name, const char *password = "")
{
    return QCA::PrivateKey::fromPEM(QString::fromLatin1(Corpus::read(QString::fromLatin1(name))),
                                    QCA::SecureArray(password), nullptr, opensslProviderName());
}

const QByteArray Message = "message to sign";

} // namespace

class TestKeys : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsForms_data();
    void readsForms();
    void tellsWrongPassword();
    void signsLikeOpenssl_data();
    void signsLikeOpenssl();
    void signsRawBlocks();
    void signsCurves();
    void signsInOtherFormats();
    void encrypts();
    void generates();
    void generatesOnSmallDomains_data();
    void generatesOnSmallDomains();
    void whatIsMadeCanBeRead_data();
    void whatIsMadeCanBeRead();
    void abandonsGeneration();
    void copiesGoOn();
    void readsForeignKeys();
    void derivesSecrets();
    void takesDsaNumbersAsStock();
    void takesDhNumbersAsStock();
    void neverCrashesOnNothing();
    void keepsUnknownAlgorithms();
    void takesGostKeysApart();
    void comparesGostKeysByCurveAndPoint();

private:
    QCA::Initializer m_initializer;
};

void TestKeys::readsForms_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("password");
    QTest::addColumn<int>("type");
    QTest::newRow("plain") << QByteArray("rsa.key") << QByteArray() << int(RsaKey);
    QTest::newRow("aes") << QByteArray("key-aes.pem") << QByteArray("secret") << int(RsaKey);
    QTest::newRow("rc2") << QByteArray("key-rc2.pem") << QByteArray("secret") << int(RsaKey);
    QTest::newRow("traditional") << QByteArray("key-traditional.pem") << QByteArray("secret")
                                 << int(RsaKey);
    QTest::newRow("sec1") << QByteArray("key-ec.pem") << QByteArray() << int(EllipticCurveKey);
    QTest::newRow("ed25519") << QByteArray("key-ed25519.pem") << QByteArray() << int(OtherKey);
    QTest::newRow("dsa") << QByteArray("dsa.key") << QByteArray() << int(DsaKey);
    QTest::newRow("dh") << QByteArray("dh.key") << QByteArray() << int(DhKey);
}

void TestKeys::readsForms()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, password);
    QFETCH(int, type);
    const QCA::PrivateKey read = key(file.constData(), password.constData());
    QVERIFY(!read.isNull());
    QVERIFY(read.isPrivate());
    QCOMPARE(keyType(read), type);
    QVERIFY(read.bitSize() > 0);
    // The public half is the one that openssl finds.
    const QByteArray expected = Corpus::openssl(
        {QStringLiteral("pkey"), QStringLiteral("-in"), Corpus::path(QString::fromLatin1(file)),
         QStringLiteral("-passin"), QStringLiteral("pass:secret"), QStringLiteral("-pubout"),
         QStringLiteral("-outform"), QStringLiteral("DER"), QStringLiteral("-provider"),
         QStringLiteral("default"), QStringLiteral("-provider"), QStringLiteral("legacy")});
    QVERIFY(!expected.isEmpty());
    QCOMPARE(encodedPublicKey(read), expected);
    QCOMPARE(read.toPublicKey().toDER(), expected);
    QVERIFY(!read.toPublicKey().isPrivate());
    // And both forms come back.
    QVERIFY(isSamePublicKey(
        QCA::PrivateKey::fromPEM(read.toPEM(), {}, nullptr, opensslProviderName()).toPublicKey(),
        read.toPublicKey()));
    const QCA::SecureArray locked = read.toDER(QCA::SecureArray("other"), QCA::PBES2_AES256_SHA1);
    QVERIFY(isSamePublicKey(
        QCA::PrivateKey::fromDER(locked, QCA::SecureArray("other"), nullptr, opensslProviderName())
            .toPublicKey(),
        read.toPublicKey()));
}

void TestKeys::tellsWrongPassword()
{
    PKeyContainer container(nullptr);
    for (const char *file : {"key-aes.pem", "key-rc2.pem", "key-traditional.pem"}) {
        const QString pem = QString::fromLatin1(Corpus::read(QString::fromLatin1(file)));
        QCOMPARE(container.privateFromPEM(pem, QCA::SecureArray("wrong")), QCA::ErrorPassphrase);
        QCOMPARE(container.privateFromPEM(pem, {}), QCA::ErrorPassphrase);
        QCOMPARE(container.privateFromPEM(pem, QCA::SecureArray("secret")), QCA::ConvertGood);
    }
    QCOMPARE(container.privateFromPEM(QStringLiteral("nothing"), {}), QCA::ErrorDecode);
    QCOMPARE(container.privateFromDER(QCA::SecureArray("\x30\x03"), {}), QCA::ErrorDecode);
}

void TestKeys::signsLikeOpenssl_data()
{
    QTest::addColumn<int>("algorithm");
    QTest::addColumn<QString>("digest");
    QTest::newRow("sha1") << int(QCA::EMSA3_SHA1) << QStringLiteral("-sha1");
    QTest::newRow("md5") << int(QCA::EMSA3_MD5) << QStringLiteral("-md5");
    QTest::newRow("ripemd160") << int(QCA::EMSA3_RIPEMD160) << QStringLiteral("-rmd160");
    QTest::newRow("sha224") << int(QCA::EMSA3_SHA224) << QStringLiteral("-sha224");
    QTest::newRow("sha256") << int(QCA::EMSA3_SHA256) << QStringLiteral("-sha256");
    QTest::newRow("sha384") << int(QCA::EMSA3_SHA384) << QStringLiteral("-sha384");
    QTest::newRow("sha512") << int(QCA::EMSA3_SHA512) << QStringLiteral("-sha512");
}

void TestKeys::signsLikeOpenssl()
{
    QFETCH(int, algorithm);
    QFETCH(QString, digest);
    QCA::PrivateKey rsa = key("rsa.key");
    const auto number = QCA::SignatureAlgorithm(algorithm);
    const QByteArray signature = rsa.signMessage(Message, number);
    QCOMPARE(signature,
             Corpus::openssl({QStringLiteral("dgst"), digest, QStringLiteral("-sign"),
                              Corpus::path(QStringLiteral("rsa.key"))},
                             Message));
    QVERIFY(rsa.toPublicKey().verifyMessage(Message, signature, number));
    QVERIFY(!rsa.toPublicKey().verifyMessage("another", signature, number));
    QVERIFY(!rsa.toPublicKey().verifyMessage(Message, QByteArray(), number));
}

void TestKeys::signsRawBlocks()
{
    QCA::PrivateKey rsa = key("rsa.key");
    for (const QByteArray &block : {QByteArray("any octets"), QByteArray(245, 'x')}) {
        const QByteArray signature = rsa.signMessage(block, QCA::EMSA3_Raw);
        QCOMPARE(
            Corpus::openssl({QStringLiteral("pkeyutl"), QStringLiteral("-verifyrecover"),
                             QStringLiteral("-inkey"), Corpus::path(QStringLiteral("rsa.key"))},
                            signature),
            block);
        QVERIFY(rsa.toPublicKey().verifyMessage(block, signature, QCA::EMSA3_Raw));
    }
    // One octet more than the padding leaves room for.
    QVERIFY(rsa.signMessage(QByteArray(246, 'x'), QCA::EMSA3_Raw).isEmpty());
    QVERIFY(rsa.signMessage(Message, QCA::SignatureUnknown).isEmpty());
}

void TestKeys::signsCurves()
{
    for (const char *file : {"ec-256.key", "ec-384.key", "ec-521.key"}) {
        QCA::PrivateKey curve = key(file);
        const QByteArray signature =
            curve.signMessage(Message, QCA::SignatureAlgorithm(EcdsaSha256Signature));
        QTemporaryFile signatureFile;
        QVERIFY(
            !Corpus::openssl({QStringLiteral("dgst"), QStringLiteral("-sha256"),
                              QStringLiteral("-prverify"), Corpus::path(QString::fromLatin1(file)),
                              QStringLiteral("-signature"), fileWith(signatureFile, signature)},
                             Message)
                 .isEmpty());
        QVERIFY(curve.toPublicKey().verifyMessage(Message, signature, QCA::EMSA3_SHA256));
        QVERIFY(!curve.toPublicKey().verifyMessage(Message, signature, QCA::EMSA3_SHA384));
        // The same over a digest that is made elsewhere.
        const QByteArray digest = QCA::Hash(QStringLiteral("sha256")).hash(Message).toByteArray();
        QVERIFY(curve.toPublicKey().verifyMessage(digest, signature, QCA::EMSA3_Raw));
    }
    QCA::PrivateKey edwards = key("ed25519.key");
    const QByteArray signature = edwards.signMessage(Message, QCA::EMSA3_Raw);
    QCOMPARE(signature.size(), 64);
    QVERIFY(edwards.toPublicKey().verifyMessage(Message, signature, QCA::EMSA3_Raw));
    QVERIFY(!edwards.toPublicKey().verifyMessage("another", signature, QCA::EMSA3_Raw));
}

void TestKeys::signsInOtherFormats()
{
    QCA::PrivateKey curve = key("ec-521.key");
    const QByteArray flat = curve.signMessage(Message, QCA::EMSA3_SHA512, QCA::IEEE_1363);
    QCOMPARE(flat.size(), 132);
    QVERIFY(curve.toPublicKey().verifyMessage(Message, flat, QCA::EMSA3_SHA512, QCA::IEEE_1363));
    QVERIFY(!curve.toPublicKey().verifyMessage(Message, flat, QCA::EMSA3_SHA512));
    QCA::PrivateKey dsa = key("dsa.key");
    const QByteArray ieee = dsa.signMessage(Message, QCA::EMSA1_SHA1);
    // Twice the order of the group, which has 224 bits.
    QCOMPARE(ieee.size(), 56);
    QVERIFY(dsa.toPublicKey().verifyMessage(Message, ieee, QCA::EMSA1_SHA1));
    const QByteArray der = dsa.signMessage(Message, QCA::EMSA1_SHA1, QCA::DERSequence);
    QVERIFY(dsa.toPublicKey().verifyMessage(Message, der, QCA::EMSA1_SHA1, QCA::DERSequence));
    QVERIFY(!dsa.toPublicKey().verifyMessage("another", der, QCA::EMSA1_SHA1, QCA::DERSequence));
}

void TestKeys::encrypts()
{
    QCA::PrivateKey rsa = key("rsa.key");
    for (const auto algorithm : {QCA::EME_PKCS1v15, QCA::EME_PKCS1_OAEP}) {
        const QCA::SecureArray locked =
            rsa.toPublicKey().encrypt(QCA::SecureArray(Message), algorithm);
        QCOMPARE(locked.size(), 256);
        QCA::SecureArray plain;
        QVERIFY(rsa.decrypt(locked, &plain, algorithm));
        QCOMPARE(plain.toByteArray(), Message);
        QVERIFY(!key("other.key").decrypt(locked, &plain, algorithm)
                || plain.toByteArray() != Message);
    }
}

void TestKeys::generates()
{
    QCA::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    QSignalSpy finished(&generator, &QCA::KeyGenerator::finished);
    generator.createRSA(1024, 3, opensslProviderName());
    QTRY_COMPARE(finished.size(), 1);
    const QCA::RSAPrivateKey rsa = generator.key().toRSA();
    QCOMPARE(rsa.bitSize(), 1024);
    QCOMPARE(rsa.e(), QCA::BigInteger(3));
    QCOMPARE(QCA::BigInteger(rsa.p()) *= rsa.q(), rsa.n());

    EcKeyContext curve(QCA::findProvider(opensslProviderName()));
    curve.createPrivate(QStringLiteral("ec-secp384r1"), true);
    QVERIFY(curve.isPrivate());
    QCOMPARE(curve.bits(), 384);
    curve.createPrivate(QStringLiteral("ec-nonsense"), true);
    QVERIFY(curve.isNull());
    QSignalSpy ended(&curve, &QCA::PKeyBase::finished);
    curve.createPrivate(QStringLiteral("ec-secp384r1"), false);
    QVERIFY(curve.isNull());
    QVERIFY(ended.isValid());
    QTRY_VERIFY(!curve.isNull());
    QTRY_COMPARE(ended.size(), 1);
    QCOMPARE(curve.keyType(), int(EllipticCurveKey));
}

void TestKeys::generatesOnSmallDomains_data()
{
    QTest::addColumn<int>("set");
    QTest::addColumn<int>("bits");
    QTest::newRow("512") << int(QCA::DSA_512) << 512;
    QTest::newRow("768") << int(QCA::DSA_768) << 768;
    QTest::newRow("1024") << int(QCA::DSA_1024) << 1024;
}

// Sizes that nobody should choose any more, but QCA offers, and its stock provider makes.
void TestKeys::generatesOnSmallDomains()
{
    QFETCH(int, set);
    QFETCH(int, bits);
    const QString stock = QStringLiteral("qca-ossl");
    if (!QCA::isSupported("dlgroup", stock))
        QSKIP("no stock provider");
    QCA::KeyGenerator generator;
    const QCA::DLGroup group = generator.createDLGroup(QCA::DLGroupSet(set), stock);
    QVERIFY(!group.isNull());
    QCA::PrivateKey key = generator.createDSA(group, opensslProviderName());
    QVERIFY(!key.isNull());
    const QCA::DSAPrivateKey numbers = key.toDSA();
    QCOMPARE(numbers.bitSize(), bits);
    QVERIFY(numbers.x() > QCA::BigInteger(0) && numbers.x() < group.q());
    QVERIFY(numbers.domain().p() == group.p());
    const QCA::PrivateKey again = generator.createDSA(group, opensslProviderName());
    QVERIFY(again.toDSA().x() != numbers.x());
    // What is signed with it counts for the stock provider too.
    const QByteArray signature = key.signMessage(Message, QCA::EMSA1_SHA1);
    QCA::PublicKey theirs = QCA::DSAPublicKey(group, numbers.y(), stock);
    QVERIFY(theirs.verifyMessage(Message, signature, QCA::EMSA1_SHA1));
    QVERIFY(!theirs.verifyMessage(QByteArray("another"), signature, QCA::EMSA1_SHA1));
    // A domain that is none is refused.
    const QCA::DLGroup none(QCA::BigInteger(4), QCA::BigInteger(1), QCA::BigInteger(2));
    QVERIFY(generator.createDSA(none, opensslProviderName()).isNull());
}

void TestKeys::whatIsMadeCanBeRead_data()
{
    QTest::addColumn<bool>("isDsa");
    QTest::addColumn<int>("bits");
    QTest::addColumn<bool>("good");
    for (const bool isDsa : {true, false}) {
        const char *name = isDsa ? "DSA" : "DH";
        QTest::addRow("%s, the most", name) << isDsa << MaxDiscreteLogBits << true;
        QTest::addRow("%s, one more", name) << isDsa << MaxDiscreteLogBits + 1 << false;
        QTest::addRow("%s, as long as RSA's", name) << isDsa << MaxNumberBits << false;
    }
}

/// A domain has one bound, for making a key and for reading it.
void TestKeys::whatIsMadeCanBeRead()
{
    QFETCH(bool, isDsa);
    QFETCH(int, bits);
    QFETCH(bool, good);
    QByteArray number((bits + 7) / 8, '\xff');
    number[0] = char((1 << ((bits - 1) % 8 + 1)) - 1);
    const QCA::BigInteger p{QCA::SecureArray(QByteArray(1, '\0') + number)};
    const QCA::BigInteger q{QCA::SecureArray(QByteArray::fromHex("00fffffffffffffff1"))};
    const QCA::DLGroup group(p, q, QCA::BigInteger(3));
    QCA::KeyGenerator generator;
    if (!good)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("could not be read")));
    const QCA::PrivateKey made = isDsa ? generator.createDSA(group, opensslProviderName())
                                       : generator.createDH(group, opensslProviderName());
    QCOMPARE(!made.isNull(), good);
    if (!good)
        return;
    QCA::ConvertResult result = QCA::ErrorDecode;
    const QCA::PrivateKey again =
        QCA::PrivateKey::fromDER(made.toDER(), {}, &result, opensslProviderName());
    QCOMPARE(result, QCA::ConvertGood);
    QCOMPARE(again.bitSize(), bits);
}

void TestKeys::abandonsGeneration()
{
    QElapsedTimer timer;
    timer.start();
    {
        RsaKeyContext context(nullptr);
        context.createPrivate(16384, 65537, false);
        QTest::qWait(20); // in the middle of the generation
    }
    // To its end it would take minutes.
    QVERIFY(timer.elapsed() < 20000);
}

void TestKeys::copiesGoOn()
{
    QCA::PrivateKey first = key("rsa.key");
    first.startSign(QCA::EMSA3_SHA256);
    first.update(QByteArray("message "));
    QCA::PrivateKey second = first;
    second.update(QByteArray("to sign"));
    first.update(QByteArray("to lose"));
    QCOMPARE(second.signature(), key("rsa.key").signMessage(Message, QCA::EMSA3_SHA256));
    QVERIFY(first.signature() != key("rsa.key").signMessage(Message, QCA::EMSA3_SHA256));
}

void TestKeys::readsForeignKeys()
{
    const QString stock = QStringLiteral("qca-ossl");
    if (!QCA::findProvider(stock))
        QSKIP("no stock provider");
    const QString pem = QString::fromLatin1(Corpus::read(QStringLiteral("rsa.key")));
    const QCA::PrivateKey foreign = QCA::PrivateKey::fromPEM(pem, {}, nullptr, stock);
    QVERIFY(!foreign.isNull());
    QVERIFY(isSamePublicKey(foreign.toPublicKey(), key("rsa.key").toPublicKey()));
    PKeyContainer container(QCA::findProvider(opensslProviderName()));
    const auto *context = static_cast<const QCA::PKeyContext *>(foreign.context());
    QVERIFY(container.importKey(context->key()));
    QCOMPARE(container.privateToDER({}, QCA::PBEDefault), key("rsa.key").toDER());
}

void TestKeys::derivesSecrets()
{
    const QCA::DHPrivateKey mine = key("dh.key").toDH();
    QVERIFY(!mine.isNull());
    QCA::KeyGenerator generator;
    QCA::PrivateKey theirs = generator.createDH(mine.domain(), opensslProviderName());
    QVERIFY(!theirs.isNull());
    QCA::PrivateKey own = key("dh.key");
    const QCA::SymmetricKey secret = own.deriveKey(theirs.toPublicKey());
    QVERIFY(!secret.isEmpty());
    QVERIFY(secret == theirs.deriveKey(own.toPublicKey()));
    QVERIFY(own.deriveKey(key("rsa.key").toPublicKey()).isEmpty());
}

/// A key that is put together from its numbers is the same key as stock's, in both directions.
void TestKeys::takesDsaNumbersAsStock()
{
    const QString stock = QStringLiteral("qca-ossl");
    if (!QCA::isSupported("dsa", stock))
        QSKIP("no stock provider");
    const QCA::DSAPrivateKey numbers = key("dsa.key").toDSA();
    const QCA::DLGroup group = numbers.domain();
    QCA::DSAPrivateKey ours(group, numbers.y(), numbers.x(), opensslProviderName());
    QCA::DSAPrivateKey theirs(group, numbers.y(), numbers.x(), stock);
    QVERIFY(!ours.isNull() && !theirs.isNull());
    QCOMPARE(ours.bitSize(), theirs.bitSize());
    QCOMPARE(ours.x().toString(), theirs.x().toString());
    QCOMPARE(ours.y().toString(), theirs.y().toString());
    QCOMPARE(ours.domain().p().toString(), theirs.domain().p().toString());
    QCOMPARE(ours.domain().q().toString(), theirs.domain().q().toString());
    QCOMPARE(ours.domain().g().toString(), theirs.domain().g().toString());
    QCOMPARE(ours.toDER(), theirs.toDER());
    QCOMPARE(ours.toDER(), key("dsa.key").toDER());
    QCA::DSAPublicKey ourPublic(group, numbers.y(), opensslProviderName());
    QCA::DSAPublicKey theirPublic(group, numbers.y(), stock);
    QCOMPARE(ourPublic.toDER(), theirPublic.toDER());
    // Stock cuts the two numbers of the other format to 20 octets each, which this domain exceeds;
    // for it see `generatesOnSmallDomains`.
    const auto format = QCA::DERSequence;
    const QByteArray made = ours.signMessage(Message, QCA::EMSA1_SHA1, format);
    QVERIFY(theirPublic.verifyMessage(Message, made, QCA::EMSA1_SHA1, format));
    const QByteArray other = theirs.signMessage(Message, QCA::EMSA1_SHA1, format);
    QVERIFY(ourPublic.verifyMessage(Message, other, QCA::EMSA1_SHA1, format));
    QVERIFY(!ourPublic.verifyMessage(QByteArray("another"), other, QCA::EMSA1_SHA1, format));
}

void TestKeys::takesDhNumbersAsStock()
{
    const QString stock = QStringLiteral("qca-ossl");
    if (!QCA::isSupported("dh", stock))
        QSKIP("no stock provider");
    const QCA::DHPrivateKey numbers = key("dh.key").toDH();
    const QCA::DLGroup group = numbers.domain();
    QCA::DHPrivateKey ours(group, numbers.y(), numbers.x(), opensslProviderName());
    QCA::DHPrivateKey theirs(group, numbers.y(), numbers.x(), stock);
    QVERIFY(!ours.isNull() && !theirs.isNull());
    QCOMPARE(ours.bitSize(), theirs.bitSize());
    QCOMPARE(ours.x().toString(), theirs.x().toString());
    QCOMPARE(ours.y().toString(), theirs.y().toString());
    QCOMPARE(ours.domain().p().toString(), theirs.domain().p().toString());
    QCOMPARE(ours.domain().g().toString(), theirs.domain().g().toString());
    QCOMPARE(ours.toDER(), theirs.toDER());
    const QCA::DHPrivateKey other =
        QCA::KeyGenerator().createDH(group, opensslProviderName()).toDH();
    QVERIFY(!other.isNull());
    const QCA::SymmetricKey ourSecret =
        ours.deriveKey(QCA::DHPublicKey(group, other.y(), opensslProviderName()));
    const QCA::SymmetricKey theirSecret =
        theirs.deriveKey(QCA::DHPublicKey(group, other.y(), stock));
    QVERIFY(!ourSecret.isEmpty());
    QCOMPARE(ourSecret.toByteArray(), theirSecret.toByteArray());
}

void TestKeys::neverCrashesOnNothing()
{
    RsaKeyContext rsa(nullptr);
    QVERIFY(rsa.isNull());
    QCOMPARE(rsa.n(), QCA::BigInteger(0));
    rsa.startSign(QCA::EMSA3_SHA256, QCA::DefaultFormat);
    QVERIFY(rsa.endSign().isEmpty());
    rsa.startVerify(QCA::EMSA3_SHA256, QCA::DefaultFormat);
    QVERIFY(!rsa.endVerify(QByteArray(256, 'x')));
    QVERIFY(rsa.encrypt(QCA::SecureArray("x"), QCA::EME_PKCS1v15).isEmpty());
    EcKeyContext curve(nullptr);
    curve.startVerify(QCA::EMSA3_SHA256, QCA::DefaultFormat);
    QVERIFY(!curve.endVerify("x"));
    PKeyContainer container(nullptr);
    QVERIFY(container.publicToDER().isEmpty());
    QVERIFY(container.privateToPEM({}, QCA::PBEDefault).isEmpty());
    QVERIFY(!makePublicKeyContext("nothing", nullptr));
    // A public key does not sign.
    QCA::PublicKey half = key("ec-384.key").toPublicKey();
    QVERIFY(half.toPrivateKey().isNull());
}

void TestKeys::keepsUnknownAlgorithms()
{
    const QCA::PublicKey unknown =
        Corpus::certificate(QStringLiteral("key-unknown.der")).subjectPublicKey();
    QCOMPARE(keyType(unknown), int(OtherKey));
    QCOMPARE(unknown.bitSize(), 0);
    QVERIFY(!unknown.isNull());
    QVERIFY(!encodedPublicKey(unknown).isEmpty());
    const QCA::PublicKey gost =
        Corpus::certificate(QStringLiteral("gost-2012-512-octets.der")).subjectPublicKey();
    QCOMPARE(keyType(gost), int(Gost2012Key512));
    QCOMPARE(gost.bitSize(), 512);
}

void TestKeys::takesGostKeysApart()
{
    const QByteArray encoded = encodedPublicKey(
        Corpus::certificate(QStringLiteral("gost-2012-512-octets.der")).subjectPublicKey());
    const GostPublicKey key = GostPublicKey::fromPublicInfo(encoded);
    QCOMPARE(key.keyType, int(Gost2012Key512));
    QCOMPARE(key.point.size(), 128);
    QVERIFY(key.curve.startsWith("1.2.643.7.1.2.1.2."));
    QCOMPARE(key.publicInfo(), encoded);
    // Nothing that is cut short or changed is taken for a key, and nothing is read behind its end.
    for (int size = 0; size < encoded.size(); ++size)
        QVERIFY(!GostPublicKey::fromPublicInfo(encoded.left(size)).isValid());
    for (int i = 0; i < encoded.size() - 128; ++i) {
        QByteArray changed = encoded;
        changed[i] = char(changed.at(i) ^ 0x40);
        const GostPublicKey other = GostPublicKey::fromPublicInfo(changed);
        QVERIFY(!other.isValid() || other.point.size() == 128 || other.point.size() == 64);
    }
    QVERIFY(!GostPublicKey().isValid());
    QVERIFY(GostPublicKey().publicInfo().isEmpty());
}

void TestKeys::comparesGostKeysByCurveAndPoint()
{
    GostPublicKey gost;
    gost.keyType = Gost2012Key256;
    gost.curve = "1.2.643.2.2.35.1";
    gost.digest = "1.2.643.7.1.1.2.2";
    gost.point = QByteArray(64, 'x');
    const QByteArray encoded = gost.publicInfo();
    const QByteArray form = comparablePublicInfo(encoded);
    QVERIFY(!form.isEmpty());
    const auto formWith = [&](auto GostPublicKey::*field, auto value) {
        GostPublicKey other = gost;
        other.*field = value;
        return comparablePublicInfo(other.publicInfo());
    };
    QCOMPARE(formWith(&GostPublicKey::digest, QByteArray()), form);
    QCOMPARE(formWith(&GostPublicKey::digest, QByteArray("1.2.643.2.2.30.1")), form);
    QCOMPARE(formWith(&GostPublicKey::keyType, int(Gost2001Key)), form);
    // The same curve by its other names.
    QCOMPARE(formWith(&GostPublicKey::curve, QByteArray("1.2.643.2.2.36.0")), form);
    QCOMPARE(formWith(&GostPublicKey::curve, QByteArray("1.2.643.7.1.2.1.1.2")), form);
    QVERIFY(formWith(&GostPublicKey::curve, QByteArray("1.2.643.2.2.35.2")) != form);
    QVERIFY(formWith(&GostPublicKey::curve, QByteArray("1.2.643.7.1.2.1.1.1")) != form);
    QVERIFY(formWith(&GostPublicKey::point, QByteArray(64, 'y')) != form);
    // All other keys as they stand.
    const QByteArray curve = encodedPublicKey(key("ec-384.key").toPublicKey());
    QCOMPARE(comparablePublicInfo(curve), curve);
    QCOMPARE(comparablePublicInfo("nothing"), QByteArray("nothing"));
    QCOMPARE(comparablePublicInfo({}), QByteArray());
    // Through QCA.
    const auto publicKey = [](const QByteArray &der) {
        return QCA::PublicKey::fromDER(der, nullptr, opensslProviderName());
    };
    GostPublicKey other = gost;
    other.digest.clear();
    QVERIFY(isSamePublicKey(publicKey(encoded), publicKey(other.publicInfo())));
    other.point[3] = 'y';
    QVERIFY(!isSamePublicKey(publicKey(encoded), publicKey(other.publicInfo())));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestKeys test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_keys.moc"
