// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// What rows that are remembered of a token mean to saved requests and to the key store model.
#include "certificates/keystoreentry.h"
#include "keystores/keystoremodel.h"
#include "qca/adapter/entries.h"
#include "qca/tokens/rememberedtokens.h"
#include "qca/tokens/tokens.h"
#include "requests/certificaterequestmodel.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/requests/home.h"
#include "tests/support/needtokens.h"

#include <QSignalSpy>

using namespace TrivexTest;
using Trivex::TokenMonitor;

namespace {

const QString StoreName = QStringLiteral("Remembered");
constexpr int Patience = 30000; // ms

/// A saved request in the list of requests, and what the stores tell of its certificate.
struct ListedRequest {
    ListedRequest(const QString &request, const QDir &directory, KeyStoreModel *stores)
        : path(directory.filePath(QStringLiteral("saved.csr")))
        , arrived(stores, &KeyStoreModel::keyBundleWritten)
    {
        QFile::copy(request, path);
        list.setKeyStoreModel(stores);
    }

    bool isListed() const
    {
        return QTest::qWaitFor([this] { return list.rowCount() == 1; });
    }
    bool isUntouched() const { return arrived.isEmpty() && QFile::exists(path); }

    const QString path;
    CertificateRequestModel list;
    QSignalSpy arrived;
};

} // namespace

class TestRequestMemory : public TokenFixture {
    Q_OBJECT
public:
    explicit TestRequestMemory(const Home &home)
        : TokenFixture(StoreName)
        , m_home(home)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void requestOutlivesARememberedRow();
    void requestGoesOnceTheTokenIsRead();
    void rowsTellWhatWasRead();

private:
    bool writeCertificate(const QString &label);
    bool removeCertificate(const QString &id);
    QStringList files() const;
    /// Whether the file has that certificate.
    bool keeps(const QByteArray &der) const;
    bool takeOut();
    /// Puts the token back, with its reading held up; true when the remembered row is there.
    bool comesBackHeld();
    bool release();
    bool isRead() const { return TokenMonitor::token(m_storeId).isRead; }
    int rowOfBundle() const;

    const Home &m_home;
    QString m_request; ///< a saved one, outside of the directory of requests
    QByteArray m_certificate;
    QString m_storeId;
    std::unique_ptr<KeyStoreModel> m_model;
};

void TestRequestMemory::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    const QString key = m_authority->file(QStringLiteral("key.pem"));
    m_request = m_authority->file(QStringLiteral("saved.csr"));
    m_authority->openssl({QStringLiteral("genpkey"), QStringLiteral("-algorithm"),
                          QStringLiteral("RSA"), QStringLiteral("-out"), key});
    m_authority->openssl({QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-key"),
                          key, QStringLiteral("-subj"), QStringLiteral("/CN=Saved"),
                          QStringLiteral("-out"), m_request});
    const auto der = [&](const QStringList &further) {
        return m_authority->openssl(QStringList{QStringLiteral("pkey"), QStringLiteral("-outform"),
                                                QStringLiteral("DER"), QStringLiteral("-in"), key}
                                    + further);
    };
    const QString id = QStringLiteral("01");
    const TestToken &token = m_token->token();
    QVERIFY(token.writeObject(QStringLiteral("privkey"), der({}), id, QStringLiteral("key")));
    QVERIFY(token.writeObject(QStringLiteral("pubkey"), der({QStringLiteral("-pubout")}), id,
                              QStringLiteral("key")));
    m_token->useInThisProcess();
}

bool TestRequestMemory::writeCertificate(const QString &label)
{
    m_certificate = m_authority->issueForRequest(m_request);
    return m_token->token().writeObject(QStringLiteral("cert"), m_certificate, QStringLiteral("01"),
                                        label);
}

bool TestRequestMemory::removeCertificate(const QString &id)
{
    return m_token->token().removeObject(QStringLiteral("cert"), id);
}

QStringList TestRequestMemory::files() const
{
    return QDir(m_home.path() + QStringLiteral("/.cache/trivex/tokens"))
        .entryList({QStringLiteral("*.rows")});
}

bool TestRequestMemory::keeps(const QByteArray &der) const
{
    QFile file(m_home.path() + QStringLiteral("/.cache/trivex/tokens/") + files().value(0));
    return file.open(QIODevice::ReadOnly) && file.readAll().contains(der);
}

void TestRequestMemory::init()
{
    m_home.clearRequests();
    m_token->control();
    QDir(m_home.path() + QStringLiteral("/.cache/trivex")).removeRecursively();
    QVERIFY(writeCertificate(QStringLiteral("first")));
    Trivex::setTokensRemembered(true);
    m_qca = std::make_unique<QCA::Initializer>();
    m_model = std::make_unique<KeyStoreModel>();
    QTRY_VERIFY_WITH_TIMEOUT(m_model->keyStoreByName(StoreName), Patience);
    m_storeId = m_model->keyStoreByName(StoreName)->id();
    QTRY_VERIFY_WITH_TIMEOUT(rowOfBundle() >= 0, Patience);
    QTRY_COMPARE_WITH_TIMEOUT(files().size(), 1, Patience);
}

void TestRequestMemory::cleanup()
{
    m_token->control();
    m_model.reset();
    m_qca.reset();
    removeCertificate(QStringLiteral("01"));
    Trivex::setTokensRemembered(false);
}

int TestRequestMemory::rowOfBundle() const
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QCA::KeyStoreEntry *entry = m_model->entryOf(row);
        if (Trivex::entryStoreId(*entry) == m_storeId
            && Trivex::entryType(*entry) == QCA::KeyStoreEntry::TypeKeyBundle)
            return row;
    }
    return -1;
}

bool TestRequestMemory::takeOut()
{
    m_token->control("remove\n");
    return QTest::qWaitFor([&] { return !TokenMonitor::token(m_storeId).present; }, Patience)
        && QTest::qWaitFor([&] { return rowOfBundle() < 0; }, Patience);
}

bool TestRequestMemory::comesBackHeld()
{
    m_token->forget();
    m_token->control("hold C_FindObjectsInit 1\n");
    return m_token->waitUntilInside("C_FindObjectsInit")
        && QTest::qWaitFor([&] { return rowOfBundle() >= 0; }, Patience) && !isRead();
}

bool TestRequestMemory::release()
{
    m_token->control("# on\n");
    return QTest::qWaitFor([&] { return isRead(); }, Patience);
}

/// Its certificate was taken off the token meanwhile: the request is all that there is.
void TestRequestMemory::requestOutlivesARememberedRow()
{
    QVERIFY(takeOut());
    QVERIFY(removeCertificate(QStringLiteral("01")));
    ListedRequest request(m_request, m_home.requests(), m_model.get());
    QVERIFY(request.isListed());
    QVERIFY(comesBackHeld());
    QVERIFY(request.isUntouched());
    QVERIFY(release());
    QTRY_VERIFY_WITH_TIMEOUT(rowOfBundle() < 0, Patience);
    QVERIFY(request.isUntouched());
    // What comes after that is told of as ever.
    QVERIFY(writeCertificate(QStringLiteral("again")));
    QVERIFY(m_token->replug(m_storeId));
    QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(request.path), Patience);
}

void TestRequestMemory::requestGoesOnceTheTokenIsRead()
{
    QVERIFY(takeOut());
    ListedRequest request(m_request, m_home.requests(), m_model.get());
    QVERIFY(request.isListed());
    QVERIFY(comesBackHeld());
    QVERIFY(request.isUntouched());
    QVERIFY(release());
    QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(request.path), Patience);
    QCOMPARE(request.arrived.count(), 1);
}

void TestRequestMemory::rowsTellWhatWasRead()
{
    const QString issuer = QStringLiteral("55");
    const TestToken &token = m_token->token();
    QVERIFY(token.writeObject(QStringLiteral("cert"), m_authority->certificate(), issuer,
                              QStringLiteral("authority")));
    QVERIFY(m_token->replug(m_storeId));
    const auto chain = [&] {
        const QCA::KeyStoreEntry *entry = m_model->entryOf(rowOfBundle());
        return entry ? Trivex::entryKeyBundle(*entry).certificateChain().size() : 0;
    };
    QTRY_COMPARE_WITH_TIMEOUT(chain(), 2, Patience);
    QTRY_VERIFY_WITH_TIMEOUT(keeps(m_authority->certificate()), Patience);
    QVERIFY(takeOut());
    QVERIFY(removeCertificate(QStringLiteral("01")));
    QVERIFY(removeCertificate(issuer));
    QVERIFY(token.writeObject(QStringLiteral("cert"), m_certificate, QStringLiteral("01"),
                              QStringLiteral("second")));
    QVERIFY(comesBackHeld());
    QPointer<KeyStoreEntry> entry = m_model->index(rowOfBundle(), 0)
                                        .data(KeyStoreModel::KeyStoreEntryRole)
                                        .value<KeyStoreEntry *>();
    QVERIFY(entry);
    QCOMPARE(entry->name(), QStringLiteral("first"));
    QCOMPARE(chain(), 2);
    QVERIFY(release());
    // The same row, with what the token shows.
    QTRY_COMPARE(chain(), 1);
    QVERIFY(entry);
    QCOMPARE(entry->name(), QStringLiteral("second"));
}

int main(int argc, char *argv[])
{
    const Home home;
    QCoreApplication application(argc, argv);
    TestRequestMemory test(home);
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestmemory.moc"
