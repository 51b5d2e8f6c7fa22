// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/pem.h"
#include "qca/keys/keys.h"
#include "qca/keys/pkeycontainer.h"
#include "qca/pkcs12/pkcs12context.h"
#include "qca/x509/certificatecontext.h"
#include "qca/x509/certificateinfo.h"
#include "qca/x509/collectioncontext.h"
#include "qca/x509/crlcontext.h"
#include "qca/x509/requestcontext.h"
#include "tests/x509/corpus.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtTest>

using namespace Trivex;

namespace {

// How many times fewer tries are made, where each allocation costs whole stacks.
int slowness()
{
    return qMax(1, qEnvironmentVariableIntValue("TRIVEX_TEST_SLOWNESS"));
}

// Everything that can be read from a certificate, so that a lazy decoder has no hiding place.
int readAll(const QCA::Certificate &certificate)
{
    return certificate.subjectInfoOrdered().size() + certificate.issuerInfo().size()
        + certificate.constraints().size() + certificate.policies().size()
        + certificate.crlLocations().size() + certificate.issuerLocations().size()
        + certificate.ocspLocations().size() + certificate.commonName().size()
        + certificate.serialNumber().toString().size() + int(certificate.isCA())
        + int(certificate.isSelfSigned()) + certificate.pathLimit()
        + signatureAlgorithm(certificate) + certificate.subjectKeyId().size()
        + certificate.issuerKeyId().size() + certificate.notValidBefore().isValid()
        + certificate.notValidAfter().isValid() + keyType(certificate.subjectPublicKey())
        + encodedPublicKey(certificate.subjectPublicKey()).size();
}

void readCertificate(const QByteArray &data)
{
    const QCA::Certificate certificate = QCA::Certificate::fromDER(data);
    if (!certificate.isNull())
        readAll(certificate);
}

void readRequest(const QByteArray &data)
{
    RequestContext request(nullptr);
    if (request.fromDER(data) != QCA::ConvertGood)
        return;
    request.props();
    delete request.subjectPublicKey();
}

void readList(const QByteArray &data)
{
    CrlContext list(nullptr);
    if (list.fromDER(data) == QCA::ConvertGood)
        // Each of them takes its bytes, however the damaged lengths nest.
        QVERIFY(list.props()->revoked.size() < data.size());
}

void readCollection(const QByteArray &data)
{
    QList<QCA::CertContext *> certificates;
    QList<QCA::CRLContext *> lists;
    CollectionContext(nullptr).fromPKCS7(data, &certificates, &lists);
    for (const QCA::CertContext *certificate : qAsConst(certificates))
        certificate->props();
    qDeleteAll(certificates);
    qDeleteAll(lists);
}

void readBundle(const QByteArray &data)
{
    QString name;
    QList<QCA::CertContext *> chain;
    QCA::PKeyContext *key = nullptr;
    Pkcs12Context(nullptr).fromPKCS12(data, QCA::SecureArray("secret"), &name, &chain, &key);
    qDeleteAll(chain);
    delete key;
}

void readKey(const QByteArray &data)
{
    PKeyContainer container(nullptr);
    container.publicFromDER(data);
    container.privateFromDER(data, QCA::SecureArray("secret"));
    if (container.key())
        container.key()->bits();
}

// The DER form of a file, whatever it is written in.
QByteArray derOf(const QByteArray &data)
{
    const QList<PemBlock> blocks = readPem(data);
    return blocks.isEmpty() ? data : blocks.first().data;
}

using Read = void (*)(const QByteArray &data);

Read reader(const QString &file)
{
    if (file.endsWith(QLatin1String(".csr")))
        return &readRequest;
    if (file.endsWith(QLatin1String(".p7b")))
        return &readCollection;
    if (file.endsWith(QLatin1String(".p12")))
        return &readBundle;
    if (file.contains(QLatin1String("list")) || file.contains(QLatin1String("crl")))
        return &readList;
    if (file.contains(QLatin1String("key-")) || file.endsWith(QLatin1String(".key")))
        return &readKey;
    return &readCertificate;
}

} // namespace

/// Cuts and damages every file of the corpus: what comes out may be anything but a crash. Worth
/// most under the address sanitizer.
class TestDamage : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void survives_data();
    void survives();
    void survivesEachCutAndBit_data();
    void survivesEachCutAndBit();
    void survivesText();

private:
    QCA::Initializer m_initializer;
};

void TestDamage::survives_data()
{
    QTest::addColumn<QString>("file");
    const QStringList files = Corpus::files();
    QVERIFY(files.size() > 90);
    for (const QString &file : files) {
        // Those have a test of their own, and are large.
        if (file.startsWith(QLatin1String("denial/")))
            continue;
        if (!file.endsWith(QLatin1String(".txt")) && !file.endsWith(QLatin1String(".spkac")))
            QTest::newRow(qPrintable(file)) << file;
    }
}

void TestDamage::survives()
{
    QFETCH(QString, file);
    const QByteArray whole = derOf(Corpus::read(file));
    const Read read = reader(file);
    read(whole);
    // Bundles take long to decrypt: fewer there. The first octets, which hold the structure, all.
    const bool isSlow = file.endsWith(QLatin1String(".p12")) || file.contains(QLatin1String("key"));
    // So do the many that differ in one field only.
    static const QRegularExpression alike(QStringLiteral("^(string|serial|date|name|signature)-"));
    const int tries = (isSlow ? 60 : file.contains(alike) ? 250 : 600) / slowness();
    QRandomGenerator random(qHash(file));
    for (int i = 0; i < tries; ++i)
        read(whole.left(i < 120 ? qMin(i, whole.size()) : random.bounded(whole.size())));
    for (int i = 0; i < tries; ++i) {
        QByteArray flipped = whole;
        const int place = i < 200 ? i % whole.size() : random.bounded(whole.size());
        flipped[place] = char(flipped.at(place) ^ (1 << random.bounded(8)));
        if (i % 3 == 0)
            flipped[random.bounded(whole.size())] = char(random.bounded(256));
        read(flipped);
    }
}

void TestDamage::survivesEachCutAndBit_data()
{
    QTest::addColumn<QString>("file");
    QStringList files = {QStringLiteral("extensions-leaf.der"),
                         QStringLiteral("ec-256.der"),
                         QStringLiteral("request-rsa.csr"),
                         QStringLiteral("list.pem"),
                         QStringLiteral("list.p7b"),
                         QStringLiteral("ec-256.key"),
                         QStringLiteral("bundle-bare.p12")};
    if (Corpus::hasGost())
        files += {QStringLiteral("gost-2012-256.der"), QStringLiteral("gost-2012-256.key")};
    for (const QString &file : qAsConst(files))
        QTest::newRow(qPrintable(file)) << file;
}

// Of one file for each parser nothing is left to chance.
void TestDamage::survivesEachCutAndBit()
{
    QFETCH(QString, file);
    const QByteArray whole = derOf(Corpus::read(file));
    const Read read = reader(file);
    for (int size = 0; size < whole.size(); ++size)
        read(whole.left(size));
    for (int bit = 0; bit < 8 * whole.size(); bit += slowness()) {
        QByteArray turned = whole;
        turned[bit / 8] = char(turned.at(bit / 8) ^ (1 << bit % 8));
        read(turned);
    }
}

void TestDamage::survivesText()
{
    const QByteArray text = Corpus::read(QStringLiteral("list.pem"))
        + Corpus::read(QStringLiteral("key-traditional.pem"))
        + Corpus::read(QStringLiteral("crashers/badbc.pem"));
    QCOMPARE(readPem(text).size(), 3);
    QRandomGenerator random(1);
    for (int i = 0; i < 2000; ++i) {
        QByteArray damaged = text;
        damaged.remove(random.bounded(text.size()), random.bounded(100));
        int broken = 0;
        QVERIFY(readPem(damaged, &broken).size() <= 3);
        QCA::PrivateKey::fromPEM(QString::fromLatin1(damaged), QCA::SecureArray("secret"));
    }
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestDamage test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_damage.moc"
