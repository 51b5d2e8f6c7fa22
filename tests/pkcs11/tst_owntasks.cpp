// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/keystoreentry.h"
#include "signing/signverify.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"
#include "tools/certificateimport.h"
#include "tools/documentsigner.h"
#include "tools/keyrequest.h"
#include "tools/tokeninfo.h"
#include "tools/tokenkeywork.h"

#include <QSignalSpy>

#include <atomic>
#include <thread>

using namespace Trivex;
using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Shared");
constexpr int Patience = 30000; // ms

/// A signature that somebody else waits for, on a thread of its own.
class OthersSignature {
public:
    explicit OthersSignature(QCA::PrivateKey key)
        : m_thread([this, key]() mutable {
            m_signature = key.signMessage(QByteArray("data"), QCA::EMSA3_SHA256);
            m_isOver = true;
        })
    {
    }
    ~OthersSignature() { m_thread.join(); }

    bool isOver() const { return m_isOver; }
    bool succeeds() const
    {
        return QTest::qWaitFor([this] { return isOver(); }, Patience) && !m_signature.isEmpty();
    }

private:
    QByteArray m_signature;
    std::atomic_bool m_isOver = false;
    std::thread m_thread;
};

} // namespace

/// Several at work on one token: who stops ends the own work, and nobody else's.
class TestOwnTasks : public TokenFixture {
    Q_OBJECT
public:
    TestOwnTasks()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void keyWorkWaits();
    void keyWorkRuns();
    void requestWaits();
    void requestRuns();
    void requestSigns();
    void importWaits();
    void importRuns();
    void signerWaits();
    void signerRuns();
    void signerOfNobody();
    void documentWaits();
    void otherStopsAreNotHeard();

private:
    QCA::PrivateKey key() const
    {
        return m_stores->entry(StoreName, QStringLiteral("signer")).keyBundle().privateKey();
    }
    /// Somebody else's signature has the token until the test is over with its own work.
    std::unique_ptr<OthersSignature> startOther();
    int objects() const { return m_token->token().objectCount(); }

    QString m_storeId;
};

void TestOwnTasks::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    m_token->useInThisProcess();
    QVERIFY(start(1));
    m_storeId = m_store->id();
}

/// Each test begins logged in, so that nothing but the work itself is in the module.
void TestOwnTasks::init()
{
    m_token->control();
    QTRY_VERIFY_WITH_TIMEOUT(!TokenMonitor::token(m_storeId).busy, Patience);
    QVERIFY(removeOthers());
    QVERIFY(signs());
    m_token->forget();
}

std::unique_ptr<OthersSignature> TestOwnTasks::startOther()
{
    m_token->control("delay C_Sign 1 3000");
    auto other = std::make_unique<OthersSignature>(key());
    return m_token->waitUntilInside("C_Sign") ? std::move(other) : nullptr;
}

void TestOwnTasks::keyWorkWaits()
{
    const auto other = startOther();
    QVERIFY(other);
    TokenKeyWork work;
    QSignalSpy finished(&work, &TokenKeyWork::finished);
    QVERIFY(work.show(m_storeId));
    work.cancel();
    QVERIFY(finished.wait(Patience));
    QVERIFY(!finished.first().first().toBool());
    QVERIFY(other->succeeds());
}

void TestOwnTasks::keyWorkRuns()
{
    m_token->control("delay C_GetSessionInfo 1 1500");
    TokenKeyWork work;
    QSignalSpy finished(&work, &TokenKeyWork::finished);
    QVERIFY(work.show(m_storeId));
    QVERIFY(m_token->waitUntilInside("C_GetSessionInfo"));
    const OthersSignature other(key());
    work.cancel();
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, Patience);
    QVERIFY(!finished.first().first().toBool());
    QVERIFY(other.succeeds());
}

void TestOwnTasks::requestWaits()
{
    const auto other = startOther();
    QVERIFY(other);
    const int before = objects();
    KeyRequest request;
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.prepareKey(m_storeId, KeyRequest::P256, QStringLiteral("made"));
    request.cancel();
    QVERIFY(finished.wait(Patience));
    QCOMPARE(request.error(), int(KeyRequest::KeyNotMade));
    QVERIFY(other->succeeds());
    QCOMPARE(m_token->count("C_GenerateKeyPair"), 0);
    QCOMPARE(objects(), before);
}

void TestOwnTasks::requestRuns()
{
    const int before = objects();
    m_token->control("delay C_GenerateKeyPair 1 1500");
    KeyRequest request;
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.prepareKey(m_storeId, KeyRequest::P256, QStringLiteral("made"));
    QVERIFY(m_token->waitUntilInside("C_GenerateKeyPair"));
    const OthersSignature other(key());
    request.cancel();
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, Patience);
    QCOMPARE(request.error(), int(KeyRequest::KeyNotMade));
    QVERIFY(other.succeeds());
    QTRY_COMPARE_WITH_TIMEOUT(objects(), before, Patience);
}

/// The signature of a request is stopped while the token works for somebody else.
void TestOwnTasks::requestSigns()
{
    const auto other = startOther();
    QVERIFY(other);
    KeyRequest request;
    request.addName(QStringLiteral("commonName"), QStringLiteral("Stopped"));
    QSignalSpy finished(&request, &KeyRequest::finished);
    QTimer::singleShot(0, &request, &KeyRequest::cancel);
    request.useKey(key());
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, Patience);
    QCOMPARE(request.error(), int(KeyRequest::NotSigned));
    QVERIFY(other->succeeds());
    QCOMPARE(m_token->count("C_Sign"), 1);
    // The same object goes on as if nothing had been.
    QVERIFY(!request.isRunning());
    m_token->control();
    request.useKey(QCA::PrivateKey());
    QCOMPARE(request.error(), int(KeyRequest::NoKey));
}

void TestOwnTasks::importWaits()
{
    const auto other = startOther();
    QVERIFY(other);
    CertificateFile file;
    file.open(m_authority->certificateFile());
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, m_storeId);
    // Its write is queued in a turn of the event loop.
    QTimer::singleShot(0, [&] { QTimer::singleShot(0, &import, &CertificateImport::cancel); });
    QVERIFY(finished.wait(Patience));
    QVERIFY(!finished.first().first().toBool());
    QVERIFY(import.wasLeft());
    QVERIFY(other->succeeds());
    QCOMPARE(m_token->count("C_CreateObject"), 0);
}

void TestOwnTasks::importRuns()
{
    const int before = objects();
    CertificateFile file;
    file.open(m_authority->certificateFile());
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    m_token->control("delay C_CreateObject 1 1500");
    import.start(&file, m_storeId);
    QVERIFY(m_token->waitUntilInside("C_CreateObject"));
    const OthersSignature other(key());
    import.cancel();
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, Patience);
    QVERIFY(other.succeeds());
    // What was in the module is either there as a whole or not at all.
    const bool isThere = finished.first().first().toBool();
    QTRY_COMPARE_WITH_TIMEOUT(objects(), before + (isThere ? 1 : 0), Patience);
}

void TestOwnTasks::signerWaits()
{
    KeyStoreEntry entry(m_stores->entry(StoreName, QStringLiteral("signer")));
    TokenInfo info;
    info.setStoreId(m_storeId);
    SignVerify signer;
    QSignalSpy done(&signer, &SignVerify::signSuccess);
    m_token->control("delay C_Sign 1 6000");
    const OthersSignature other(key());
    QVERIFY(m_token->waitUntilInside("C_Sign"));
    signer.sign("what", m_authority->file(QStringLiteral("stopped.sig")), &entry);
    // What is stopped has to have begun, 3 s after it was asked for; nothing else shows that.
    QTimer stops;
    connect(&stops, &QTimer::timeout, &info, [&] { info.cancel(&signer); });
    stops.start(200);
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), Patience);
    stops.stop();
    QVERIFY(other.succeeds());
    QCOMPARE(m_token->count("C_Sign"), 1);
    QCOMPARE(done.size(), 0);
}

void TestOwnTasks::signerRuns()
{
    KeyStoreEntry entry(m_stores->entry(StoreName, QStringLiteral("signer")));
    TokenInfo info;
    SignVerify signer;
    m_token->control("delay C_Sign 1 2000");
    signer.sign("what", m_authority->file(QStringLiteral("stopped.sig")), &entry);
    // It signs inside the event loop that waits for it here.
    std::unique_ptr<OthersSignature> other;
    QTimer looks;
    connect(&looks, &QTimer::timeout, &info, [&] {
        if (other || m_token->countText("waits C_Sign\n") == 0)
            return;
        other = std::make_unique<OthersSignature>(key());
        info.cancel(&signer);
    });
    looks.start(50);
    QTRY_COMPARE_WITH_TIMEOUT(signer.error(), int(SignVerify::ErrorSign), Patience);
    QVERIFY(other && other->succeeds());
    // Its next signature is not the one that was stopped.
    signer.setError(SignVerify::NoError);
    QSignalSpy done(&signer, &SignVerify::signSuccess);
    signer.sign("what", m_authority->file(QStringLiteral("next.sig")), &entry);
    QVERIFY(done.wait(Patience));
}

void TestOwnTasks::signerOfNobody()
{
    const auto other = startOther();
    QVERIFY(other);
    TokenInfo info;
    info.setStoreId(m_storeId);
    SignVerify idle;
    QObject stranger;
    info.cancel(&idle);
    info.cancel(&stranger);
    info.cancel(nullptr);
    QVERIFY(other->succeeds());
}

void TestOwnTasks::documentWaits()
{
    QFile document(m_authority->file(QStringLiteral("letter")));
    QVERIFY(document.open(QIODevice::WriteOnly));
    document.write("Dear all");
    document.close();
    const QCA::KeyBundle bundle = m_stores->entry(StoreName, QStringLiteral("signer")).keyBundle();
    m_token->control("delay C_Sign 1 6000");
    const OthersSignature other(key());
    QVERIFY(m_token->waitUntilInside("C_Sign"));
    DocumentSigner signer;
    QSignalSpy finished(&signer, &DocumentSigner::finished);
    signer.signWith(bundle,
                    {document.fileName(), document.fileName() + QStringLiteral(".p7s"),
                     DocumentSignature::Detached},
                    false);
    QTimer stops;
    connect(&stops, &QTimer::timeout, &signer, &DocumentSigner::cancel);
    stops.start(300);
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, Patience);
    QVERIFY(signer.error() != int(DocumentSigner::NoError));
    stops.stop();
    QVERIFY(other.succeeds());
    QCOMPARE(m_token->count("C_Sign"), 1);
}

/// Two requests for one token: the first is stopped, and the second gets its key.
void TestOwnTasks::otherStopsAreNotHeard()
{
    m_token->control("delay C_GenerateKeyPair 1 1500");
    KeyRequest first;
    KeyRequest second;
    QSignalSpy firstFinished(&first, &KeyRequest::finished);
    QSignalSpy secondFinished(&second, &KeyRequest::finished);
    first.prepareKey(m_storeId, KeyRequest::P256, QStringLiteral("first"));
    QVERIFY(m_token->waitUntilInside("C_GenerateKeyPair"));
    second.prepareKey(m_storeId, KeyRequest::P256, QStringLiteral("made"));
    first.cancel();
    QTRY_COMPARE_WITH_TIMEOUT(firstFinished.size(), 1, Patience);
    QCOMPARE(first.error(), int(KeyRequest::KeyNotMade));
    QTRY_COMPARE_WITH_TIMEOUT(secondFinished.size(), 1, Patience);
    QCOMPARE(second.error(), int(KeyRequest::NoError));
    QVERIFY(second.hasKey());
    removeGenerated();
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    TestOwnTasks test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_owntasks.moc"
