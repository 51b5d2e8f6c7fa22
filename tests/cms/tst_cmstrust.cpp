// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/signertrust.h"
#include "tests/support/testcertificates.h"
#include "tools/chainsources.h"
#include "tools/documentverifier.h"
#include "tools/signerlist.h"

#include <QSignalSpy>
#include <QStringListModel>
#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

/// What becomes of the trust in a signer whose certificate has ended, was revoked, or is for
/// something else.
class TestCmsTrust : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void times_data();
    void times();
    void revoked();
    void revokedAndExpired();
    void usages_data();
    void usages();
    void lastJudgementStands();

private:
    bool run(const char *arguments) const;
    QByteArray run(const char *command, const char *input) const;
    /// A certificate of the root for that time, with the extensions of that section. DER.
    QByteArray issue(const char *from, const char *to, const char *section = "plain") const;
    QByteArray revocationList() const;
    SignerTrust trust(const QByteArray &certificate, const QString &time,
                      const QByteArray &list = {}) const;

    TestAuthority m_files;
    QByteArray m_root;
};

namespace {

constexpr char Configuration[] = "[ca]\n"
                                 "default_ca = root\n"
                                 "[root]\n"
                                 "database = index.txt\n"
                                 "new_certs_dir = .\n"
                                 "rand_serial = yes\n"
                                 "unique_subject = no\n"
                                 "default_md = sha256\n"
                                 "default_crl_days = 30\n"
                                 "policy = names\n"
                                 "[names]\n"
                                 "commonName = supplied\n"
                                 "[authority]\n"
                                 "basicConstraints = critical,CA:TRUE\n"
                                 "keyUsage = critical,keyCertSign,cRLSign\n"
                                 "[plain]\n"
                                 "basicConstraints = CA:FALSE\n"
                                 "[signature]\n"
                                 "keyUsage = critical,digitalSignature,keyEncipherment\n"
                                 "[commitment]\n"
                                 "keyUsage = nonRepudiation\n"
                                 "[agreement]\n"
                                 "keyUsage = critical,keyAgreement\n"
                                 "[encryption]\n"
                                 "keyUsage = keyEncipherment,dataEncipherment\n";

constexpr char Begin[] = "20200101000000Z";
constexpr char Past[] = "20210101000000Z";
constexpr char Future[] = "20450101000000Z";

} // namespace

bool TestCmsTrust::run(const char *arguments) const
{
    return !m_files.openssl(QString::fromLatin1(arguments).split(QLatin1Char(' '))).isNull();
}

QByteArray TestCmsTrust::run(const char *command, const char *input) const
{
    return m_files.openssl({QLatin1String(command), QStringLiteral("-in"), QLatin1String(input),
                            QStringLiteral("-outform"), QStringLiteral("DER")});
}

void TestCmsTrust::initTestCase()
{
    if (!m_files.isValid()) {
        qInfo("SKIP the openssl program is not installed");
        QSKIP("the openssl program is not installed");
    }
    for (const auto &[name, contents] : {std::pair{"root.cnf", Configuration}, {"index.txt", ""}}) {
        QFile file(m_files.file(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents) >= 0);
    }
    // A root that is as old as what it issued.
    QVERIFY(run("req -new -newkey rsa:2048 -nodes -keyout root.key -subj /CN=Root -out root.csr"));
    QVERIFY(run("ca -batch -notext -config root.cnf -selfsign -keyfile root.key -in root.csr "
                "-startdate 20190101000000Z -enddate 20490101000000Z -extensions authority "
                "-out root.pem"));
    QVERIFY(run("req -new -newkey rsa:2048 -nodes -keyout end.key -subj /CN=End -out end.csr"));
    m_root = run("x509", "root.pem");
    QVERIFY(!m_root.isEmpty());
}

QByteArray TestCmsTrust::issue(const char *from, const char *to, const char *section) const
{
    const QString line = QStringLiteral("ca -batch -notext -config root.cnf -keyfile root.key "
                                        "-cert root.pem -in end.csr -startdate %1 -enddate %2 "
                                        "-extensions %3 -out end.pem")
                             .arg(QLatin1String(from), QLatin1String(to), QLatin1String(section));
    return run(line.toLatin1().constData()) ? run("x509", "end.pem") : QByteArray();
}

QByteArray TestCmsTrust::revocationList() const
{
    return run("ca -config root.cnf -keyfile root.key -cert root.pem -revoke end.pem")
            && run("ca -config root.cnf -keyfile root.key -cert root.pem -gencrl -out list.pem")
        ? run("crl", "list.pem")
        : QByteArray();
}

SignerTrust TestCmsTrust::trust(const QByteArray &certificate, const QString &time,
                                const QByteArray &list) const
{
    CandidateIndex known;
    known.add({m_root, QString(), true});
    if (!list.isEmpty())
        known.addList(list);
    SignerReport signer;
    signer.verdict = SignerReport::Good;
    signer.certificate = certificate;
    signer.time = QDateTime::fromString(time, Qt::ISODate);
    return trustIn(signer, known);
}

void TestCmsTrust::times_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("time");
    QTest::addColumn<int>("trust");
    QTest::addColumn<QString>("headline");
    const auto row = [](const char *name, const char *from, const char *to, const char *time,
                        SignerList::Trust trust, const char *headline) {
        QTest::newRow(name) << QByteArray(from) << QByteArray(to) << QString::fromLatin1(time)
                            << int(trust) << QString::fromLatin1(headline);
    };
    row("valid", Begin, Future, "2024-05-05T05:05:05Z", SignerList::Trusted,
        "trivex-app-signer-good");
    row("valid, no time", Begin, Future, "", SignerList::Trusted, "trivex-app-signer-good");
    row("expired since", Begin, Past, "2020-05-05T05:05:05Z", SignerList::ExpiredSince,
        "trivex-app-signer-good");
    row("signed too late", Begin, Past, "2024-05-05T05:05:05Z", SignerList::NotValidThen,
        "trivex-app-signer-not-valid");
    row("signed too early", Begin, Future, "2019-05-05T05:05:05Z", SignerList::NotValidThen,
        "trivex-app-signer-not-valid");
    row("expired, no time", Begin, Past, "", SignerList::Expired, "trivex-app-signer-expired");
    row("not begun, no time", "20440101000000Z", Future, "", SignerList::NotValidThen,
        "trivex-app-signer-not-valid");
}

void TestCmsTrust::times()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QString, time);
    QFETCH(QString, headline);
    const QByteArray certificate = issue(from.constData(), to.constData());
    QVERIFY(!certificate.isEmpty());
    const SignerTrust found = trust(certificate, time);
    QTEST(int(found), "trust");
    SignerList::Signature signature;
    signature.report.verdict = SignerReport::Good;
    signature.trust = found;
    SignerList list;
    list.setSignatures({signature});
    QCOMPARE(list.value(0, SignerList::HeadlineRole).toString(), headline);
    // Only what is known to have been valid then is simply fine.
    QCOMPARE(list.level(), headline == QLatin1String("trivex-app-signer-good") ? 1 : 2);
}

void TestCmsTrust::revoked()
{
    const QByteArray certificate = issue(Begin, Future);
    const QByteArray other = issue(Begin, Future);
    QVERIFY(!certificate.isEmpty() && certificate != other);
    // The last one is the one that is revoked.
    const QByteArray list = revocationList();
    QVERIFY(!list.isEmpty());
    const QString now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    QCOMPARE(trust(certificate, now, list), SignerTrust::Trusted);
    QCOMPARE(trust(other, now), SignerTrust::Trusted);
    QCOMPARE(trust(other, now, list), SignerTrust::Revoked);
    QCOMPARE(trust(other, QString(), list), SignerTrust::Revoked);
    // Whoever stole the key can state any time.
    QCOMPARE(trust(other, QStringLiteral("2020-05-05T05:05:05Z"), list), SignerTrust::Revoked);
}

/// That it has ended does not hide that it was revoked.
void TestCmsTrust::revokedAndExpired()
{
    const QByteArray certificate = issue(Begin, Past);
    const QByteArray list = revocationList();
    QVERIFY(!list.isEmpty());
    QCOMPARE(trust(certificate, QStringLiteral("2020-05-05T05:05:05Z")), SignerTrust::ExpiredSince);
    QCOMPARE(trust(certificate, QStringLiteral("2020-05-05T05:05:05Z"), list),
             SignerTrust::Revoked);
    QCOMPARE(trust(certificate, QString(), list), SignerTrust::Revoked);
}

void TestCmsTrust::usages_data()
{
    QTest::addColumn<bool>("isForSigning");
    QTest::newRow("plain") << true;
    QTest::newRow("signature") << true;
    QTest::newRow("commitment") << true;
    QTest::newRow("agreement") << false;
    QTest::newRow("encryption") << false;
}

void TestCmsTrust::usages()
{
    QFETCH(bool, isForSigning);
    const char *section = QTest::currentDataTag();
    const QString time = QStringLiteral("2020-05-05T05:05:05Z");
    const QByteArray valid = issue(Begin, Future, section);
    QCOMPARE(trust(valid, time), isForSigning ? SignerTrust::Trusted : SignerTrust::Faulty);
    const QByteArray expired = issue(Begin, Past, section);
    QCOMPARE(trust(expired, time), isForSigning ? SignerTrust::ExpiredSince : SignerTrust::Faulty);
    // The gravest is said.
    QCOMPARE(trust(expired, time, revocationList()), SignerTrust::Revoked);
}

/// What is known of issuers changes twice before anything is judged anew: the first round, which
/// knows less and may end later, is told to nobody.
void TestCmsTrust::lastJudgementStands()
{
    QVERIFY(!issue(Begin, Future).isEmpty());
    QFile text(m_files.file(QStringLiteral("text")));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("Text") == 4);
    text.close();
    QVERIFY(run("cms -sign -binary -nodetach -in text -signer end.pem -inkey end.key -outform DER "
                "-out text.p7m"));
    const QCA::Initializer qca;
    QStringListModel rows;
    EntryModel entries;
    entries.setSourceModel(&rows);
    ChainSources *sources = ChainSources::of(&entries);
    QSignalSpy isRead(sources, &ChainSources::changed);
    QVERIFY(isRead.wait()); // what it reads at first changes what is known, too
    DocumentVerifier verifier;
    verifier.setEntries(&entries);
    QSignalSpy finished(&verifier, &Job::finished);
    verifier.verify(m_files.file(QStringLiteral("text.p7m")));
    QVERIFY(finished.wait());
    QCOMPARE(verifier.error(), int(DocumentVerifier::NoError));
    QSignalSpy judged(verifier.signers(), &SignerList::modelReset);
    for (int round = 0; round < 5; ++round)
        Q_EMIT sources->changed();
    QTRY_VERIFY(!judged.isEmpty());
    QTest::qWait(500); // the other rounds are over by then, which shows nowhere
    QCOMPARE(judged.size(), 1);
    QCOMPARE(verifier.signers()->rowCount(), 1);
    // The next one is told again.
    Q_EMIT sources->changed();
    QTRY_COMPARE(judged.size(), 2);
}

QTEST_GUILESS_MAIN(TestCmsTrust)
#include "tst_cmstrust.moc"
