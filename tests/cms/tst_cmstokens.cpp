// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/keystoreentry.h"
#include "qca/cms/messagecheck.h"
#include "qca/tokens/tokenregistry.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"
#include "tests/support/processfacts.h"
#include "tools/documentsigner.h"
#include "tools/documentverifier.h"

#include <QSignalSpy>

#include <future>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Trivex;
using namespace TrivexTest;

/// Documents that are signed by keys of a token, from the question for the PIN to the file.
class TestCmsTokens : public TokenFixture {
    Q_OBJECT
public:
    TestCmsTokens()
        : TokenFixture(QStringLiteral("Подписи"))
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void kinds_data();
    void kinds();
    void pinIsLeft();
    void wrongPin();
    void tokenFails_data();
    void tokenFails();
    void stopped();
    void dropped();
    void fileInItsPlace();
    void aSecondRun();
    void noKey();
    void verifier();
    void verifierSaves();
    void names();
    void stoppedWhileAnotherWorks();
    void issuerThatComesMeanwhile();

private:
    QCA::KeyBundle bundle(const QString &name) const
    {
        const QString store = QStringLiteral("Подписи");
        const QCA::KeyStoreEntry entry = m_own.contains(name)
            ? withId(m_stores->entries(store), m_own.value(name))
            : m_stores->entry(store, name);
        return entry.isNull() ? QCA::KeyBundle() : entry.keyBundle();
    }
    QString write(const QString &name, const QByteArray &contents) const;
    /// Afterwards nobody is logged in.
    bool replug() const
    {
        return m_token->replug(m_store->id())
            && m_stores->waitForEntries(QStringLiteral("Подписи"), 5);
    }
    /// Signs and waits for the end.
    int sign(DocumentSigner &signer, const QString &key = QStringLiteral("rsa:2048"),
             DocumentSignature::Form form = DocumentSignature::Detached);
    bool opensslAccepts(const QString &message, const QString &document = {}) const;
    bool hasLeftovers() const;

    QHash<QString, QString> m_own; ///< ids of the keys that we made
    QString m_document;
    QString m_target;
};

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void TestCmsTokens::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    const QStringList kinds = {QStringLiteral("rsa:2048"), QStringLiteral("EC:secp256r1"),
                               QStringLiteral("EC:secp384r1")};
    for (int i = 0; i < kinds.size(); ++i)
        QVERIFY(addKey(kinds.at(i), QStringLiteral("0%1").arg(i + 1), kinds.at(i)));
    m_token->useInThisProcess();
    QVERIFY(start(kinds.size()));
    // The program that makes the others can't read the public halves of these.
    for (const char *curve : {"ec-secp521r1", "ed25519"}) {
        const QCA::PrivateKey key = generateCurve(QLatin1String(curve), QLatin1String(curve));
        m_own[QLatin1String(curve)] = issueAndImport(key, QStringLiteral("/CN=Signer"));
        QVERIFY(!m_own[QLatin1String(curve)].isEmpty());
    }
}

void TestCmsTokens::init()
{
    m_token->control();
    m_token->forget();
    m_prompt->setPin(TestToken::pin());
    m_document = write(QStringLiteral("letter.txt"), "Pay 100 to Mary\n");
    m_target = m_authority->file(QStringLiteral("letter.txt.p7s"));
    QFile::remove(m_target);
}

QString TestCmsTokens::write(const QString &name, const QByteArray &contents) const
{
    QFile target(m_authority->file(name));
    const bool isWritten =
        target.open(QIODevice::WriteOnly) && target.write(contents) == contents.size();
    return isWritten ? target.fileName() : QString();
}

int TestCmsTokens::sign(DocumentSigner &signer, const QString &key, DocumentSignature::Form form)
{
    QSignalSpy finished(&signer, &Job::finished);
    signer.signWith(bundle(key), {m_document, m_target, form}, false);
    if (finished.isEmpty() && !finished.wait(20000))
        return -1;
    return signer.error();
}

bool TestCmsTokens::opensslAccepts(const QString &message, const QString &document) const
{
    QStringList arguments = {QStringLiteral("cms"),     QStringLiteral("-verify"),
                             QStringLiteral("-binary"), QStringLiteral("-cades"),
                             QStringLiteral("-inform"), QStringLiteral("DER"),
                             QStringLiteral("-in"),     message,
                             QStringLiteral("-CAfile"), m_authority->certificateFile()};
    if (!document.isEmpty())
        arguments += {QStringLiteral("-content"), document};
    return m_authority->openssl(arguments) == contentsOf(m_document);
}

bool TestCmsTokens::hasLeftovers() const
{
    return !QDir(m_authority->file(QString()))
                .entryList({QStringLiteral(".trivex-*")}, QDir::Files | QDir::Hidden)
                .isEmpty();
}

void TestCmsTokens::kinds_data()
{
    QTest::addColumn<bool>("isKnownToOpenssl");
    QTest::newRow("rsa:2048") << true;
    QTest::newRow("EC:secp256r1") << true;
    QTest::newRow("EC:secp384r1") << true;
    QTest::newRow("ec-secp521r1") << true;
    // libcrypto's messages don't know these keys before OpenSSL 3.6.
    QTest::newRow("ed25519") << false;
}

void TestCmsTokens::kinds()
{
    QFETCH(bool, isKnownToOpenssl);
    const QString kind = QString::fromLatin1(QTest::currentDataTag());
    DocumentSigner signer;
    for (const auto form : {DocumentSignature::Detached, DocumentSignature::Attached}) {
        QFile::remove(m_target);
        QCOMPARE(sign(signer, kind, form), int(DocumentSigner::NoError));
        QVERIFY(signer.message().isEmpty());
        QVERIFY(!signer.isRunning());
        const QString outside = form == DocumentSignature::Detached ? m_document : QString();
        if (isKnownToOpenssl)
            QVERIFY(opensslAccepts(m_target, outside));
        DocumentVerifier verifier;
        QSignalSpy finished(&verifier, &Job::finished);
        verifier.verify(m_target, outside);
        QVERIFY(finished.wait());
        QCOMPARE(verifier.error(), int(DocumentVerifier::NoError));
        QCOMPARE(verifier.signers()->value(0, SignerList::VerdictRole).toInt(),
                 int(SignerList::Good));
        QCOMPARE(verifier.signers()->value(0, SignerList::NameRole).toString(),
                 QStringLiteral("Signer"));
    }
    // One question for each signature at most: a login may hold.
    QVERIFY(m_token->count("C_Sign") == 2);
}

void TestCmsTokens::pinIsLeft()
{
    QVERIFY(replug());
    m_prompt->setPin({});
    DocumentSigner signer;
    QCOMPARE(sign(signer), int(DocumentSigner::NotSigned));
    QCOMPARE(m_token->count("C_Login"), 0);
    QVERIFY(!QFile::exists(m_target));
    QVERIFY(!hasLeftovers());
}

void TestCmsTokens::wrongPin()
{
    QVERIFY(replug());
    m_prompt->setPin("0000");
    DocumentSigner signer;
    QCOMPARE(sign(signer), int(DocumentSigner::NotSigned));
    QCOMPARE(m_token->count("C_Login"), 1);
    QVERIFY(!QFile::exists(m_target));
    m_prompt->setPin(TestToken::pin());
    QCOMPARE(sign(signer), int(DocumentSigner::NoError));
}

void TestCmsTokens::tokenFails_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::addColumn<int>("error");
    QTest::newRow("refuses") << QByteArray("fail C_Sign * CKR_DEVICE_ERROR")
                             << int(DocumentSigner::NotSigned);
    QTest::newRow("is taken out") << QByteArray("remove-at C_SignInit 1")
                                  << int(DocumentSigner::NotSigned);
    QTest::newRow("signs too little")
        << QByteArray("report C_Sign * 10") << int(DocumentSigner::NotSigned);
}

void TestCmsTokens::tokenFails()
{
    QFETCH(QByteArray, order);
    m_token->control(order);
    DocumentSigner signer;
    QTEST(sign(signer), "error");
    QVERIFY(!signer.message().isEmpty());
    QVERIFY(!QFile::exists(m_target));
    QVERIFY(!hasLeftovers());
    QVERIFY(replug());
    QCOMPARE(sign(signer), int(DocumentSigner::NoError));
}

void TestCmsTokens::stopped()
{
    m_token->control("delay C_Sign * 1500");
    DocumentSigner signer;
    QTimer::singleShot(500, &signer, &DocumentSigner::cancel);
    const int error = sign(signer);
    QVERIFY(error == DocumentSigner::NotSigned || error == DocumentSigner::Cancelled);
    QVERIFY(!QFile::exists(m_target));
    QVERIFY(!hasLeftovers());
    // While the document is read, too.
    m_token->control();
    QFile sparse(m_document);
    constexpr qint64 Size = 4LL * 1024 * 1024 * 1024;
    QVERIFY(sparse.open(QIODevice::ReadWrite) && sparse.resize(Size));
    sparse.close();
    m_token->forget();
    QTimer::singleShot(200, &signer, &DocumentSigner::cancel);
    const qint64 before = TrivexTest::bytesRead();
    QCOMPARE(sign(signer), int(DocumentSigner::Cancelled));
    QVERIFY(TrivexTest::bytesRead() - before < Size);
    QCOMPARE(m_token->count("C_Sign"), 0);
    QVERIFY(QFile::remove(m_document));
}

/// Nobody hears of a job that went; nothing of it stays.
void TestCmsTokens::dropped()
{
    m_token->control("delay C_Sign * 500");
    auto signer = std::make_unique<DocumentSigner>();
    signer->signWith(bundle(QStringLiteral("rsa:2048")), {m_document, m_target}, false);
    QTimer::singleShot(300, this, [&signer] { signer.reset(); });
    QTRY_VERIFY(!signer);
    // The signature ends in the meantime, and must leave nothing.
    QTest::qWait(1000);
    QVERIFY(!QFile::exists(m_target));
    QVERIFY(!hasLeftovers());
}

void TestCmsTokens::fileInItsPlace()
{
    write(QStringLiteral("letter.txt.p7s"), "precious");
    DocumentSigner signer;
    QCOMPARE(sign(signer), int(DocumentSigner::Exists));
    QCOMPARE(contentsOf(m_target), QByteArray("precious"));
    m_token->forget();
    QSignalSpy finished(&signer, &Job::finished);
    signer.replace();
    QVERIFY(finished.wait());
    QCOMPARE(signer.error(), int(DocumentSigner::NoError));
    QVERIFY(opensslAccepts(m_target, m_document));
    QCOMPARE(m_token->count("C_Sign"), 0);
    signer.replace();
    QVERIFY(!signer.isRunning());
}

void TestCmsTokens::aSecondRun()
{
    DocumentSigner signer;
    QSignalSpy finished(&signer, &Job::finished);
    signer.signWith(bundle(QStringLiteral("rsa:2048")), {m_document, m_target}, false);
    QVERIFY(signer.isRunning());
    signer.signWith({}, {}, true);
    QVERIFY(finished.wait());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(signer.error(), int(DocumentSigner::NoError));
}

void TestCmsTokens::noKey()
{
    DocumentSigner signer;
    QCOMPARE(sign(signer, QStringLiteral("nobody")), int(DocumentSigner::WrongKey));
    signer.sign(nullptr, m_document, m_target, DocumentSigner::Detached, false);
    QCOMPARE(signer.error(), int(DocumentSigner::WrongKey));
    QVERIFY(!QFile::exists(m_target));
}

void TestCmsTokens::verifier()
{
    DocumentSigner signer;
    QCOMPARE(sign(signer), int(DocumentSigner::NoError));
    DocumentVerifier verifier;
    QSignalSpy finished(&verifier, &Job::finished);
    const auto verdictOf = [&](const QString &message, const QString &document) {
        finished.clear();
        verifier.verify(message, document);
        // No verdict where none came.
        if (!QTest::qWaitFor([&] { return !finished.isEmpty(); }, 60000))
            return -1;
        return verifier.signers()->value(0, SignerList::VerdictRole).toInt();
    };
    QCOMPARE(verdictOf(m_target, m_document), int(SignerList::Good));
    // Nobody said whom to trust.
    QCOMPARE(verifier.signers()->level(), 2);
    QVERIFY(!verifier.isAttached());
    QVERIFY(verifier.signers()->value(0, SignerList::TimeRole).toDateTime().isValid());
    write(QStringLiteral("letter.txt"), "Pay 900 to Mary\n");
    QCOMPARE(verdictOf(m_target, m_document), int(SignerList::DocumentChanged));
    QCOMPARE(verifier.signers()->level(), 3);
    QCOMPARE(verdictOf(m_target, {}), int(SignerList::Unchecked));
    QCOMPARE(verifier.error(), int(DocumentVerifier::NoDocument));
    verdictOf(m_target, m_authority->file(QStringLiteral("missing")));
    QCOMPARE(verifier.error(), int(DocumentVerifier::NotRead));
    verdictOf(m_document, m_document);
    QCOMPARE(verifier.error(), int(DocumentVerifier::NoMessage));
    QCOMPARE(verifier.signers()->rowCount(), 0);
    QVERIFY(!verifier.message().isEmpty());
}

void TestCmsTokens::verifierSaves()
{
    DocumentSigner signer;
    m_target = m_authority->file(QStringLiteral("letter.txt.p7m"));
    QFile::remove(m_target);
    QCOMPARE(sign(signer, QStringLiteral("rsa:2048"), DocumentSignature::Attached),
             int(DocumentSigner::NoError));
    DocumentVerifier verifier;
    QSignalSpy finished(&verifier, &Job::finished);
    verifier.verify(m_target);
    QVERIFY(finished.wait());
    QVERIFY(verifier.isAttached());
    const QString saved = write(QStringLiteral("saved.txt"), "precious");
    verifier.saveDocument(saved, false);
    QVERIFY(finished.wait());
    QCOMPARE(verifier.error(), int(DocumentVerifier::Exists));
    QCOMPARE(contentsOf(saved), QByteArray("precious"));
    verifier.saveDocument(saved, true);
    QVERIFY(finished.wait());
    QCOMPARE(verifier.error(), int(DocumentVerifier::NoError));
    QCOMPARE(contentsOf(saved), QByteArray("Pay 100 to Mary\n"));
    // What was checked is what is saved.
    QFile message(m_target);
    QVERIFY(message.open(QIODevice::ReadWrite) && message.seek(message.size() - 1)
            && message.write("x") == 1);
    message.close();
    verifier.saveDocument(saved, true);
    QVERIFY(finished.wait());
    QCOMPARE(verifier.error(), int(DocumentVerifier::Changed));
    // Even if somebody sets the time back.
    verifier.verify(m_target);
    QVERIFY(finished.wait());
    const QByteArray path = QFile::encodeName(m_target);
    struct stat before;
    QCOMPARE(::stat(path.constData(), &before), 0);
    QVERIFY(message.open(QIODevice::ReadWrite) && message.write("x") == 1);
    message.close();
    const timespec times[] = {before.st_atim, before.st_mtim};
    QCOMPARE(::utimensat(AT_FDCWD, path.constData(), times, 0), 0);
    verifier.saveDocument(saved, true);
    QVERIFY(finished.wait());
    QCOMPARE(verifier.error(), int(DocumentVerifier::Changed));
}

void TestCmsTokens::names()
{
    const auto target = [](const char *name, int form) {
        return DocumentSigner::targetFor(QLatin1String(name), form);
    };
    QCOMPARE(target("a/letter.pdf", DocumentSigner::Detached), QStringLiteral("a/letter.pdf.p7s"));
    QCOMPARE(target("letter.pdf", DocumentSigner::Attached), QStringLiteral("letter.pdf.p7m"));
    QCOMPARE(target("letter.p7s", DocumentSigner::Detached), QStringLiteral("letter.signed.p7s"));
    QCOMPARE(target("letter.SIG", DocumentSigner::Detached), QStringLiteral("letter.signed.p7s"));
    QCOMPARE(DocumentVerifier::documentOf(m_document + QStringLiteral(".P7S")), m_document);
    QCOMPARE(DocumentVerifier::documentOf(m_document), QString());
    QCOMPARE(DocumentVerifier::documentName(QStringLiteral("a/letter.pdf.p7m")),
             QStringLiteral("letter.pdf"));
    QCOMPARE(DocumentVerifier::documentName(QStringLiteral("letter")),
             QStringLiteral("letter.document"));
}

/// Whoever stops the reading of a document leaves the work of others on its token alone.
void TestCmsTokens::stoppedWhileAnotherWorks()
{
    QFile sparse(m_document);
    constexpr qint64 Size = 4LL * 1024 * 1024 * 1024;
    QVERIFY(sparse.open(QIODevice::ReadWrite) && sparse.resize(Size));
    sparse.close();
    const QCA::KeyBundle key = bundle(QStringLiteral("rsa:2048"));
    m_token->control("delay C_GenerateKeyPair * 1500");
    DocumentSigner signer;
    QSignalSpy finished(&signer, &Job::finished);
    QTimer::singleShot(300, &signer, [&] { signer.signWith(key, {m_document, m_target}, false); });
    QTimer::singleShot(600, &signer, &DocumentSigner::cancel);
    const QCA::PrivateKey made = generateCurve(QStringLiteral("ec-secp256r1"), QStringLiteral("x"));
    QVERIFY(!made.isNull());
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(signer.error(), int(DocumentSigner::Cancelled));
    QVERIFY(QFile::remove(m_document));
}

/// The token tells of the signer's issuer when the signing has begun, as one does that is still
/// being read: whoever checks the signature gets it all the same.
void TestCmsTokens::issuerThatComesMeanwhile()
{
    const QString key = QStringLiteral("rsa:2048");
    DocumentSigner signer;
    QCOMPARE(sign(signer, key), int(DocumentSigner::NoError)); // from now on nobody is asked
    QFile::remove(m_target);
    const TestAuthority above(QStringLiteral("Above"));
    const QByteArray issuer =
        above.issue(root().subjectPublicKey().toDER(), QStringLiteral("/CN=Test Root"));
    QVERIFY(!issuer.isEmpty());
    KeyStoreEntry row(m_stores->entry(QStringLiteral("Подписи"), key));
    StoreChange change;
    change.certificate = QCA::Certificate::fromDER(issuer);
    const auto written = std::make_shared<std::promise<QString>>();
    QSignalSpy finished(&signer, &Job::finished);
    signer.sign(&row, m_document, m_target, DocumentSigner::Detached, false);
    // Before the key signs: the token does one thing after another.
    QVERIFY(startStoreChange(m_store->id(), change, [written](const StoreChangeResult &result) {
        written->set_value(result.entryId);
    }));
    QVERIFY(!finished.isEmpty() || finished.wait(20000));
    QCOMPARE(signer.error(), int(DocumentSigner::NoError));
    QVERIFY(contentsOf(m_target).contains(issuer));
    QVERIFY(m_stores->remove(m_store, written->get_future().get()));
    QVERIFY(m_stores->waitForEntries(QStringLiteral("Подписи"), 5));
}

QTEST_GUILESS_MAIN(TestCmsTokens)
#include "tst_cmstokens.moc"
