// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/providers.h"
#include "qca/keys/gostengine.h"
#include "tests/x509/corpus.h"
#include "tests/x509/expectedproperties.h"
#include "tests/x509/opensslcertificate.h"
#include "tests/x509/propertycomparison.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtTest>

using namespace Trivex;

/// Every property of the QML type, for every certificate of the corpus, beside what `openssl x509`
/// prints about the same file; and for damaged ones.
class TestProperties : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void agrees_data();
    void agrees();
    void agreesOnUnprintable_data();
    void agreesOnUnprintable();
    void agreesThroughStock_data();
    void agreesThroughStock();
    void stockReadMost();
    void emptyWhenCut_data();
    void emptyWhenCut();
    void agreesWhenFlipped_data();
    void agreesWhenFlipped();
    void exceptionsAreNeeded();

private:
    QCA::Initializer m_initializer;
    QSet<QString> m_usedExceptions;
    int m_throughStock = 0;
};

namespace {

// What a file of the corpus may be called after the GOST engine is there or not.
bool usesEngine(const QString &file)
{
    return file.startsWith(QLatin1String("gost-")) && loadGostEngine();
}

// The stock provider crashes on them before anybody else has a say.
bool killsStock(const QString &file)
{
    static const QStringList files = {QStringLiteral("extension-bad-constraints.der"),
                                      QStringLiteral("extension-bad-ids.der")};
    return files.contains(file);
}

bool write(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

QVariantMap expectedOf(const QString &path, const QString &name, bool *isReadable)
{
    OpensslCertificate certificate;
    *isReadable = readWithOpenssl(path, &certificate);
    if (!*isReadable)
        return {};
    const bool isSelfSigned =
        certificate.subject == certificate.issuer && isSelfSignedForOpenssl(path, usesEngine(name));
    return expectedProperties(certificate, isSelfSigned);
}

// What is expected of a file that this openssl does not read for its times; nothing for others.
QVariantMap expectedOfShortTimes(const QString &file, bool *isReadable)
{
    for (const ShortTimes &times : shortTimes()) {
        if (times.file != file)
            continue;
        const QString other = QStringLiteral("date-fraction.der");
        QVariantMap expected = expectedOf(Corpus::path(other), other, isReadable);
        expected.insert(QStringLiteral("notValidBefore"), times.notBefore);
        expected.insert(QStringLiteral("notValidAfter"), times.notAfter);
        return expected;
    }
    return {};
}

} // namespace

void TestProperties::initTestCase()
{
    if (QProcess::execute(QStringLiteral("openssl"), {QStringLiteral("version")}) != 0)
        QSKIP("no openssl command");
    QVERIFY(QCA::findProvider(opensslProviderName()));
    QCOMPARE(propertiesOf(QCA::Certificate()).size(), 30);
}

void TestProperties::agrees_data()
{
    QTest::addColumn<QString>("file");
    const auto certificates = Corpus::certificates();
    QVERIFY(certificates.size() > 80);
    for (const auto &entry : certificates) {
        if (!isUnprintable(entry.file))
            QTest::newRow(qPrintable(entry.file)) << entry.file;
    }
    for (const char *name : {"badbc.pem", "cert-bad-aki.der", "cert-expires-2059.der"})
        QTest::newRow(name) << QStringLiteral("crashers/") + QLatin1String(name);
}

void TestProperties::agrees()
{
    QFETCH(QString, file);
    bool isReadable = false;
    QVariantMap expected = expectedOf(Corpus::path(file), file, &isReadable);
    if (!isReadable)
        expected = expectedOfShortTimes(file, &isReadable);
    QVERIFY(isReadable);
    for (const PropertyException &exception : propertyExceptions()) {
        if (file != exception.file)
            continue;
        QVERIFY2(describedProperty(expected.value(exception.property)) != exception.value,
                 "the exception is none");
        expected.insert(exception.property, exception.value);
        m_usedExceptions.insert(exception.file + exception.property);
    }
    const QString found = propertyDifference(propertiesOf(Corpus::certificate(file)), expected);
    QVERIFY2(found.isEmpty(), qUtf8Printable(found));
}

void TestProperties::agreesOnUnprintable_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    for (const UnprintableFile &unprintable : unprintableFiles())
        QTest::newRow(qPrintable(unprintable.file)) << unprintable.file << unprintable.name;
}

// libcrypto refuses the whole certificate for the octets of its name. All else in it is what it
// is in another file of the same kind, so that one is what the command is asked about.
void TestProperties::agreesOnUnprintable()
{
    QFETCH(QString, file);
    QFETCH(QString, name);
    bool isReadable = true;
    expectedOf(Corpus::path(file), file, &isReadable);
    QVERIFY(!isReadable);
    QVariantMap expected =
        expectedOf(Corpus::path(QStringLiteral("string-printable.der")), file, &isReadable);
    QVERIFY(isReadable);
    for (const char *property : {"commonName", "subjectName", "issuer"})
        expected.insert(QString::fromLatin1(property), name);
    expected.insert(QStringLiteral("fileName"),
                    name.isEmpty() ? QStringLiteral("certificate.crt")
                                   : QString(name + QStringLiteral(".crt")));
    const QString found = propertyDifference(propertiesOf(Corpus::certificate(file)), expected);
    QVERIFY2(found.isEmpty(), qUtf8Printable(found));
}

void TestProperties::agreesThroughStock_data()
{
    QTest::addColumn<QString>("file");
    for (const auto &entry : Corpus::certificates()) {
        if (!killsStock(entry.file))
            QTest::newRow(qPrintable(entry.file)) << entry.file;
    }
}

// A host may have QCA decode with the stock provider. What is shown stays the same.
void TestProperties::agreesThroughStock()
{
    QFETCH(QString, file);
    const QString stock = QStringLiteral("qca-ossl");
    if (!QCA::isSupported("cert", stock))
        QSKIP("no stock provider");
    const QByteArray der = Corpus::read(file);
    const auto foreign = QCA::Certificate::fromDER(der, nullptr, stock);
    if (foreign.isNull())
        return; // refused as a whole, so there is nothing to show
    QCOMPARE(foreign.provider()->name(), stock);
    ++m_throughStock;
    const QString found =
        propertyDifference(propertiesOf(foreign), propertiesOf(Corpus::certificate(file)));
    QVERIFY2(found.isEmpty(), qUtf8Printable(found));
}

void TestProperties::stockReadMost()
{
    if (!QCA::isSupported("cert", QStringLiteral("qca-ossl")))
        QSKIP("no stock provider");
    QVERIFY2(m_throughStock > 80, qPrintable(QString::number(m_throughStock)));
}

void TestProperties::emptyWhenCut_data()
{
    QTest::addColumn<QString>("file");
    for (const char *name : {"identifiers.der", "extensions.der", "ec-384.der", "ed25519.der",
                             "gost-2012-256-octets.der", "date-9999.der", "version-1.der"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestProperties::emptyWhenCut()
{
    QFETCH(QString, file);
    const QByteArray whole = Corpus::read(file);
    const QVariantMap none = propertiesOf(QCA::Certificate());
    for (int size = 0; size < whole.size(); ++size) {
        const auto certificate = QCA::Certificate::fromDER(whole.left(size));
        QVERIFY2(certificate.isNull(), qPrintable(QString::number(size)));
        const QString found = propertyDifference(propertiesOf(certificate), none);
        QVERIFY2(found.isEmpty(), qUtf8Printable(found));
    }
}

void TestProperties::agreesWhenFlipped_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("tries");
    // The octets behind the key's are the signature's, or extensions: all are there in one file.
    QTest::newRow("names") << QStringLiteral("identifiers.der") << 60;
    QTest::newRow("extensions") << QStringLiteral("extensions-leaf.der") << 60;
    QTest::newRow("curve") << QStringLiteral("ec-256.der") << 60;
    QTest::newRow("dates") << QStringLiteral("date-9999.der") << 60;
}

// Where the command still reads a certificate with a flipped bit, so do we, and alike, but for the
// few that we refuse as a whole for not being DER; where it does not, nothing that libcrypto is
// asked for has a value.
void TestProperties::agreesWhenFlipped()
{
    QFETCH(QString, file);
    QFETCH(int, tries);
    const QByteArray whole = Corpus::read(file);
    const QVariantMap none = propertiesOf(QCA::Certificate());
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("flipped.der"));
    const QRegularExpression control(QStringLiteral("[\\x00-\\x1F\\x7F/\\\\]"));
    QRandomGenerator random(qHash(file));
    int agreed = 0;
    int refused = 0;
    for (int i = 0; i < tries; ++i) {
        const int place = random.bounded(whole.size());
        const int bit = random.bounded(8);
        QByteArray flipped = whole;
        flipped[place] = char(flipped.at(place) ^ (1 << bit));
        QVERIFY(write(path, flipped));
        bool isReadable = false;
        QVariantMap expected = expectedOf(path, file, &isReadable);
        const QVariantMap actual = propertiesOf(QCA::Certificate::fromDER(flipped));
        // A control character is no part of a file's name; see the exceptions.
        const QString fileName = QStringLiteral("fileName");
        if (expected.value(fileName).toString().contains(control))
            expected.insert(fileName, actual.value(fileName));
        QString found;
        if (!isReadable)
            QCOMPARE(actual.value(QStringLiteral("subjecAddress")), QVariant(QString()));
        else if (actual.value(QStringLiteral("isNull")).toBool())
            found = (++refused, propertyDifference(actual, none));
        else
            found = (++agreed, propertyDifference(actual, expected));
        QVERIFY2(found.isEmpty(),
                 qUtf8Printable(QStringLiteral("octet %1, bit %2: ").arg(place).arg(bit) + found));
    }
    QVERIFY2(agreed > tries / 4, qPrintable(QString::number(agreed)));
    QVERIFY2(refused <= tries / 10, qPrintable(QString::number(refused)));
}

// An exception that nothing needs any more would hide the next defect.
void TestProperties::exceptionsAreNeeded()
{
    for (const PropertyException &exception : propertyExceptions())
        QVERIFY2(m_usedExceptions.contains(exception.file + exception.property),
                 qPrintable(exception.file));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestProperties test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_properties.moc"
