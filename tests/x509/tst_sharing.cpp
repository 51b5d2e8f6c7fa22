// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/providers.h"
#include "qca/keys/keys.h"
#include "qca/x509/certificatedata.h"
#include "qca/x509/makecertificate.h"
#include "tests/x509/corpus.h"

#include <QtTest>

#include <thread>
#include <vector>

#include <malloc.h>

using namespace Trivex;

/// What certificates with the same bytes share, from how many threads, and what it takes.
class TestSharing : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sharesByDer();
    void forgetsWhatNobodyUses();
    void ownsItsBytes();
    void readsFromManyThreads();
    void takesLittleMemory();

private:
    QCA::Initializer m_initializer;
};

void TestSharing::sharesByDer()
{
    const QByteArray der = Corpus::read(QStringLiteral("identifiers.der"));
    const auto first = CertificateData::fromDer(der);
    QCOMPARE(CertificateData::fromDer(QByteArray(der.constData(), der.size())).get(), first.get());
    QCOMPARE(CertificateData::fromDer(der + "tail").get(), first.get());
    QCA::Certificate lazy = makeCertificate(der);
    QVERIFY(lazy == QCA::Certificate::fromDER(der));
    // A copy that is written to stays the same certificate.
    QCA::Certificate copy = lazy;
    copy.context();
    QVERIFY(copy == lazy);
}

void TestSharing::forgetsWhatNobodyUses()
{
    const QByteArray der = Corpus::read(QStringLiteral("identifiers.der"));
    std::weak_ptr<const CertificateData> watch;
    {
        const auto data = CertificateData::fromDer(der);
        watch = data;
        data->properties();
    }
    QVERIFY(watch.expired());
    QVERIFY(CertificateData::fromDer(der));
}

void TestSharing::ownsItsBytes()
{
    QCA::Certificate certificate;
    {
        QByteArray der = Corpus::read(QStringLiteral("ec-384.der"));
        certificate = makeCertificate(QByteArray::fromRawData(der.constData(), der.size()));
        der.fill('x');
    }
    QCOMPARE(certificate.commonName(), QStringLiteral("Curve P-384"));
    QVERIFY(certificate.isSelfSigned());
}

void TestSharing::readsFromManyThreads()
{
    QList<QByteArray> ders;
    for (const char *file : {"identifiers.der", "extensions.der", "ec-384.der", "issued.der"})
        ders += Corpus::read(QString::fromLatin1(file));
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    // QCA's own contexts need its provider list before the race begins.
    QVERIFY(QCA::findProvider(opensslProviderName()));
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&ders, &wrong, i] {
            for (int round = 0; round < 50; ++round) {
                const QByteArray &der = ders.at((i + round) % ders.size());
                const auto data = CertificateData::fromDer(der);
                const QCA::Certificate certificate = makeCertificate(der);
                const QCA::Certificate copy = certificate;
                const bool good = data && data->names().subject.size() > 0
                    && data->properties().end.isValid() && copy.notValidAfter().isValid()
                    && copy.subjectInfo() == certificate.subjectInfo() && copy.toDER() == der
                    && keyType(copy.subjectPublicKey()) >= 0;
                wrong += good ? 0 : 1;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
}

void TestSharing::takesLittleMemory()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("a sanitizer keeps its own accounts of memory");
#else
    constexpr int Count = 2000;
    const QByteArray der = Corpus::read(QStringLiteral("identifiers.der"));
    const int place = der.size() - 40; // in the signature
    const auto different = [&der, place](int i) {
        QByteArray changed = der;
        changed[place] = char(i);
        changed[place + 1] = char(i >> 8);
        return changed;
    };
    makeCertificate(der).notValidAfter();
    std::vector<QCA::Certificate> certificates;
    certificates.reserve(Count);
    const auto before = mallinfo2();
    for (int i = 0; i < Count; ++i)
        certificates.push_back(makeCertificate(different(i)));
    const auto listed = mallinfo2();
    for (const QCA::Certificate &certificate : certificates)
        QVERIFY(certificate.notValidAfter().isValid());
    const auto read = mallinfo2();
    const auto each = [&before](const struct mallinfo2 &after) {
        return int((after.uordblks - before.uordblks) / Count);
    };
    qInfo("%d bytes DER; listed %d, everything read %d bytes a certificate", int(der.size()),
          each(listed), each(read));
    QVERIFY(each(listed) < 5 * 1024);
    QVERIFY(each(read) < 6 * 1024);
#endif
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestSharing test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_sharing.moc"
