// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/filedigest.h"
#include "tests/support/processfacts.h"

#include <QBuffer>
#include <QTemporaryFile>
#include <QtCrypto>
#include <QtTest>

#include <openssl/evp.h>

namespace {

QByteArray opensslDigest(QIODevice *device, const EVP_MD *type)
{
    device->seek(0);
    EVP_MD_CTX *context = EVP_MD_CTX_new();
    EVP_DigestInit_ex(context, type, nullptr);
    for (QByteArray piece = device->read(1 << 20); !piece.isEmpty(); piece = device->read(1 << 20))
        EVP_DigestUpdate(context, piece.constData(), size_t(piece.size()));
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int size = 0;
    EVP_DigestFinal_ex(context, digest, &size);
    EVP_MD_CTX_free(context);
    return QByteArray(reinterpret_cast<const char *>(digest), int(size));
}

/// Empty where there is none.
QByteArray fileDigest(QIODevice *device, qint64 size, const QString &type)
{
    return Trivex::fileDigests(device, size, {type}).value(0);
}

} // namespace

class TestFileDigest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sizes_data();
    void sizes();
    void rewinds();
    void onlyTheAskedPart();
    void tooShort();
    void unknownType();
    void aboveFourGibibytes();
};

void TestFileDigest::sizes_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {0, 1, 63, 64, 262143, 262144, 262145, 1000000})
        QTest::addRow("%d bytes", size) << size;
}

void TestFileDigest::sizes()
{
    QFETCH(int, size);
    QByteArray data(size, 'x');
    for (int i = 0; i < size; i += 7)
        data[i] = char(i);
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray expected = opensslDigest(&buffer, EVP_sha256());
    QCOMPARE(fileDigest(&buffer, size, QStringLiteral("sha256")), expected);
    QCOMPARE(Trivex::bytesDigest(data, QStringLiteral("sha256")), expected);
}

void TestFileDigest::rewinds()
{
    QByteArray data("some text");
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray first = fileDigest(&buffer, data.size(), QStringLiteral("sha1"));
    QCOMPARE(first.size(), 20);
    QCOMPARE(fileDigest(&buffer, data.size(), QStringLiteral("sha1")), first);
}

void TestFileDigest::onlyTheAskedPart()
{
    QByteArray data("abcdef");
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    QCOMPARE(fileDigest(&buffer, 3, QStringLiteral("sha256")),
             Trivex::bytesDigest("abc", QStringLiteral("sha256")));
}

void TestFileDigest::tooShort()
{
    QByteArray data("abc");
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    QCOMPARE(fileDigest(&buffer, 4, QStringLiteral("sha256")), QByteArray());
}

void TestFileDigest::unknownType()
{
    QByteArray data("abc");
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    // "rsa" is an algorithm that QCA has, but no digest.
    for (const QString &type : {QStringLiteral("md99"), QStringLiteral("rsa"), QString()}) {
        QCOMPARE(fileDigest(&buffer, 3, type), QByteArray());
        QCOMPARE(Trivex::bytesDigest(data, type), QByteArray());
        QVERIFY(!Trivex::isDigestKnown(type));
    }
}

void TestFileDigest::aboveFourGibibytes()
{
    const qint64 size = (qint64(4) << 30) + 4321;
    QTemporaryFile file;
    QVERIFY(file.open());
    QVERIFY(file.resize(size));
    QVERIFY(file.seek(size - 3));
    QCOMPARE(file.write("end"), 3);
    QVERIFY(file.flush());

    QFile reader(file.fileName());
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    const qint64 before = TrivexTest::peakMemory();
    const QByteArray digest = fileDigest(&reader, size, QStringLiteral("sha256"));
    [[maybe_unused]] const qint64 used = TrivexTest::peakMemory() - before;
    QCOMPARE(digest.size(), 32);
    QCOMPARE(digest, opensslDigest(&reader, EVP_sha256()));
#ifndef __SANITIZE_ADDRESS__ // which keeps what was given back for a while
    QVERIFY2(used < 40 * 1024, qPrintable(QStringLiteral("%1 KiB").arg(used)));
#endif
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TestFileDigest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_filedigest.moc"
