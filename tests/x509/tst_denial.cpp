// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What is made to take for ever, and what is merely large: it ends at once, in an error or in a
// list, and the work grows with the size of the input and not with its square.
#include "qca/adapter/keybundlefile.h"
#include "qca/asn1/pem.h"
#include "qca/base/bounds.h"
#include "qca/base/providers.h"
#include "qca/base/regularfile.h"
#include "tests/support/processortime.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/corpus.h"

#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <limits>

#include <sys/stat.h>

using namespace Trivex;
using namespace TrivexTest;

namespace {

constexpr double Linear = 9; // half way between 4 and 16, as factors go

qint64 timeOf(const std::function<void()> &work)
{
    const qint64 before = processorTime();
    work();
    return processorTime() - before;
}

/// How many times as much `work` has to do for four times the size: 4 where it is linear, 16 where
/// it is quadratic. Nothing but a clock sees what libcrypto does, and what else the machine does
/// can only add to it: the least of some tries counts, and a growth that looks too large is
/// measured again, because what is quadratic never looks linear.
double growth(int size, const std::function<std::function<void()>(int size)> &prepare)
{
    const std::function<void()> large = prepare(4 * size);
    const std::function<void()> small = prepare(size);
    qint64 leastOfLarge = std::numeric_limits<qint64>::max();
    qint64 leastOfSmall = std::numeric_limits<qint64>::max();
    double grown = 0;
    for (int i = 0; i < 20; ++i) {
        leastOfLarge = std::min(leastOfLarge, timeOf(large));
        leastOfSmall = std::min(leastOfSmall, timeOf(small));
        grown = double(leastOfLarge) / double(std::max<qint64>(leastOfSmall, 1000));
        if (i >= 3 && grown < Linear)
            break;
    }
    return grown;
}

QCA::Certificate decoded(const QByteArray &der)
{
    return QCA::Certificate::fromDER(der, nullptr, opensslProviderName());
}

/// All that anybody asks of a certificate.
void readAll(const QByteArray &der)
{
    const QCA::Certificate certificate = decoded(der);
    certificate.subjectInfo();
    certificate.constraints();
    certificate.serialNumber().toArray();
    certificate.isSelfSigned();
    certificate.subjectKeyId();
    const QCA::PublicKey key = certificate.subjectPublicKey();
    if (!key.isNull())
        QVERIFY(!key.toDER().isEmpty());
    QVERIFY(!certificate.toPEM().isEmpty());
}

/// `count` different octet strings of `size` octets, one after the other.
QByteArray distinct(int count, const std::function<QByteArray(int)> &make)
{
    QByteArray all;
    for (int i = 0; i < count; ++i)
        all += make(i);
    return all;
}

QByteArray octets(int number)
{
    return QByteArray(1, char((number >> 14 & 0x7F) | 0x80)) + char((number >> 7 & 0x7F) | 0x80)
        + char(number & 0x7F);
}

void addSizes()
{
    QTest::addColumn<QByteArray>("der");
    QTest::addColumn<QByteArray>("quarter");
}

void row(const char *text, int count, const std::function<Parts(int)> &make)
{
    QTest::newRow(text) << certificate(make(count)) << certificate(make(count / 4));
}

} // namespace

class TestDenial : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bundles_data();
    void bundles();
    void keyOfEndlessDerivation();
    void pemWithoutEnd();
    void pemGrowsLinearly();
    void manyAttributes();
    void attributesAtTheBound();
    void attributesBehindOthers();
    void attributesOfLists();
    void certificateAtTheBound();
    void largeCertificates_data();
    void largeCertificates();
    void largeKeys_data();
    void largeKeys() { largeCertificates(); }
    void pemTextAboveTheBound();
    void filesAboveTheBound();
    void filesThatAreNone();

private:
    QCA::Initializer m_initializer;
    QTemporaryDir m_directory;
};

void TestDenial::bundles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("chain"); // 0 for an error
    for (const char *file : {"knot120", "mac", "pbkdf2-key", "pbkdf2-safe", "pbe-key", "pbe-safe",
                             "scrypt-key", "scrypt-safe", "many-safes"})
        QTest::newRow(file) << QStringLiteral("denial/%1.p12").arg(QLatin1String(file)) << 0;
    QTest::newRow("knot60") << QStringLiteral("denial/knot60.p12") << 60;
}

void TestDenial::bundles()
{
    QFETCH(QString, file);
    QFETCH(int, chain);
    // Whoever begins with one of those that end in an error does not end in a day.
    const auto loaded = readKeyBundle(Corpus::path(file), QCA::SecureArray("password"));
    QVERIFY(loaded);
    const QCA::ConvertResult result = loaded->result;
    const QCA::KeyBundle bundle = loaded->bundle;
    QCOMPARE(result, chain > 0 ? QCA::ConvertGood : QCA::ErrorDecode);
    QCOMPARE(bundle.isNull(), chain == 0);
    if (chain > 0)
        QCOMPARE(bundle.certificateChain().size(), chain);
}

void TestDenial::keyOfEndlessDerivation()
{
    const QString pem = QString::fromLatin1(Corpus::read(QStringLiteral("denial/key.pem")));
    QCA::ConvertResult result = QCA::ConvertGood;
    QCA::PrivateKey::fromPEM(pem, QCA::SecureArray("password"), &result, opensslProviderName());
    QCOMPARE(result, QCA::ErrorDecode);
}

void TestDenial::pemWithoutEnd()
{
    const auto isRead = [](const char *file) {
        const QString text = QString::fromLatin1(Corpus::read(QString::fromLatin1(file)));
        return !QCA::Certificate::fromPEM(text, nullptr, opensslProviderName()).isNull();
    };
    QVERIFY(!isRead("denial/begin.pem"));
    QVERIFY(isRead("denial/begin-around.pem"));
    int broken = 0;
    QCOMPARE(readPem(Corpus::read(QStringLiteral("denial/begin-around.pem")), &broken).size(), 1);
    QCOMPARE(broken, 18000);
}

void TestDenial::pemGrowsLinearly()
{
    const QList<QByteArray> lines = {
        "-----BEGIN CERTIFICATE-----\n",
        "-----BEGIN ",
        "-----BEGIN CERTIFICATE-----\nAAAA\n-----END CERTIFICATE-----\n",
        "-----BEGIN A-----\nAAAA\n-----END B-----\n",
        "-----END CERTIFICATE-----\n",
        "-----BEGIN A\n",
        "-----BEGIN CERTIFICATE-----\na: b\n",
        "----------",
        "\n",
    };
    for (const QByteArray &line : lines) {
        const double grown = growth(200000 / line.size(), [&](int count) {
            const QByteArray text = line.repeated(count);
            return std::function<void()>([text] { readPem(text); });
        });
        QVERIFY2(grown < Linear,
                 qPrintable(QStringLiteral("%1: %2").arg(QString::fromLatin1(line).trimmed(),
                                                         QString::number(grown))));
    }
}

void TestDenial::manyAttributes()
{
    for (const char *file : {"denial/email9000.der", "denial/email9000.csr"}) {
        const QByteArray data = Corpus::read(QString::fromLatin1(file));
        const bool isNull = data.startsWith("-----")
            ? QCA::CertificateRequest::fromPEM(QString::fromLatin1(data), nullptr,
                                               opensslProviderName())
                  .isNull()
            : decoded(data).isNull();
        QVERIFY2(isNull, file);
    }
    QVERIFY(!decoded(Corpus::read(QStringLiteral("denial/email512.der"))).isNull());
    QVERIFY(!QCA::CertificateRequest::fromPEM(
                 QString::fromLatin1(Corpus::read(QStringLiteral("denial/email512.csr"))), nullptr,
                 opensslProviderName())
                 .isNull());
}

void TestDenial::attributesAtTheBound()
{
    const QByteArray email = attribute(hex("2a864886f70d010901"), "a@b");
    Parts parts;
    parts.subject = name(email, MaxNameAttributes);
    QVERIFY(!decoded(certificate(parts)).isNull());
    parts.subject = name(email, MaxNameAttributes + 1);
    QVERIFY(decoded(certificate(parts)).isNull());
    // In one set, or without any OID that is known: a name is what it is made of.
    parts.subject = derElement(0x30, derElement(0x31, email.repeated(MaxNameAttributes + 1)));
    QVERIFY(decoded(certificate(parts)).isNull());
    // The addresses of the alternative name are compared with those of the subject.
    parts.subject = name(email, 10);
    const auto addresses = [](int count) {
        return extension(hex("551d11"), derElement(0x30, derElement(0x81, "a@b").repeated(count)));
    };
    parts.extensions = addresses(MaxNameAttributes - 10);
    QVERIFY(!decoded(certificate(parts)).isNull());
    parts.extensions = addresses(MaxNameAttributes - 9);
    QVERIFY(decoded(certificate(parts)).isNull());
}

void TestDenial::attributesBehindOthers()
{
    const QByteArray email = attribute(hex("2a864886f70d010901"), "a@b");
    const QByteArray sets = derElement(0x31, email).repeated(MaxNameAttributes + 1);
    const QByteArray other = hex("0500");
    Parts parts;
    // What is no set ends neither the reading nor the counting.
    const QList<QByteArray> contents = {other + sets, derElement(0x31, email) + other + sets};
    for (const QByteArray &content : contents) {
        parts.subject = derElement(0x30, content);
        QVERIFY(decoded(certificate(parts)).isNull());
    }
    parts.subject =
        derElement(0x30, other + derElement(0x31, email).repeated(MaxNameAttributes) + other);
    QVERIFY(!decoded(certificate(parts)).isNull());
}

void TestDenial::attributesOfLists()
{
    const auto isRead = [](int count) {
        const QByteArray list =
            revocationList(name(attribute(hex("2a864886f70d010901"), "a@b"), count));
        return !QCA::CRL::fromDER(list, nullptr, opensslProviderName()).isNull();
    };
    QVERIFY(isRead(MaxNameAttributes));
    QVERIFY(!isRead(MaxNameAttributes + 1));
}

void TestDenial::certificateAtTheBound()
{
    Parts parts;
    const auto padded = [&](int size) {
        parts.extensions = extension(hex("550d01"), QByteArray(size, 'x'));
        return certificate(parts);
    };
    const int rest = padded(1 << 20).size() - (1 << 20);
    const QByteArray largest = padded(MaxCertificateBytes - rest);
    QCOMPARE(largest.size(), MaxCertificateBytes);
    QVERIFY(!decoded(largest).isNull());
    QVERIFY(decoded(padded(MaxCertificateBytes - rest + 1)).isNull());
}

void TestDenial::largeCertificates_data()
{
    addSizes();
    row("serial number", 1000000, [](int count) {
        Parts parts;
        parts.serial = QByteArray(count, '\x71');
        return parts;
    });
    row("common name", 1000000, [](int count) {
        Parts parts;
        parts.subject = commonName(QByteArray(count, 'x'));
        return parts;
    });
    row("extensions", 90000, [](int count) {
        Parts parts;
        parts.extensions = extension(hex("551d7f"), "").repeated(count);
        return parts;
    });
    row("different extensions", 80000, [](int count) {
        Parts parts;
        parts.extensions = distinct(count, [](int i) { return extension(octets(i), ""); });
        return parts;
    });
    row("host names", 90000, [](int count) {
        Parts parts;
        const auto host = [](int i) {
            return derElement(0x82, QByteArray::number(i).rightJustified(8, 'h'));
        };
        parts.extensions = extension(hex("551d11"), derElement(0x30, distinct(count, host)));
        return parts;
    });
    row("addresses of machines", 90000, [](int count) {
        Parts parts;
        const auto host = [](int i) { return derElement(0x87, '\x0a' + octets(i)); };
        parts.extensions = extension(hex("551d11"), derElement(0x30, distinct(count, host)));
        return parts;
    });
    row("purposes", 190000, [](int count) {
        Parts parts;
        const auto purpose = [](int i) { return derElement(0x06, octets(i)); };
        parts.extensions = extension(hex("551d25"), derElement(0x30, distinct(count, purpose)));
        return parts;
    });
    row("policies", 140000, [](int count) {
        Parts parts;
        const auto policy = [](int i) { return derElement(0x30, derElement(0x06, octets(i))); };
        parts.extensions = extension(hex("551d20"), derElement(0x30, distinct(count, policy)));
        return parts;
    });
    row("identifier of giant arcs", 1000000, [](int count) {
        Parts parts;
        parts.subject = name(attribute(QByteArray(count, '\xff') + '\x01', "x"), 1);
        return parts;
    });
    row("identifier of many arcs", 1000000, [](int count) {
        Parts parts;
        parts.subject = name(attribute(QByteArray(count, '\x01'), "x"), 1);
        return parts;
    });
    row("nesting", 500000, [](int count) {
        Parts parts;
        // Lengths that lie about the inside are as good as any here.
        parts.extensions = extension(hex("551d11"), QByteArray(hex("3080")).repeated(count));
        return parts;
    });
}

void TestDenial::largeCertificates()
{
    QFETCH(QByteArray, der);
    QFETCH(QByteArray, quarter);
    QVERIFY(der.size() <= MaxCertificateBytes);
    // Other octets each time: what is decoded is kept.
    const auto next = [](QByteArray *bytes) {
        const int last = bytes->size() - 1;
        (*bytes)[last] = char(bytes->at(last) + 1);
        return *bytes;
    };
    const double grown = growth(1, [&](int size) {
        return std::function<void()>([&, size] { readAll(next(size == 1 ? &quarter : &der)); });
    });
    QVERIFY2(grown < Linear, qPrintable(QString::number(grown)));
}

void TestDenial::largeKeys_data()
{
    addSizes();
    // The certificate's own name as its issuer's, so that its signature is tried.
    const auto keyed = [](const QByteArray &algorithm, const QByteArray &key) {
        Parts parts;
        parts.subject = commonName("Issuer");
        parts.key = derElement(0x30, algorithm + derElement(0x03, hex("00") + key));
        return parts;
    };
    const auto rsa = [=](int modulus, int exponent) {
        return keyed(hex("300d06092a864886f70d0101010500"),
                     derElement(0x30,
                                derElement(0x02, QByteArray(modulus, '\x71'))
                                    + derElement(0x02, QByteArray(exponent, '\x71'))));
    };
    const auto dsa = [=](int prime) {
        const QByteArray number = derElement(0x02, QByteArray(prime, '\x71'));
        return keyed(derElement(0x30,
                                derElement(0x06, hex("2a8648ce380401"))
                                    + derElement(0x30, number.repeated(3))),
                     number);
    };
    row("modulus", 1000000, [=](int count) { return rsa(count, 3); });
    row("exponent", 1000000, [=](int count) { return rsa(256, count); });
    row("modulus and exponent", 500000, [=](int count) { return rsa(count, count); });
    row("prime", 250000, dsa);
}

void TestDenial::pemTextAboveTheBound()
{
    const QString good =
        QString::fromLatin1(Corpus::read(QStringLiteral("denial/begin-around.pem")));
    const QString filled = good + QString(MaxFileBytes - good.size(), QLatin1Char('\n'));
    const auto isRead = [](const QString &text) {
        return !QCA::Certificate::fromPEM(text, nullptr, opensslProviderName()).isNull();
    };
    QVERIFY(isRead(filled));
    QVERIFY(!isRead(filled + QLatin1Char('\n')));
}

void TestDenial::filesAboveTheBound()
{
    const QString path = m_directory.filePath(QStringLiteral("large.p12"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(MaxFileBytes));
    FileProblem problem = FileProblem::Unreadable;
    QCOMPARE(readRegularFile(path, &problem)->size(), MaxFileBytes);
    QCOMPARE(problem, FileProblem::None);
    for (const qint64 size : {qint64(MaxFileBytes) + 1, qint64(3) << 29, qint64(5) << 30}) {
        QVERIFY(file.resize(size));
        QVERIFY(!readRegularFile(path, &problem));
        QCOMPARE(problem, FileProblem::TooLarge);
        const auto loaded = readKeyBundle(path, QCA::SecureArray("password"));
        QVERIFY(loaded && loaded->bundle.isNull());
        QCOMPARE(loaded->result, QCA::ErrorDecode);
    }
}

void TestDenial::filesThatAreNone()
{
    const QString pipe = m_directory.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString &path : {pipe, m_directory.path(), QStringLiteral("/dev/zero"),
                                m_directory.filePath(QStringLiteral("missing")), QString()}) {
        FileProblem problem = FileProblem::None;
        QVERIFY(!readRegularFile(path, &problem));
        QCOMPARE(problem, FileProblem::Unreadable);
    }
    // Contents without a size.
    QVERIFY(!readRegularFile(QStringLiteral("/proc/self/status"))->isEmpty());
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestDenial test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_denial.moc"
