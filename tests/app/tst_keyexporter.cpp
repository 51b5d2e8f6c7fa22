// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/providers.h"
#include "tests/support/testcertificates.h"
#include "tools/filesaver.h"
#include "tools/keyexporter.h"

#include <QDirIterator>
#include <QSignalSpy>
#include <QtTest>

using namespace Trivex;

/// A private key that leaves a file for another one: never without a password.
class TestKeyExporter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void withPassword();
    void withoutPassword();

private:
    /// What lies in the staging folder.
    static QStringList staged(const FileSaver &saver);

    QCA::Initializer m_initializer;
    TrivexTest::TestAuthority m_authority;
    FileItemModel m_items;
};

void TestKeyExporter::initTestCase()
{
    QVERIFY(m_authority.isValid());
    QFile pem(m_authority.file(QStringLiteral("ca.key")));
    QVERIFY(pem.open(QIODevice::ReadOnly));
    FileItem item;
    item.der = m_authority.certificate();
    item.key = QCA::PrivateKey::fromPEM(QString::fromLatin1(pem.readAll()), {}, nullptr,
                                        opensslProviderName());
    QVERIFY(!item.key.isNull());
    m_items.setItems({item});
}

QStringList TestKeyExporter::staged(const FileSaver &saver)
{
    QStringList files;
    if (!saver.staging())
        return files;
    QDirIterator found(saver.staging()->path(), QDir::Files, QDirIterator::Subdirectories);
    while (found.hasNext())
        files += found.next();
    return files;
}

void TestKeyExporter::withPassword()
{
    KeyExporter exporter;
    FileSaver saver;
    QSignalSpy finished(&exporter, &KeyExporter::finished);
    exporter.stageItem(&m_items, 0, nullptr, QStringLiteral("secret"), &saver);
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(exporter.error(), int(KeyExporter::NoError));
    const QString path = m_authority.file(QStringLiteral("exported.p12"));
    QCOMPARE(saver.place(path, false), int(FileSaver::Saved));
    const auto opened = [&](const char *password) {
        return m_authority.openssl({QStringLiteral("pkcs12"), QStringLiteral("-in"), path,
                                    QStringLiteral("-nodes"), QStringLiteral("-passin"),
                                    QStringLiteral("pass:") + QLatin1String(password)});
    };
    QVERIFY(opened("secret").contains("PRIVATE KEY-----"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("openssl.*failed")));
    QVERIFY(opened("").isNull());
}

void TestKeyExporter::withoutPassword()
{
    KeyExporter exporter;
    FileSaver saver;
    QSignalSpy finished(&exporter, &KeyExporter::finished);
    exporter.stageItem(&m_items, 0, nullptr, QString(), &saver);
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(exporter.error(), int(KeyExporter::NoPassword));
    QVERIFY(!exporter.message().isEmpty());
    QCOMPARE(staged(saver), QStringList());
}

QTEST_GUILESS_MAIN(TestKeyExporter)
#include "tst_keyexporter.moc"
