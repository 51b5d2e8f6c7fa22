// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/systemstores.h"
#include "tests/support/systemlist.h"
#include "tests/support/testcertificates.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

using namespace TrivexTest;

/// The trust module beside QCA's own list of the system: nothing is listed twice, and what one of
/// them has alone is listed.
class TestTrusted : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void showsWhatIsLeft();
    void showsAllToWhoHasNoOtherList();

private:
    QStringList systemEntries(const QString &provider);

    QTemporaryDir m_home;
    TestAuthority m_first{QStringLiteral("First Root")};
    TestAuthority m_second{QStringLiteral("Second Root")};
    TestAuthority m_added{QStringLiteral("Added Root")};
    TestAuthority m_known{QStringLiteral("Known, Not Trusted")};
    std::unique_ptr<QCA::Initializer> m_qca;
};

namespace {

QByteArray pemOf(const TestAuthority &authority)
{
    QFile file(authority.certificateFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool write(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly)
        && file.write(contents) == contents.size();
}

/// The system's list is that file, and the trust module may be listed too.
void setRoots(const QString &file)
{
    setSystemList(file);
    listTrustedCertificates();
}

} // namespace

void TestTrusted::initTestCase()
{
    if (!QFile::exists(QStringLiteral(TRIVEX_P11_TRUST)))
        QSKIP("no trust module of p11-kit");
    QVERIFY(m_first.isValid() && m_second.isValid() && m_added.isValid() && m_known.isValid());
    const QString known = m_home.filePath(QStringLiteral("known"));
    const QString mixed = m_home.filePath(QStringLiteral("mixed"));
    QVERIFY(write(known + QStringLiteral("/anchors/first.pem"), pemOf(m_first)));
    QVERIFY(write(known + QStringLiteral("/anchors/second.pem"), pemOf(m_second)));
    QVERIFY(write(mixed + QStringLiteral("/anchors/first.pem"), pemOf(m_first)));
    QVERIFY(write(mixed + QStringLiteral("/anchors/added.pem"), pemOf(m_added)));
    // Not below the anchors: the module has it, for chains, and trusts it in nothing.
    QVERIFY(write(mixed + QStringLiteral("/known.pem"), pemOf(m_known)));
    QVERIFY(write(m_home.filePath(QStringLiteral("roots.pem")), pemOf(m_first) + pemOf(m_second)));
    qputenv("HOME", QFile::encodeName(m_home.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home.path()));
    qputenv("TRIVEX_PKCS11_MODULES",
            QStringLiteral(TRIVEX_P11_TRUST "|paths='%1:%2'").arg(known, mixed).toUtf8());
}

/// The entries of all stores of the system, each with its store, sorted; of one provider or of all.
QStringList TestTrusted::systemEntries(const QString &provider)
{
    QStringList found;
    const auto note = [&found](const QString &id, const QList<QCA::KeyStoreEntry> &entries) {
        const QString origin = id.startsWith(QLatin1String("pkcs11:")) ? QStringLiteral("token")
                                                                       : QStringLiteral("list");
        if (entries.isEmpty())
            found += origin + QStringLiteral(": empty");
        for (const QCA::KeyStoreEntry &entry : entries)
            found += origin + QStringLiteral(": ") + entry.certificate().commonName();
    };
    lookAtSystemStores(provider, 700, note); // longer than anybody waits for the other list
    found.sort();
    return found;
}

void TestTrusted::showsWhatIsLeft()
{
    m_qca = std::make_unique<QCA::Initializer>();
    if (!QCA::isSupported("cert,crl"))
        QSKIP("QCA has no list of the system");
    setRoots(m_home.filePath(QStringLiteral("roots.pem")));
    QCOMPARE(systemEntries(QString()),
             QStringList({QStringLiteral("list: First Root"), QStringLiteral("list: Second Root"),
                          QStringLiteral("token: Added Root")}));
}

void TestTrusted::showsAllToWhoHasNoOtherList()
{
    m_qca.reset();
    m_qca = std::make_unique<QCA::Initializer>();
    setRoots(m_home.filePath(QStringLiteral("roots.pem")));
    QCOMPARE(
        systemEntries(QStringLiteral("qca-norvel-pkcs11")),
        QStringList({QStringLiteral("token: Added Root"), QStringLiteral("token: First Root"),
                     QStringLiteral("token: First Root"), QStringLiteral("token: Second Root")}));
}

QTEST_GUILESS_MAIN(TestTrusted)
#include "tst_trusted.moc"
