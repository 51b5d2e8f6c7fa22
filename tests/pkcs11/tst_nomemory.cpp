// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/storewriter.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/plaintoken.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QSignalSpy>

#include <atomic>
#include <cstdlib>
#include <new>
#include <thread>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("No memory");
/// As much as a search for objects takes, and little else does.
constexpr size_t Much = 32 * 1024;

std::atomic<bool> isScarce = false;
std::atomic<int> refused = 0;
const std::thread::id Main = std::this_thread::get_id();

} // namespace

/// Stands in front of the library's: the linker takes the program's functions first.
Q_DECL_EXPORT void *operator new(size_t size)
{
    if (size >= Much && isScarce && std::this_thread::get_id() != Main) {
        ++refused;
        throw std::bad_alloc();
    }
    if (void *memory = std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

Q_DECL_EXPORT void operator delete(void *memory) noexcept
{
    std::free(memory);
}

Q_DECL_EXPORT void operator delete(void *memory, size_t) noexcept
{
    std::free(memory);
}

/// The machine has no memory for a token's thread: what it does fails, and the process lives.
class TestNoMemory : public TokenFixture {
    Q_OBJECT
public:
    TestNoMemory()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void whileATokenIsRead();
    void inAnOperation();
    void amongCertificates();
};

void TestNoMemory::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
    QVERIFY(start(1));
}

void TestNoMemory::whileATokenIsRead()
{
    const QString id = m_store->id();
    const auto status = [&id] { return Trivex::TokenMonitor::token(id); };
    m_token->control("remove");
    QTRY_VERIFY(!status().present);
    refused = 0;
    isScarce = true;
    m_token->control();
    // Tried again at each look.
    QTRY_VERIFY(refused >= 2);
    QVERIFY(status().present);
    QVERIFY(!status().isRead);
    isScarce = false;
    QTRY_VERIFY(status().isRead);
    QVERIFY(m_stores->waitForEntries(StoreName, 1, 30000));
    QVERIFY(signs());
}

void TestNoMemory::inAnOperation()
{
    m_token->control("end-sessions-at session 1");
    refused = 0;
    isScarce = true;
    QVERIFY(!signs());
    isScarce = false;
    QVERIFY(refused > 0);
    m_token->control();
    QVERIFY(signs());
}

/// What many certificates are kept in grows while they are written.
void TestNoMemory::amongCertificates()
{
    constexpr int Count = 400;
    const QList<QByteArray> ders = plainCertificates(Count);
    Trivex::StoreWriter writer;
    QSignalSpy written(&writer, &Trivex::StoreWriter::writtenSeveral);
    m_token->control("hold C_CreateObject 3");
    QVERIFY(writer.write(m_store->id(), QVector<QByteArray>(ders.begin(), ders.end())));
    QVERIFY(m_token->waitUntilInside("C_CreateObject"));
    refused = 0;
    isScarce = true;
    m_token->control();
    const bool isOver = written.wait(60000);
    isScarce = false;
    QVERIFY(isOver);
    QVERIFY(refused > 0);
    const int count = written.first().at(0).toInt();
    qInfo("%d of %d", count, Count);
    QVERIFY(count >= 3 && count < Count);
    QVERIFY(!written.first().at(1).toBool());
    // Nobody asks for it: the next look at the token shows what was written.
    QVERIFY(
        QTest::qWaitFor([&] { return m_stores->currentEntries(StoreName).size() > count; }, 30000));
    written.clear();
    QVERIFY(writer.write(m_store->id(), QVector<QByteArray>(ders.begin(), ders.end())));
    QVERIFY(written.wait(60000));
    QVERIFY(written.first().at(1).toBool());
    QCOMPARE(m_stores->currentEntries(StoreName).size(), 1 + Count);
}

QTEST_GUILESS_MAIN(TestNoMemory)
#include "tst_nomemory.moc"
