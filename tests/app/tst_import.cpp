// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/userstore.h"
#include "tests/support/testcertificates.h"
#include "tools/certificateimport.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QtTest>

using namespace Trivex;

namespace {

/// Takes whatever it gets.
class Store : public UserStoreBackend {
public:
    void startWrite(const QCA::Certificate &certificate, UserWriteDone done) override
    {
        written += certificate.commonName();
        done(QStringLiteral("id"));
    }
    QStringList written;
};

} // namespace

/// An import to the store of the user's files, which starts a while after the window.
class TestImport : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void waitsForItsStore();
    void waitIsLeft();

private:
    TrivexTest::TestAuthority m_authority;
};

void TestImport::waitsForItsStore()
{
    QVERIFY(m_authority.isValid());
    Store store;
    CertificateFile file;
    file.open(m_authority.certificateFile());
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, userStoreId());
    QTest::qWait(300);
    QVERIFY(import.isRunning());
    QVERIFY(finished.isEmpty());
    setUserStore(&store);
    QTRY_COMPARE(finished.size(), 1);
    unsetUserStore(&store);
    QVERIFY2(finished.first().first().toBool(), qPrintable(import.problem()));
    QCOMPARE(store.written, QStringList{QStringLiteral("Test Root")});
}

void TestImport::waitIsLeft()
{
    CertificateFile file;
    file.open(m_authority.certificateFile());
    CertificateImport import;
    QSignalSpy finished(&import, &CertificateImport::finished);
    import.start(&file, userStoreId());
    QTest::qWait(200);
    QVERIFY(finished.isEmpty());
    import.cancel();
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY(!finished.first().first().toBool());
    QVERIFY(import.wasLeft());
}

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const QCA::Initializer qca;
    TestImport test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_import.moc"
