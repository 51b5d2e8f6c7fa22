// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/filereading.h"
#include "qca/base/bounds.h"
#include "tests/support/loopmeter.h"
#include "tests/support/testcertificates.h"
#include "tools/certificatefile.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QtTest>

using namespace Trivex;
using TrivexTest::LoopMeter;

namespace {

constexpr int Patience = 60000; // ms
constexpr int Many = 10000;

QByteArray toPem(const QByteArray &label, const QByteArray &der)
{
    return "-----BEGIN " + label + "-----\n" + der.toBase64() + "\n-----END " + label + "-----\n";
}

} // namespace

/// What the window does with files that take long to be read.
class TestFileReading : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void goesOn_data();
    void goesOn();
    void stops_data();
    void stops();
    void endsInTheMiddle();
    void laterFileCounts();
    void smallFileIsReadAtOnce();

private:
    QString write(const char *name, const QByteArray &bytes) const;

    TrivexTest::TestAuthority m_authority;
    QString m_certificates;
    QString m_keys;
};

QString TestFileReading::write(const char *name, const QByteArray &bytes) const
{
    const QString path = m_authority.file(QLatin1String(name));
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? path : QString();
}

void TestFileReading::initTestCase()
{
    QVERIFY(m_authority.isValid());
    // Each another one, by its serial number; nobody checks the signature.
    QByteArray der = m_authority.certificate();
    const int serial = der.indexOf(QByteArray::fromHex("a003020102")) + 8;
    QByteArray certificates;
    for (int i = 0; i < Many; ++i) {
        for (int byte = 0; byte < 4; ++byte)
            der[serial + byte] = char(i >> (8 * byte));
        certificates += toPem("CERTIFICATE", der);
    }
    m_certificates = write("many.pem", certificates);
    write("dsa.pem",
          m_authority.openssl({QStringLiteral("dsaparam"), QStringLiteral("-genkey"),
                               QStringLiteral("-noout"), QStringLiteral("2048")}));
    const QByteArray key = m_authority.openssl({QStringLiteral("pkcs8"), QStringLiteral("-topk8"),
                                                QStringLiteral("-nocrypt"), QStringLiteral("-in"),
                                                QStringLiteral("dsa.pem")});
    QVERIFY(key.contains("PRIVATE KEY"));
    m_keys = write("keys.pem", key.repeated(5000));
    QVERIFY(!m_certificates.isEmpty() && !m_keys.isEmpty());
    // The first use of all loads QCA's plugins.
    CertificateFile file;
    file.setPath(m_authority.certificateFile());
    QCOMPARE(file.kind(), int(CertificateFile::CertificateKind));
    QCOMPARE(file.items()->value(0, FileItemModel::NameRole).toString(),
             QStringLiteral("Test Root"));
}

void TestFileReading::goesOn_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("unread");
    QTest::newRow("certificates") << m_certificates << int(CertificateFile::CertificateKind) << Many
                                  << 0;
    QTest::newRow("keys") << m_keys << int(CertificateFile::PrivateKeyKind) << MaxFileKeys
                          << 5000 - MaxFileKeys;
}

void TestFileReading::goesOn()
{
    QFETCH(QString, path);
    QFETCH(int, kind);
    QFETCH(int, count);
    QFETCH(int, unread);
    CertificateFile file;
    LoopMeter meter;
    meter.start();
    file.open(path);
    QTRY_VERIFY_WITH_TIMEOUT(!file.isReading(), Patience);
    // What a list shows of it.
    for (int row = 0; row < 20; ++row)
        file.items()->value(row, FileItemModel::NameRole);
    QTest::qWait(10);
    meter.stop();
    QCOMPARE(file.kind(), kind);
    QCOMPARE(file.items()->rowCount(), count);
    QCOMPARE(file.unreadKeys(), unread);
    QVERIFY2(meter.longest() <= LoopMeter::Unnoticed, qPrintable(QString::number(meter.longest())));
}

void TestFileReading::stops_data()
{
    QTest::addColumn<bool>("byPath");
    QTest::newRow("told to") << false;
    QTest::newRow("without a file") << true;
}

void TestFileReading::stops()
{
    QFETCH(bool, byPath);
    CertificateFile file;
    file.open(m_certificates);
    if (!file.isReading())
        QSKIP("10,000 certificates were read while nobody noticed");
    QSignalSpy changed(&file, &CertificateFile::contentChanged);
    if (byPath)
        file.setPath({});
    else
        file.stop();
    QVERIFY(!file.isReading());
    QCOMPARE(changed.size(), 1);
    QCOMPARE(file.kind(), int(CertificateFile::None));
    // Nothing comes later.
    QTest::qWait(500);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(file.items()->rowCount(), 0);
}

/// Whoever closes a window does not wait for the end of the file: what is left of it is not read.
void TestFileReading::endsInTheMiddle()
{
    for (const bool isStopped : {false, true}) {
        const auto reading = std::make_shared<FileReading>(m_certificates);
        if (isStopped)
            reading->stop();
        reading->start();
        QVERIFY(reading->waiter().settles(std::chrono::milliseconds(Patience)));
        const int count = int(reading->contents().objects.size());
        QVERIFY2(isStopped ? count <= 1 : count == Many, qPrintable(QString::number(count)));
    }
}

void TestFileReading::laterFileCounts()
{
    CertificateFile file;
    file.open(m_certificates);
    file.open(m_authority.certificateFile());
    QCOMPARE(file.kind(), int(CertificateFile::CertificateKind));
    // The first reading, which was given up, must bring nothing in this time.
    QTest::qWait(500);
    QCOMPARE(file.items()->rowCount(), 1);
}

void TestFileReading::smallFileIsReadAtOnce()
{
    for (int i = 0; i < 100; ++i) {
        CertificateFile file;
        file.open(m_authority.certificateFile());
        QVERIFY(!file.isReading());
        QCOMPARE(file.items()->rowCount(), 1);
    }
}

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const QCA::Initializer qca;
    TestFileReading test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_filereading.moc"
