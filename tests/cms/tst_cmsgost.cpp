// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/gostfixture.h"
#include "tools/documentsigner.h"
#include "tools/documentverifier.h"

#include <QSignalSpy>

using namespace Trivex;
using namespace TrivexTest;

/// Documents that GOST keys of a token sign, for openssl with its engine "gost".
class TestCmsGost : public GostFixture {
    Q_OBJECT
private Q_SLOTS:
    void kinds_data();
    void kinds();

private:
    static bool hasEngineHere() { return !qEnvironmentVariableIsSet("TRIVEX_NO_GOST_ENGINE"); }
};

void TestCmsGost::kinds_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<QByteArray>("habit");
    for (const char *curve : {"gost2012-256", "gost2012-512"}) {
        for (const char *habit : {"", "digest-only", "message-only"})
            newRow({curve, habit}) << QString::fromLatin1(curve) << QByteArray(habit);
    }
}

void TestCmsGost::kinds()
{
    QFETCH(QString, curve);
    QFETCH(QByteArray, habit);
    const QString id =
        issueAndImport(generate(curve, QStringLiteral("signs")), QStringLiteral("/CN=Signs"));
    QVERIFY(!id.isEmpty());
    if (!habit.isEmpty())
        m_token->control("gost " + habit);
    const QString document = m_authority->file(QStringLiteral("document"));
    QVERIFY(write(QStringLiteral("document"), data()));
    const QString target = m_authority->file(QStringLiteral("document.p7s"));
    QFile::remove(target);
    DocumentSigner signer;
    QSignalSpy finished(&signer, &Job::finished);
    signer.signWith(entryWithId(id).keyBundle(), {document, target}, false);
    QVERIFY(finished.wait(20000));
    if (!hasEngineHere()) {
        // Said aloud: the digest of the document is nothing that a token makes of long files.
        QCOMPARE(signer.error(), int(DocumentSigner::NoDigest));
        QVERIFY(!QFile::exists(target));
        return;
    }
    QCOMPARE(signer.error(), int(DocumentSigner::NoError));
    const QByteArray verified = m_authority->openssl(
        {QStringLiteral("cms"), QStringLiteral("-verify"), QStringLiteral("-binary"),
         QStringLiteral("-cades"), QStringLiteral("-inform"), QStringLiteral("DER"),
         QStringLiteral("-in"), target, QStringLiteral("-content"), document,
         QStringLiteral("-CAfile"), m_authority->certificateFile()});
    QCOMPARE(verified, data());
    DocumentVerifier verifier;
    QSignalSpy checked(&verifier, &Job::finished);
    verifier.verify(target, document);
    QVERIFY(checked.wait(20000));
    QCOMPARE(verifier.signers()->value(0, SignerList::VerdictRole).toInt(), int(SignerList::Good));
}

QTEST_GUILESS_MAIN(TestCmsGost)
#include "tst_cmsgost.moc"
