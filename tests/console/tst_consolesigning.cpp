// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/console/consoletest.h"
#include "tests/console/outcome.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace TrivexTest;

/// Documents that the program signs and verifies without its window.
class TestConsoleSigning : public ConsoleTest {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { prepare(); }
    void signsAndVerifies_data();
    void signsAndVerifies();
    void trustsTheUsersRoots();
    void heedsTheUsersLists();
    void comparesTheNamedDocument();
    void tellsChangedDocuments();
    void replacesNothingUnasked();
    void triesNoPinTwice();
    void signsWithKeysOnly();
    void namesOneKey();
};

void TestConsoleSigning::signsAndVerifies_data()
{
    QTest::addColumn<bool>("attached");
    QTest::newRow("detached") << false;
    QTest::newRow("attached") << true;
}

void TestConsoleSigning::signsAndVerifies()
{
    QFETCH(bool, attached);
    const QString letter = path(QStringLiteral("letter"));
    const QString signature = letter + QLatin1String(attached ? ".p7m" : ".p7s");
    QFile::remove(signature);
    QVERIFY(write(letter, "Dear all"));
    const Outcome signed_ = run(
        signing(letter) + (attached ? QStringList{QStringLiteral("--attached")} : QStringList()));
    QCOMPARE(signed_.complained, QByteArray());
    QCOMPARE(signed_.code, 0);
    QCOMPARE(signed_.said, QFile::encodeName(signature) + '\n');
    QStringList check = {QStringLiteral("cms"),
                         QStringLiteral("-verify"),
                         QStringLiteral("-binary"),
                         QStringLiteral("-inform"),
                         QStringLiteral("DER"),
                         QStringLiteral("-in"),
                         signature,
                         QStringLiteral("-CAfile"),
                         m_authority->certificateFile()};
    if (!attached)
        check += {QStringLiteral("-content"), letter};
    QCOMPARE(m_authority->openssl(check), QByteArray("Dear all"));
    // Nobody has said that this root is to be trusted.
    const Outcome verified =
        run({QStringLiteral("--verify"), attached ? signature : letter, QStringLiteral("--json")});
    QCOMPARE(verified.code, 3);
    const QJsonObject found = QJsonDocument::fromJson(verified.said).object();
    QCOMPARE(found.value(QStringLiteral("attached")).toBool(), attached);
    const QJsonObject signer = found.value(QStringLiteral("signatures")).toArray().at(0).toObject();
    QCOMPARE(signer.value(QStringLiteral("name")).toString(), QStringLiteral("Пётр"));
    QCOMPARE(signer.value(QStringLiteral("verdict")).toString(), QStringLiteral("good"));
    QCOMPARE(signer.value(QStringLiteral("trust")).toString(), QStringLiteral("no-trusted-root"));
}

void TestConsoleSigning::trustsTheUsersRoots()
{
    const QString letter = path(QStringLiteral("letter"));
    QVERIFY(QFile::exists(letter + QStringLiteral(".p7s")));
    const QString store = path(QStringLiteral("share/trivex/certificates"));
    QVERIFY(QDir().mkpath(store));
    QVERIFY(QFile::copy(m_authority->certificateFile(), store + QStringLiteral("/root.crt")));
    const Outcome verified = run({QStringLiteral("--verify"), letter + QStringLiteral(".p7s")});
    QVERIFY2(verified.said.startsWith("Пётр, Test Root, "), verified.said.constData());
    QCOMPARE(verified.complained, QByteArray());
    QCOMPARE(verified.code, 0);
    QVERIFY(QDir(store).removeRecursively());
}

void TestConsoleSigning::heedsTheUsersLists()
{
    const QString letter = path(QStringLiteral("letter"));
    const QString store = path(QStringLiteral("share/trivex/certificates"));
    QVERIFY(QDir().mkpath(store));
    QVERIFY(QFile::copy(m_authority->certificateFile(), store + QStringLiteral("/root.crt")));
    QVERIFY(write(path(QStringLiteral("signer.der")), m_certificate));
    // openssl's own authority needs a directory of its files.
    QVERIFY(write(m_authority->file(QStringLiteral("index.txt")), {}));
    QVERIFY(write(m_authority->file(QStringLiteral("number")), "01\n"));
    QVERIFY(write(m_authority->file(QStringLiteral("ca.cnf")),
                  "[ca]\ndefault_ca=own\n[own]\ndatabase=index.txt\ncrlnumber=number\n"
                  "default_md=sha256\ndefault_crl_days=30\n"));
    const QStringList authority = {QStringLiteral("ca"),     QStringLiteral("-config"),
                                   QStringLiteral("ca.cnf"), QStringLiteral("-cert"),
                                   QStringLiteral("ca.pem"), QStringLiteral("-keyfile"),
                                   QStringLiteral("ca.key")};
    m_authority->openssl({QStringLiteral("x509"), QStringLiteral("-inform"), QStringLiteral("DER"),
                          QStringLiteral("-in"), path(QStringLiteral("signer.der")),
                          QStringLiteral("-out"), path(QStringLiteral("signer.crt"))});
    m_authority->openssl(
        authority + QStringList{QStringLiteral("-revoke"), path(QStringLiteral("signer.crt"))});
    m_authority->openssl(authority
                         + QStringList{QStringLiteral("-gencrl"), QStringLiteral("-out"),
                                       store + QStringLiteral("/revoked.crl")});
    QVERIFY(QFile::exists(store + QStringLiteral("/revoked.crl")));
    const Outcome verified = run(
        {QStringLiteral("--verify"), letter + QStringLiteral(".p7s"), QStringLiteral("--json")});
    QVERIFY(QDir(store).removeRecursively());
    QCOMPARE(verified.code, 3);
    QVERIFY2(verified.said.contains("\"trust\": \"revoked\""), verified.said.constData());
}

void TestConsoleSigning::comparesTheNamedDocument()
{
    const QString letter = path(QStringLiteral("attached-letter"));
    QVERIFY(write(letter, "Dear all"));
    QCOMPARE(run(signing(letter) + QStringList{QStringLiteral("--attached")}).code, 0);
    QVERIFY(write(letter, "Dear none"));
    const Outcome verified = run({QStringLiteral("--verify"), letter, QStringLiteral("--json")});
    QCOMPARE(verified.code, 3);
    QVERIFY2(verified.said.contains("document-changed"), verified.said.constData());
    // Nobody has asked about the file here.
    const Outcome alone = run(
        {QStringLiteral("--verify"), letter + QStringLiteral(".p7m"), QStringLiteral("--json")});
    QVERIFY2(alone.said.contains("\"verdict\": \"good\""), alone.said.constData());
}

void TestConsoleSigning::tellsChangedDocuments()
{
    const QString other = path(QStringLiteral("other-letter"));
    QVERIFY(write(other, "Dear none"));
    const Outcome verified = run({QStringLiteral("--verify"), path(QStringLiteral("letter.p7s")),
                                  QStringLiteral("--document"), other, QStringLiteral("--json")});
    QCOMPARE(verified.code, 3);
    QCOMPARE(QJsonDocument::fromJson(verified.said)
                 .object()
                 .value(QStringLiteral("signatures"))
                 .toArray()
                 .at(0)
                 .toObject()
                 .value(QStringLiteral("verdict"))
                 .toString(),
             QStringLiteral("document-changed"));
    const Outcome none = run({QStringLiteral("--verify"), other});
    QCOMPARE(none.code, 1);
    QVERIFY(none.complained.startsWith("trivex: "));
}

void TestConsoleSigning::replacesNothingUnasked()
{
    const QString letter = path(QStringLiteral("letter"));
    const QString signature = letter + QStringLiteral(".p7s");
    QVERIFY(write(signature, "mine"));
    const Outcome refused = run(signing(letter));
    QCOMPARE(refused.code, 1);
    QVERIFY2(refused.complained.contains("--replace"), refused.complained.constData());
    QFile file(signature);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("mine"));
    QCOMPARE(run(signing(letter) + QStringList{QStringLiteral("--replace")}).code, 0);
    QVERIFY(QFileInfo(signature).size() > 100);
}

void TestConsoleSigning::triesNoPinTwice()
{
    const QString letter = path(QStringLiteral("letter"));
    QVERIFY(write(path(QStringLiteral("pin")), "999999\n"));
    const Outcome refused = run(signing(letter) + QStringList{QStringLiteral("--replace")});
    QVERIFY(write(path(QStringLiteral("pin")), TestToken::pin() + '\n'));
    QCOMPARE(refused.code, 1);
    QVERIFY2(refused.complained.contains("The PIN is not right."), refused.complained.constData());
    // A file without a PIN is named, and nobody is asked.
    QStringList missing = signing(letter) + QStringList{QStringLiteral("--replace")};
    missing[5] = path(QStringLiteral("missing"));
    const Outcome unread = run(missing);
    QCOMPARE(unread.code, 1);
    QVERIFY2(unread.complained.contains("missing holds no PIN"), unread.complained.constData());
    // Without a file and without a terminal nobody gives one.
    QStringList without = signing(letter);
    without.removeLast();
    without.removeLast();
    QCOMPARE(run(without + QStringList{QStringLiteral("--replace")}).code, 1);
    QCOMPARE(run(signing(letter) + QStringList{QStringLiteral("--replace")}).code, 0);
}

// A certificate without a key is none of several that fit, and is not chosen by any of its names.
void TestConsoleSigning::signsWithKeysOnly()
{
    const QString letter = path(QStringLiteral("letter"));
    const QByteArray publicKey = m_authority->openssl(
        {QStringLiteral("pkey"), QStringLiteral("-in"), m_authority->file(QStringLiteral("ca.key")),
         QStringLiteral("-pubout"), QStringLiteral("-outform"), QStringLiteral("DER")});
    const QByteArray other = m_authority->issue(publicKey, QStringLiteral("/CN=Пётр/O=Без ключа"));
    QVERIFY(!other.isEmpty());
    const QString store = path(QStringLiteral("share/trivex/certificates"));
    QVERIFY(QDir().mkpath(store));
    QVERIFY(write(path(QStringLiteral("other.der")), other));
    QVERIFY(write(store + QStringLiteral("/other.crt"),
                  m_authority->openssl({QStringLiteral("x509"), QStringLiteral("-inform"),
                                        QStringLiteral("DER"), QStringLiteral("-in"),
                                        path(QStringLiteral("other.der"))})));
    QVERIFY(QFile::copy(m_authority->certificateFile(), store + QStringLiteral("/root.crt")));
    const auto tidy = qScopeGuard([&] { QDir(store).removeRecursively(); });
    QStringList arguments = signing(letter) + QStringList{QStringLiteral("--replace")};
    const Outcome named = run(arguments);
    QVERIFY2(named.code == 0, named.complained.constData());
    for (const QString &key : {hash(other), QStringLiteral("Test Root")}) {
        arguments[3] = key;
        const Outcome none = run(arguments);
        QCOMPARE(none.code, 1);
        QVERIFY2(none.complained.contains(" is here, but not its key. "),
                 none.complained.constData());
        const QString meant = key == hash(other) ? key : hash(m_authority->certificate());
        QVERIFY2(none.complained.contains(meant.toLatin1()), none.complained.constData());
    }
}

void TestConsoleSigning::namesOneKey()
{
    const QString letter = path(QStringLiteral("letter"));
    QStringList arguments = signing(letter) + QStringList{QStringLiteral("--replace")};
    arguments[3] = QStringLiteral("Пётр Великий");
    const Outcome none = run(arguments);
    QCOMPARE(none.code, 1);
    QVERIFY2(none.complained.startsWith("trivex: No certificate has the name, the fingerprint or "
                                        "the id “Пётр Великий”"),
             none.complained.constData());
    const QByteArray second = writeSecond();
    QVERIFY(!second.isEmpty());
    const Outcome several = run(signing(letter) + QStringList{QStringLiteral("--replace")});
    QCOMPARE(several.code, 1);
    QVERIFY2(several.complained.contains(hash(second).toLatin1()), several.complained.constData());
    arguments[3] = QString::fromLatin1(
        QCryptographicHash::hash(second, QCryptographicHash::Sha256).toHex(':').toUpper());
    QCOMPARE(run(arguments).code, 0);
    const QString signer = path(QStringLiteral("signer.pem"));
    m_authority->openssl({QStringLiteral("cms"), QStringLiteral("-verify"),
                          QStringLiteral("-binary"), QStringLiteral("-inform"),
                          QStringLiteral("DER"), QStringLiteral("-in"),
                          letter + QStringLiteral(".p7s"), QStringLiteral("-content"), letter,
                          QStringLiteral("-CAfile"), m_authority->certificateFile(),
                          QStringLiteral("-signer"), signer});
    QCOMPARE(m_authority->openssl({QStringLiteral("x509"), QStringLiteral("-in"), signer,
                                   QStringLiteral("-outform"), QStringLiteral("DER")}),
             second);
}

QTEST_GUILESS_MAIN(TestConsoleSigning)

#include "tst_consolesigning.moc"
