// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Extensions octet by octet, at the first and the last value of each and beside them.
#include "qca/base/providers.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/corpus.h"

#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

namespace {

constexpr QCA::ConstraintTypeKnown Usages[] = {
    QCA::DigitalSignature, QCA::NonRepudiation, QCA::KeyEncipherment,
    QCA::DataEncipherment, QCA::KeyAgreement,   QCA::KeyCertificateSign,
    QCA::CRLSign,          QCA::EncipherOnly,   QCA::DecipherOnly,
};

QCA::Certificate certificateWith(const char *oid, const QByteArray &value)
{
    Parts parts;
    parts.extensions = extension(hex(oid), value);
    return QCA::Certificate::fromDER(certificate(parts), nullptr, opensslProviderName());
}

/// A list with one entry, whose extensions are given.
QCA::CRL listWith(const QByteArray &extensions)
{
    const QByteArray algorithm = derElement(0x30, oidElement(hex("2a864886f70d01010b")));
    const QByteArray time = derElement(0x17, "200101000000Z");
    const QByteArray entry =
        derElement(0x30, derElement(0x02, "\x05") + time + derElement(0x30, extensions));
    const QByteArray body = derElement(0x02, "\x01") + algorithm + commonName("Issuer") + time
        + time + derElement(0x30, entry);
    const QByteArray der = derElement(
        0x30, derElement(0x30, body) + algorithm + derElement(0x03, hex("00") + "signature"));
    return QCA::CRL::fromDER(der, nullptr, opensslProviderName());
}

} // namespace

class TestExtensions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void usages_data();
    void usages();
    void authorities_data();
    void authorities();
    void reasons_data();
    void reasons();

private:
    QCA::Initializer m_initializer;
};

void TestExtensions::usages_data()
{
    QTest::addColumn<QByteArray>("bits"); // with the number of unused ones before them
    QTest::addColumn<QList<int>>("set");
    for (int i = 0; i < 8; ++i)
        QTest::addRow("only %d", i)
            << QByteArray(1, char(7 - i)) + char(0x80 >> i) << QList<int>{i};
    QTest::newRow("only 8") << hex("070080") << QList<int>{8};
    QTest::newRow("all") << hex("07ff80") << QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8};
    QTest::newRow("more than there are") << hex("00ffff") << QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8};
    QTest::newRow("none") << hex("0700") << QList<int>{};
    QTest::newRow("no octet") << hex("00") << QList<int>{};
    QTest::newRow("unused ones that are set") << hex("07ff") << QList<int>{0};
    QTest::newRow("seven unused") << hex("07ffff") << QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8};
    QTest::newRow("eight unused") << hex("08ffff") << QList<int>{};
    QTest::newRow("nine unused") << hex("09ffff") << QList<int>{};
    QTest::newRow("255 unused") << hex("ff") + QByteArray(40, '\xff') << QList<int>{};
    QTest::newRow("unused ones without an octet") << hex("07") << QList<int>{};
    QTest::newRow("nothing") << QByteArray() << QList<int>{};
}

void TestExtensions::usages()
{
    QFETCH(QByteArray, bits);
    QFETCH(QList<int>, set);
    const QCA::Certificate made = certificateWith("551d0f", derElement(0x03, bits));
    QVERIFY(!made.isNull());
    QCA::Constraints expected;
    for (const int bit : set)
        expected += QCA::ConstraintType(Usages[bit]);
    QCOMPARE(made.constraints(), expected);
}

void TestExtensions::authorities_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isAuthority");
    QTest::addColumn<int>("limit");
    const QByteArray yes = derElement(0x01, "\xff");
    const QByteArray no = derElement(0x01, QByteArray(1, '\0'));
    QTest::newRow("empty") << QByteArray() << false << 0;
    QTest::newRow("no, written out") << no << false << 0;
    QTest::newRow("yes") << yes << true << 0;
    QTest::newRow("yes, by another number") << derElement(0x01, "\x01") << true << 0;
    QTest::newRow("a limit") << yes + derElement(0x02, "\x03") << true << 3;
    QTest::newRow("no limit's worth") << yes + derElement(0x02, QByteArray(1, '\0')) << true << 0;
    QTest::newRow("a negative limit") << yes + derElement(0x02, "\xff") << true << 0;
    QTest::newRow("no, with a limit") << no + derElement(0x02, "\x03") << false << 3;
    QTest::newRow("a limit alone") << derElement(0x02, "\x03") << false << 3;
    QTest::newRow("a boolean of two octets") << derElement(0x01, "\xff\xff") << false << 0;
    QTest::newRow("a boolean of none") << derElement(0x01, {}) << false << 0;
    QTest::newRow("a limit of no octet") << yes + derElement(0x02, {}) << false << 0;
    QTest::newRow("something behind") << yes + derElement(0x05, {}) << false << 0;
    QTest::newRow("the other order") << derElement(0x02, "\x03") + yes << false << 0;
}

void TestExtensions::authorities()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isAuthority);
    QFETCH(int, limit);
    const QCA::Certificate made = certificateWith("551d13", derElement(0x30, content));
    QVERIFY(!made.isNull());
    QCOMPARE(made.isCA(), isAuthority);
    QCOMPARE(made.pathLimit(), limit);
}

void TestExtensions::reasons_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<int>("reason");
    const auto code = [](int number) { return derElement(0x0A, QByteArray(1, char(number))); };
    QTest::newRow("0") << code(0) << int(QCA::CRLEntry::Unspecified);
    QTest::newRow("1") << code(1) << int(QCA::CRLEntry::KeyCompromise);
    QTest::newRow("2") << code(2) << int(QCA::CRLEntry::CACompromise);
    QTest::newRow("3") << code(3) << int(QCA::CRLEntry::AffiliationChanged);
    QTest::newRow("4") << code(4) << int(QCA::CRLEntry::Superseded);
    QTest::newRow("5") << code(5) << int(QCA::CRLEntry::CessationOfOperation);
    QTest::newRow("6") << code(6) << int(QCA::CRLEntry::CertificateHold);
    QTest::newRow("7") << code(7) << int(QCA::CRLEntry::Unspecified);
    QTest::newRow("8") << code(8) << int(QCA::CRLEntry::RemoveFromCRL);
    QTest::newRow("9") << code(9) << int(QCA::CRLEntry::PrivilegeWithdrawn);
    QTest::newRow("10") << code(10) << int(QCA::CRLEntry::AACompromise);
    QTest::newRow("11") << code(11) << int(QCA::CRLEntry::Unspecified);
    QTest::newRow("255") << code(255) << int(QCA::CRLEntry::Unspecified);
    QTest::newRow("two octets") << derElement(0x0A, hex("0001")) << int(QCA::CRLEntry::Unspecified);
    QTest::newRow("no octet") << derElement(0x0A, {}) << int(QCA::CRLEntry::Unspecified);
    QTest::newRow("an integer") << derElement(0x02, "\x01") << int(QCA::CRLEntry::Unspecified);
    QTest::newRow("two codes") << code(1) + code(1) << int(QCA::CRLEntry::Unspecified);
    QTest::newRow("nothing") << QByteArray() << int(QCA::CRLEntry::Unspecified);
}

void TestExtensions::reasons()
{
    QFETCH(QByteArray, element);
    QFETCH(int, reason);
    const QCA::CRL list = listWith(extension(hex("551d15"), element));
    QVERIFY(!list.isNull());
    QCOMPARE(list.revoked().size(), 1);
    QCOMPARE(int(list.revoked().first().reason()), reason);
    QCOMPARE(list.revoked().first().serialNumber(), QCA::BigInteger(5));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestExtensions test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_extensions.moc"
