// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/needtokens.h"
#include "tests/support/testtoken.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Configured");

bool writeFile(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

} // namespace

/// Where modules come from: p11-kit's configuration, the provider's settings, the trust module.
class TestConfiguration : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void userModule();
    void secondModuleOfATokenComesAndGoes();
    void trustModuleOnlyWhenAllowed();
    void defaultConfiguration();

private:
    QTemporaryDir m_home;
    QString m_modules;
    std::unique_ptr<TestToken> m_token;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<Stores> m_stores;
};

void TestConfiguration::initTestCase()
{
    m_token = std::make_unique<TestToken>(StoreName);
    TRIVEX_NEED_TOKENS();
    QVERIFY2(m_token->isValid(), qPrintable(m_token->problem()));
    m_modules = m_home.filePath(QStringLiteral(".config/pkcs11/modules"));
    QVERIFY(QDir().mkpath(m_modules));
    qputenv("HOME", QFile::encodeName(m_home.path()));
    qunsetenv("XDG_CONFIG_HOME");
    qunsetenv("TRIVEX_PKCS11_MODULES");
    // p11-kit's system modules use the same token, or none, and not that of the machine.
    qputenv("SOFTHSM2_CONF", QFile::encodeName(m_token->configurationFile()));
    m_qca = std::make_unique<QCA::Initializer>();
    m_stores = std::make_unique<Stores>();
}

void TestConfiguration::userModule()
{
    QVERIFY2(m_stores->waitFor(StoreName), qPrintable(m_stores->names().join(QLatin1Char(' '))));
}

void TestConfiguration::secondModuleOfATokenComesAndGoes()
{
    const QString path = m_modules + QStringLiteral("/later.module");
    const QString name = StoreName;
    // It shows a token that another module shows already: nothing is listed twice, and nothing goes
    // with the second one.
    QVERIFY(writeFile(path, "module: " + m_token->modulePath().toUtf8() + '\n'));
    QTest::qWait(1500); // several looks at the files, and nothing must change
    QVERIFY(Trivex::TokenMonitor::token(m_stores->byName(name)->id()).present);
    QCOMPARE(m_stores->names().count(name), 1);
    QVERIFY(QFile::remove(path));
    QTest::qWait(1500); // several looks at the files, and nothing must change
    QVERIFY(Trivex::TokenMonitor::token(m_stores->byName(name)->id()).present);
}

void TestConfiguration::trustModuleOnlyWhenAllowed()
{
    const auto systemStores = [this] {
        int count = 0;
        const QStringList names = m_stores->names();
        for (const QString &name : names) {
            if (m_stores->byName(name)->type() == QCA::KeyStore::System)
                ++count;
        }
        return count;
    };
    QTest::qWait(500); // no store must come in this time
    QCOMPARE(systemStores(), 0);
    const QString provider = QStringLiteral("qca-norvel-pkcs11");
    QVariantMap config = QCA::getProviderConfig(provider);
    QVERIFY(!config.isEmpty());
    config.insert(QStringLiteral("allow_load_rootca"), true);
    QCA::setProviderConfig(provider, config);
    QTRY_VERIFY(systemStores() > 0);
}

void TestConfiguration::defaultConfiguration()
{
    const QCA::Provider *provider = QCA::findProvider(QStringLiteral("qca-norvel-pkcs11"));
    QVERIFY(provider);
    const QVariantMap config = const_cast<QCA::Provider *>(provider)->defaultConfig();
    QCOMPARE(config.value(QStringLiteral("allow_load_rootca")), QVariant(false));
    QVERIFY(config.contains(QStringLiteral("formtype")));
    QCOMPARE(provider->features(),
             QStringList({QStringLiteral("keystorelist"), QStringLiteral("pkey"),
                          QStringLiteral("rsa"), QStringLiteral("ec"), QStringLiteral("csr")}));
    const QCA::Provider *gost = QCA::findProvider(QStringLiteral("qca-norvel-gost"));
    QVERIFY(gost);
    QCOMPARE(gost->features(), QStringList({QStringLiteral("ec"), QStringLiteral("pkey")}));
}

QTEST_GUILESS_MAIN(TestConfiguration)
#include "tst_configuration.moc"
