// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/plaintoken.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/loopmeter.h"
#include "tests/support/needtokens.h"
#include "tests/support/testtoken.h"

#include <QElapsedTimer>

#include <malloc.h>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Scale");
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int Certificates = 500; // the sanitizers take whole stacks of each allocation
#else
constexpr int Certificates = 5000;
#endif
constexpr int FirstRows = 500;

qint64 usedMemory()
{
    malloc_trim(0);
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks + info.hblkhd);
}

} // namespace

/// Five thousand certificates on one token: time against the same reading with plain PKCS#11 and
/// OpenSSL calls in the same process, memory, and what the event loop feels of it.
class TestTokenScale : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void reading();

private:
    std::unique_ptr<TestToken> m_token;
    qint64 m_plain = 0;
    qint64 m_module = 0;
};

void TestTokenScale::initTestCase()
{
    m_token = std::make_unique<TestToken>(StoreName);
    TRIVEX_NEED_TOKENS();
    QVERIFY2(m_token->isValid(), qPrintable(m_token->problem()));
    m_token->useInThisProcess();
    // One arena for all threads: only that one is counted.
    mallopt(M_ARENA_MAX, 1);
    {
        PlainToken plain(TestToken::softHsmLibrary());
        QVERIFY(plain.isOpen());
        QVERIFY(plain.writeCertificates(Certificates, TestToken::pin()));
    }
    // The better of two: the first warms the caches.
    for (int round = 0; round < 2; ++round) {
        const qint64 before = usedMemory();
        QElapsedTimer timer;
        timer.start();
        PlainToken plain(TestToken::softHsmLibrary());
        QCOMPARE(plain.readCertificates(), Certificates);
        m_plain = timer.elapsed();
        // What the module itself keeps: the certificates that were decoded are gone again.
        m_module = usedMemory() - before;
    }
}

void TestTokenScale::reading()
{
    const QCA::Initializer qca;
    QVERIFY(QCA::findProvider(QStringLiteral("qca-norvel-pkcs11")));
    const qint64 before = usedMemory();
    LoopMeter meter;
    meter.start();
    QElapsedTimer timer;
    timer.start();
    Stores stores;
    QCA::KeyStore *store = stores.waitFor(StoreName);
    QVERIFY(store);
    int listed = 0;
    connect(store, &QCA::KeyStore::updated, this, [&] { listed += store->entryList().size(); });
    QVERIFY(stores.waitForEntries(StoreName, Certificates, 30000));
    const qint64 all = timer.elapsed();
    const qint64 memory = (usedMemory() - before - m_module) / Certificates;
    qInfo("plain %lld ms, key store %lld ms, longest stall %lld ms, %lld bytes a certificate "
          "beside %lld in the module",
          m_plain, all, meter.longest(), memory, m_module / Certificates);
    QVERIFY(meter.longest() <= LoopMeter::Unnoticed);
    QVERIFY(memory < 8192);
    // The first rows are handed over twice, the others once: or a large token would be quadratic.
    QVERIFY2(listed <= Certificates + FirstRows, qPrintable(QString::number(listed)));
}

QTEST_GUILESS_MAIN(TestTokenScale)
#include "tst_tokenscale.moc"
