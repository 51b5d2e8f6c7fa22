// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/plaintoken.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/needtokens.h"
#include "tests/support/testcertificates.h"

#include <QRegularExpression>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Damaged");
QStringList warnings;

void note(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtWarningMsg && message.contains(StoreName))
        warnings.append(message);
}

} // namespace

/// Damaged certificates on a token: no rows, one warning each, and no harm to the others.
class TestDamagedObjects : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void skipped();
};

void TestDamagedObjects::skipped()
{
    FaultyToken token(StoreName);
    TRIVEX_NEED_TOKENS();
    QVERIFY2(token.token().isValid(), qPrintable(token.token().problem()));
    const TestAuthority authority;
    const QByteArray good = authority.certificate();
    QList<QByteArray> all = {good, good.left(good.size() / 2), good.left(40),
                             QByteArray(500, '\x30'), QByteArray("no certificate")};
    // A body whose validity holds no dates, and one whose key is no key.
    QByteArray other = good;
    all.append(other.replace(QByteArrayLiteral("\x17\x0d"), QByteArrayLiteral("\x04\x0d")));
    all.append(good.left(good.size() - 1));
    token.useInThisProcess();
    {
        PlainToken plain(TestToken::softHsmLibrary());
        QVERIFY(plain.isOpen());
        QVERIFY(plain.writeCertificates(all, TestToken::pin()));
    }
    const auto before = qInstallMessageHandler(note);
    {
        const QCA::Initializer qca;
        Stores stores;
        QVERIFY(stores.waitFor(StoreName));
        QTRY_VERIFY(!stores.entries(StoreName).isEmpty());
        for (int round = 0; round < 2; ++round) {
            const auto entries = stores.entries(StoreName);
            QVERIFY(entries.size() < all.size());
            for (const QCA::KeyStoreEntry &entry : entries)
                QVERIFY(!entry.certificate().isNull());
            QCOMPARE(warnings.size(), all.size() - entries.size());
            QVERIFY(token.replug(stores.byName(StoreName)->id()));
            QTRY_COMPARE(stores.entries(StoreName).size(), entries.size());
        }
    }
    qInstallMessageHandler(before);
    QCOMPARE(QSet<QString>(warnings.cbegin(), warnings.cend()).size(), warnings.size());
    for (const QString &warning : qAsConst(warnings))
        QVERIFY2(warning.contains(QRegularExpression(QStringLiteral("\"[1-6]\" \\(id 3[1-6]\\)"))),
                 qPrintable(warning));
}

QTEST_GUILESS_MAIN(TestDamagedObjects)
#include "tst_damagedobjects.moc"
