// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/corpus.h"

#include <QCryptographicHash>
#include <QtCrypto>
#include <QtTest>

namespace {

constexpr int ModulusOctets = 256;

/// The text `value` to the third power, as long as the modulus.
QByteArray cube(const QCA::BigInteger &value)
{
    QCA::BigInteger result = value;
    result *= value;
    result *= value;
    QByteArray octets = result.toArray().toByteArray();
    return octets.rightJustified(ModulusOctets, '\0').right(ModulusOctets);
}

QCA::BigInteger numberOf(const QByteArray &octets)
{
    // Not negative, whatever the first octet is.
    return QCA::BigInteger(QCA::SecureArray('\0' + octets));
}

/// The largest number whose cube is not larger than `block`.
QCA::BigInteger cubeRoot(const QCA::BigInteger &block)
{
    QCA::BigInteger root = 0;
    for (int bit = 8 * ModulusOctets / 3 + 1; bit >= 0; --bit) {
        QCA::BigInteger step = 1;
        for (int i = 0; i < bit; ++i)
            step += step;
        QCA::BigInteger tried = root;
        tried += step;
        QCA::BigInteger power = tried;
        power *= tried;
        power *= tried;
        if (power <= block)
            root = tried;
    }
    return root;
}

/// A block that begins with `start`, and its cube root as a signature.
struct Forged {
    QByteArray block;
    QByteArray signature;

    explicit Forged(const QByteArray &start)
    {
        const QByteArray highest = start + QByteArray(ModulusOctets - start.size(), '\xff');
        const QCA::BigInteger root = cubeRoot(numberOf(highest));
        block = cube(root);
        signature = root.toArray().toByteArray().rightJustified(ModulusOctets, '\0');
    }
};

} // namespace

/// Generated keys have the exponent 3: whoever compares only the start of the padding takes a cube
/// root for a signature, without any private key.
class TestPadding : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void forged_data();
    void forged();

private:
    QCA::Initializer m_initializer;
    QCA::PrivateKey m_key;
};

void TestPadding::initTestCase()
{
    m_key = QCA::KeyGenerator().createRSA(8 * ModulusOctets, 3);
    QVERIFY(!m_key.isNull());
    QCOMPARE(m_key.toRSA().e(), QCA::BigInteger(3));
}

void TestPadding::forged_data()
{
    QTest::addColumn<QByteArray>("start");
    const QByteArray shortest = QByteArray("\x00\x01", 2) + QByteArray(8, '\xff') + '\0';
    const QByteArray information = QByteArray::fromHex("3031300d060960864801650304020105000420");
    QTest::newRow("something after the digest") << shortest + information;
    QTest::newRow("padding too short") << QByteArray("\x00\x01\xff\x00", 4) + information;
    QTest::newRow("no padding") << QByteArray("\x00\x01\x00", 3) + information;
    QTest::newRow("no parameters")
        << shortest + QByteArray::fromHex("302f300b06096086480165030402010420");
    QTest::newRow("a digest alone") << shortest;
}

void TestPadding::forged()
{
    QFETCH(QByteArray, start);
    const QByteArray data = "pay";
    const QByteArray digest = QCryptographicHash::hash(data, QCryptographicHash::Sha256);
    const Forged forged(start + digest);
    QVERIFY(forged.block.startsWith(start + digest));
    for (const auto &[text, algorithm] :
         {std::make_pair(data, QCA::EMSA3_SHA256), std::make_pair(digest, QCA::EMSA3_Raw)}) {
        QVERIFY(!m_key.toPublicKey().verifyMessage(text, forged.signature, algorithm));
        const QByteArray signature = m_key.signMessage(text, algorithm);
        QVERIFY(m_key.toPublicKey().verifyMessage(text, signature, algorithm));
    }
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestPadding test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_padding.moc"
