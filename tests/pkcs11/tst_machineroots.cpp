// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/systemstores.h"

#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <algorithm>

/// The machine's own trust module, as it is configured, beside QCA's own list of the system, which
/// on most machines is made of the same certificates.
class TestMachineRoots : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void eachOnce();
    void moduleHasThem();

private:
    /// The encodings in all stores of the system; of one provider or of all.
    static QList<QByteArray> roots(const QString &provider);

    QTemporaryDir m_home;
    QSet<QByteArray> m_listed;
};

void TestMachineRoots::initTestCase()
{
    if (!QFile::exists(QStringLiteral(TRIVEX_P11_TRUST)))
        QSKIP("no trust module of p11-kit");
    qputenv("HOME", QFile::encodeName(m_home.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home.path()));
    qputenv("TRIVEX_PKCS11_MODULES", TRIVEX_P11_TRUST);
}

QList<QByteArray> TestMachineRoots::roots(const QString &provider)
{
    TrivexTest::listTrustedCertificates();
    QList<QByteArray> found;
    // Longer than anybody waits for the other list, and then all entries of the module.
    TrivexTest::lookAtSystemStores(
        provider, 2000, [&found](const QString &, const QList<QCA::KeyStoreEntry> &entries) {
            for (const QCA::KeyStoreEntry &entry : entries)
                found += entry.certificate().toDER();
        });
    return found;
}

void TestMachineRoots::eachOnce()
{
    const QCA::Initializer qca;
    if (!QCA::isSupported("cert,crl") || QCA::systemStore().certificates().isEmpty())
        QSKIP("QCA has no list of the system");
    const QList<QByteArray> all = roots(QString());
    QVERIFY(!all.isEmpty());
    for (const QByteArray &one : all) {
        QVERIFY(!m_listed.contains(one));
        m_listed.insert(one);
    }
}

// Otherwise the machine has shown nothing.
void TestMachineRoots::moduleHasThem()
{
    const QCA::Initializer qca;
    const QList<QByteArray> own = roots(QStringLiteral("qca-norvel-pkcs11"));
    if (own.isEmpty() || m_listed.isEmpty())
        QSKIP("one of both lists of the machine is empty");
    QVERIFY(std::any_of(own.cbegin(), own.cend(),
                        [this](const QByteArray &one) { return m_listed.contains(one); }));
}

QTEST_GUILESS_MAIN(TestMachineRoots)
#include "tst_machineroots.moc"
