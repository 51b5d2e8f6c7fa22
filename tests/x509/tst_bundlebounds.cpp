// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Bundles at their bounds and one above: members, checks and iterations.
#include "qca/base/bounds.h"
#include "qca/base/providers.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/bundlebuilder.h"
#include "tests/x509/corpus.h"

#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

namespace {

X509Handle parsed(const QByteArray &der)
{
    const auto *data = reinterpret_cast<const unsigned char *>(der.constData());
    return X509Handle(d2i_X509(nullptr, &data, der.size()));
}

QCA::KeyBundle read(BundleBuilder &bundle, QCA::ConvertResult *result,
                    const QList<QByteArray> &safes = {},
                    const char *password = BundleBuilder::Password)
{
    const QByteArray der = bundle.sealed(BundleBuilder::Password, true, safes);
    return QCA::KeyBundle::fromArray(der, QCA::SecureArray(password), result,
                                     opensslProviderName());
}

QByteArray number(int value)
{
    QByteArray octets;
    for (int shift = 24; shift >= 0; shift -= 8)
        octets += char(value >> shift);
    while (octets.size() > 1 && octets.at(0) == 0 && !(octets.at(1) & 0x80))
        octets.remove(0, 1);
    return derElement(0x02, octets);
}

/// A safe that nothing opens, whose key is derived in so many iterations.
QByteArray lockedSafe(int iterations)
{
    const QByteArray algorithm =
        derElement(0x30,
                   oidElement(hex("2a864886f70d010c0103"))
                       + derElement(0x30, derElement(0x04, "saltsalt") + number(iterations)));
    const QByteArray content = derElement(
        0x30, oidElement(hex("2a864886f70d010701")) + algorithm + derElement(0x80, "12345678"));
    return derElement(0x30,
                      oidElement(hex("2a864886f70d010706"))
                          + derElement(0xa0, derElement(0x30, number(0) + content)));
}

} // namespace

class TestBundleBounds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void chains_data();
    void chains();
    void issuersToTry_data() { addCounts(MaxIssuerChecks); }
    void issuersToTry();
    void ownersToTry_data() { addCounts(MaxIssuerChecks); }
    void ownersToTry();
    void nesting();
    void iterations();

private:
    static void addCounts(int most);

    QCA::Initializer m_initializer;
};

void TestBundleBounds::addCounts(int most)
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("isRead");
    QTest::newRow("at the bound") << most << true;
    QTest::newRow("above it") << most + 1 << false;
}

void TestBundleBounds::chains_data()
{
    addCounts(MaxChainLength);
}

void TestBundleBounds::chains()
{
    QFETCH(int, count);
    QFETCH(bool, isRead);
    BundleBuilder bundle;
    PKeyHandle key = newKey();
    bundle.key(key.get());
    for (int i = 1; i <= count; ++i) {
        PKeyHandle next = newKey();
        const bool isRoot = i == count;
        const X509Handle made =
            issued(QByteArray::number(i), key.get(), QByteArray::number(isRoot ? i : i + 1),
                   isRoot ? key.get() : next.get());
        bundle.certificate(made.get());
        key = std::move(next);
    }
    QCA::ConvertResult result = QCA::ErrorFile;
    const QCA::KeyBundle made = read(bundle, &result);
    QCOMPARE(int(result), int(isRead ? QCA::ConvertGood : QCA::ErrorDecode));
    QCOMPARE(made.certificateChain().size(), isRead ? count : 0);
}

// Namesakes of the issuer that are not it.
void TestBundleBounds::issuersToTry()
{
    QFETCH(int, count);
    QFETCH(bool, isRead);
    const PKeyHandle key = newKey();
    const PKeyHandle other = newKey();
    BundleBuilder bundle;
    bundle.key(key.get());
    bundle.certificate(issued("Own", key.get(), "Issuer", key.get()).get());
    for (int i = 0; i < count; ++i)
        bundle.certificate(issued("Issuer", other.get(), "Nobody", other.get(), i).get());
    QCA::ConvertResult result = QCA::ErrorFile;
    const QCA::KeyBundle made = read(bundle, &result);
    QCOMPARE(int(result), int(isRead ? QCA::ConvertGood : QCA::ErrorDecode));
    QCOMPARE(made.certificateChain().size(), isRead ? 1 : 0);
}

// Certificates that claim a key of an unknown algorithm; the last one is right.
void TestBundleBounds::ownersToTry()
{
    QFETCH(int, count);
    QFETCH(bool, isRead);
    const QByteArray algorithm = derElement(0x30, oidElement(hex("2a0304")));
    const PKeyHandle other = newKey();
    BundleBuilder bundle;
    bundle.keyInfo(derElement(0x30, number(0) + algorithm + derElement(0x04, "key")));
    bundle.identified("\1");
    for (int i = 1; i < count; ++i) {
        bundle.certificate(issued("Other", other.get(), "Nobody", other.get(), i).get());
        bundle.identified("\1");
    }
    Parts parts;
    parts.key = derElement(0x30, algorithm + derElement(0x03, hex("00") + "key"));
    bundle.certificate(parsed(certificate(parts)).get());
    bundle.identified("\1");
    QCA::ConvertResult result = QCA::ErrorFile;
    const QCA::KeyBundle made = read(bundle, &result);
    QCOMPARE(int(result), int(isRead ? QCA::ConvertGood : QCA::ErrorDecode));
}

// Eight bags in one another, the innermost with the members; what is deeper is not looked for.
void TestBundleBounds::nesting()
{
    const PKeyHandle key = newKey();
    for (const int outer : {7, 8}) {
        BundleBuilder bundle;
        bundle.key(key.get());
        bundle.certificate(issued("Own", key.get(), "Issuer", key.get()).get());
        for (int i = 0; i < outer; ++i)
            bundle.nested();
        QCA::ConvertResult result = QCA::ErrorFile;
        read(bundle, &result);
        QCOMPARE(int(result), int(outer == 7 ? QCA::ConvertGood : QCA::ErrorDecode));
    }
}

// The check alone is one iteration, and says that the password is wrong, where it is made at all.
void TestBundleBounds::iterations()
{
    const QByteArray most = lockedSafe(int(MaxIterations));
    const auto resultOf = [](const QList<QByteArray> &safes) {
        QCA::ConvertResult result = QCA::ErrorFile;
        BundleBuilder bundle;
        read(bundle, &result, safes, "wrong");
        return int(result);
    };
    QCOMPARE(resultOf({most, most, lockedSafe(int(MaxIterations) - 1)}), int(QCA::ErrorPassphrase));
    QCOMPARE(resultOf({most, most, most}), int(QCA::ErrorDecode));
    QCOMPARE(resultOf({lockedSafe(int(MaxIterations) + 1)}), int(QCA::ErrorDecode));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestBundleBounds test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_bundlebounds.moc"
