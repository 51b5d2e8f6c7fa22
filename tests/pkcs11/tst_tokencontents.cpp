// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/objecttemplates.h"
#include "providers/pkcs11/core/tokencontents.h"
#include "tests/x509/corpus.h"

#include <QtTest>

using namespace Trivex;

/// What the token provider makes of the certificates on a token, which come as they were written.
class TestTokenContents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void labels_data();
    void labels();
    void findsIdentifiersInPieces();
    void findsIssuersByMeaning_data();
    void findsIssuersByMeaning();

private:
    QCA::Initializer m_initializer;
};

namespace {

TokenCertificate certificateOf(const QByteArray &der)
{
    TokenCertificate certificate;
    certificate.der = der;
    certificate.parts = certificateParts(der);
    return certificate;
}

TokenCertificate certificateIn(const char *file)
{
    return certificateOf(Corpus::read(QString::fromLatin1(file)));
}

/// The key of a certificate, as a token shows it.
TokenKey keyOf(const TokenCertificate &certificate)
{
    TokenKey key;
    const QByteArray info = certificate.parts.publicInfo.in(certificate.der);
    key.publicInfo = QByteArray(info.constData(), info.size());
    return key;
}

} // namespace

void TestTokenContents::labels_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("label");
    const auto row = [](const char *file, const QString &label) {
        QTest::newRow(file) << QString::fromLatin1(file) << label;
    };
    row("string-utf8.der", QStringLiteral("Иванов Пётр €"));
    row("string-bmp.der", QStringLiteral("Иванов 日本"));
    row("string-t61.der", QStringLiteral("Müller Ärger"));
    row("string-t61-utf8.der", QStringLiteral("Кириллица в T61"));
    row("name-printable-utf8.der", QStringLiteral("Ёлка 3"));
    row("name-ia5-utf8.der", QStringLiteral("Ёлка 3"));
    row("string-bmp-surrogates.der", QStringLiteral("𝄞 clef"));
    row("string-visible.der", QStringLiteral("Visible ~ text"));
    row("name-primitive.der", QStringLiteral("Whole"));
    row("name-pieces.der", QStringLiteral("TwoPieces"));
    row("name-several.der", QStringLiteral("Third"));
    row("name-none.der", QString());
}

// The same text as QCA shows for the certificate.
void TestTokenContents::labels()
{
    QFETCH(QString, file);
    QFETCH(QString, label);
    const TokenCertificate certificate = certificateOf(Corpus::read(file));
    QVERIFY(certificate.parts.isValid());
    QCOMPARE(commonNameOf(certificate), label);
}

void TestTokenContents::findsIdentifiersInPieces()
{
    // One piece within has a place of its own; two lie apart and have none.
    const TokenCertificate whole = certificateIn("extension-value-piece.der");
    QCOMPARE(whole.parts.keyId.in(whole.der), QByteArray("0123"));
    QCOMPARE(whole.parts.authorityKeyId.in(whole.der), QByteArray("0123"));
    const TokenCertificate apart = certificateIn("extension-pieces.der");
    QVERIFY(apart.parts.isValid());
    QVERIFY(apart.parts.keyId.isEmpty());
}

void TestTokenContents::findsIssuersByMeaning_data()
{
    QTest::addColumn<QString>("issuer");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("same octets") << QStringLiteral("name-issuer-same.der") << true;
    QTest::newRow("another type") << QStringLiteral("name-issuer-type.der") << true;
    QTest::newRow("other letters") << QStringLiteral("name-issuer-case.der") << true;
    QTest::newRow("another name") << QStringLiteral("name-issuer-other.der") << false;
}

void TestTokenContents::findsIssuersByMeaning()
{
    QFETCH(QString, issuer);
    QFETCH(bool, isFound);
    TokenObjects objects;
    objects.certificates = {certificateIn("name-issued.der"), certificateOf(Corpus::read(issuer))};
    objects.privateKeys = {keyOf(objects.certificates.front())};
    const TokenContentsPtr contents = assembleContents(objects, QStringLiteral("store"));
    QCOMPARE(int(contents->entries.size()), 2);
    const TokenEntryPtr own = contents->entries.front();
    QVERIFY(own->key);
    QCOMPARE(int(own->issuers.size()), isFound ? 1 : 0);
    if (isFound)
        QCOMPARE(own->issuers.front()->der, objects.certificates.back().der);
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestTokenContents test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_tokencontents.moc"
