// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/plaintoken.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/needtokens.h"
#include "tests/support/testcertificates.h"

#include <QScopeGuard>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Large");
QStringList warnings;

void note(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtWarningMsg && message.contains(StoreName))
        warnings.append(message);
}

} // namespace

/// A certificate that is too large to be read: no row, one warning, and a row once it can be read.
class TestLargeCertificate : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void tooLarge();
};

void TestLargeCertificate::tooLarge()
{
    FaultyToken token(StoreName);
    TRIVEX_NEED_TOKENS();
    QVERIFY2(token.token().isValid(), qPrintable(token.token().problem()));
    const TestAuthority authority;
    token.useInThisProcess();
    {
        PlainToken plain(TestToken::softHsmLibrary());
        QVERIFY(plain.isOpen());
        QVERIFY(
            plain.writeCertificates(QList<QByteArray>{authority.certificate()}, TestToken::pin()));
    }
    warnings.clear();
    const auto before = qInstallMessageHandler(note);
    const auto back = qScopeGuard([&] { qInstallMessageHandler(before); });
    token.control("lie CKA_VALUE * needs 1000000000");
    const QCA::Initializer qca;
    Stores stores;
    QVERIFY(stores.waitFor(StoreName));
    QTRY_COMPARE(warnings.size(), 1);
    QVERIFY(stores.entries(StoreName).isEmpty());
    token.control();
    QVERIFY(token.replug(stores.byName(StoreName)->id()));
    QTRY_COMPARE(stores.entries(StoreName).size(), 1);
    QCOMPARE(warnings.size(), 1);
}

QTEST_GUILESS_MAIN(TestLargeCertificate)
#include "tst_largecertificate.moc"
