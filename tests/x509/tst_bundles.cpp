// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keybundlefile.h"
#include "qca/base/providers.h"
#include "qca/keys/gostengine.h"
#include "qca/keys/keys.h"
#include "tests/x509/corpus.h"

#include <QtTest>

using namespace Trivex;

class TestBundles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void reads_data();
    void reads();
    void tellsErrorsApart_data();
    void tellsErrorsApart();
    void readsOddPasswords();
    void readsBrokenCertificates();
    void readsPrimitiveNames();
    void writes();
    void writesOddNames_data();
    void writesOddNames();

private:
    QCA::Initializer m_initializer;
};

namespace {

QCA::KeyBundle read(const QString &file, const QCA::SecureArray &password,
                    QCA::ConvertResult *result)
{
    *result = QCA::ErrorFile;
    return QCA::KeyBundle::fromFile(Corpus::path(file), password, result, opensslProviderName());
}

} // namespace

void TestBundles::reads_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("chain");
    QTest::addColumn<int>("type");
    const QString name = QStringLiteral("Дружественное имя");
    const auto row = [](const char *file, const QString &password, const QString &name, int chain,
                        int type) {
        QTest::newRow(file) << QString::fromLatin1(file) << password << name << chain << type;
    };
    for (const char *file : {"bundle-aes.p12", "bundle-rc2.p12", "bundle-3des.p12",
                             "bundle-no-mac.p12", "bundle-plain.p12"})
        row(file, QStringLiteral("secret"), name, 2, RsaKey);
    row("bundle-unicode.p12", QStringLiteral("пароль"), name, 2, RsaKey);
    row("bundle-empty.p12", QString(), name, 2, RsaKey);
    for (const int curve : {256, 384, 521}) {
        const QByteArray file = "bundle-ec-" + QByteArray::number(curve) + ".p12";
        row(file.constData(), QStringLiteral("secret"), QStringLiteral("Curve %1").arg(curve), 1,
            EllipticCurveKey);
    }
    if (!Corpus::hasGost())
        return;
    row("gost-2001.p12", QStringLiteral("secret"), QStringLiteral("ГОСТ 2001"), 1, Gost2001Key);
    row("gost-2012-256.p12", QStringLiteral("secret"), QStringLiteral("ГОСТ 2012-256"), 1,
        Gost2012Key256);
    row("gost-2012-512.p12", QStringLiteral("secret"), QStringLiteral("ГОСТ 2012-512"), 1,
        Gost2012Key512);
}

void TestBundles::reads()
{
    QFETCH(QString, file);
    QFETCH(QString, password);
    QFETCH(QString, name);
    QFETCH(int, chain);
    QFETCH(int, type);
    QCA::ConvertResult result;
    const QCA::KeyBundle bundle = read(file, QCA::SecureArray(password.toUtf8()), &result);
    QCOMPARE(int(result), int(QCA::ConvertGood));
    QCOMPARE(bundle.name(), name);
    QCOMPARE(bundle.certificateChain().size(), chain);
    QCOMPARE(keyType(bundle.privateKey()), type);
    QVERIFY(bundle.privateKey().isPrivate());
    if (chain == 2) {
        QCOMPARE(bundle.certificateChain().at(0).commonName(), QStringLiteral("Пользователь"));
        QCOMPARE(bundle.certificateChain().at(1).commonName(), QStringLiteral("All extensions"));
    }
    QVERIFY(isSamePublicKey(bundle.privateKey().toPublicKey(),
                            bundle.certificateChain().primary().subjectPublicKey()));
}

void TestBundles::tellsErrorsApart_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("password");
    QTest::addColumn<int>("expected");
    const auto row = [](const char *name, const char *file, const char *password, int expected) {
        QTest::newRow(name) << QString::fromLatin1(file) << QString::fromLatin1(password)
                            << expected;
    };
    row("wrong", "bundle-aes.p12", "wrong", QCA::ErrorPassphrase);
    row("wrong rc2", "bundle-rc2.p12", "wrong", QCA::ErrorPassphrase);
    row("wrong without a check", "bundle-no-mac.p12", "wrong", QCA::ErrorPassphrase);
    row("none given", "bundle-aes.p12", "", QCA::ErrorPassphrase);
    row("no bundle", "rsa.key", "secret", QCA::ErrorDecode);
    row("no key", "bundle-no-key.p12", "secret", QCA::ErrorDecode);
    row("own certificate unreadable", "bundle-own-unreadable.p12", "secret", QCA::ErrorDecode);
    row("missing", "nowhere.p12", "secret", QCA::ErrorFile);
}

void TestBundles::tellsErrorsApart()
{
    QFETCH(QString, file);
    QFETCH(QString, password);
    QFETCH(int, expected);
    const auto loaded = readKeyBundle(Corpus::path(file), QCA::SecureArray(password.toUtf8()));
    QVERIFY(loaded);
    QCOMPARE(int(loaded->result), expected);
    QVERIFY(loaded->bundle.isNull());
}

void TestBundles::readsOddPasswords()
{
    // Programs have widened the octets of UTF-8 or of a Cyrillic code page one by one.
    const QByteArray pem = Corpus::certificate(QStringLiteral("ec-384.der")).toPEM().toLatin1()
        + Corpus::read(QStringLiteral("ec-384.key"));
    const QList<QByteArray> written = {
        QString::fromLatin1(QStringLiteral("пароль").toUtf8()).toUtf8(),
        QString::fromLatin1("\xEF\xE0\xF0\xEE\xEB\xFC").toUtf8()};
    QTemporaryFile source;
    QVERIFY(source.open());
    source.write(pem);
    source.close();
    for (const QByteArray &password : written) {
        const QByteArray file = Corpus::openssl(
            {QStringLiteral("pkcs12"), QStringLiteral("-export"), QStringLiteral("-passout"),
             QLatin1String("pass:") + QString::fromUtf8(password), QStringLiteral("-in"),
             source.fileName()});
        QVERIFY(!file.isEmpty());
        QCA::ConvertResult result = QCA::ErrorFile;
        const QCA::KeyBundle bundle =
            QCA::KeyBundle::fromArray(file, QCA::SecureArray(QStringLiteral("пароль").toUtf8()),
                                      &result, opensslProviderName());
        QCOMPARE(int(result), int(QCA::ConvertGood));
        QVERIFY(!bundle.isNull());
    }
}

void TestBundles::readsBrokenCertificates()
{
    QCA::ConvertResult result = QCA::ErrorFile;
    const QCA::KeyBundle bundle =
        read(QStringLiteral("crashers/badbc.p12"), QCA::SecureArray("secret"), &result);
    QCOMPARE(int(result), int(QCA::ConvertGood));
    QCOMPARE(bundle.certificateChain().primary().commonName(), QStringLiteral("Тест"));
}

// What was read as a bundle without a certificate, or with another's.
void TestBundles::readsPrimitiveNames()
{
    QCA::ConvertResult result = QCA::ErrorFile;
    const QCA::KeyBundle bundle =
        read(QStringLiteral("bundle-primitive.p12"), QCA::SecureArray("secret"), &result);
    QCOMPARE(int(result), int(QCA::ConvertGood));
    QCOMPARE(bundle.certificateChain().size(), 1);
    QCOMPARE(bundle.certificateChain().primary().commonName(), QStringLiteral("Whole"));
}

void TestBundles::writes()
{
    QCA::ConvertResult result;
    QCA::KeyBundle bundle =
        read(QStringLiteral("bundle-aes.p12"), QCA::SecureArray("secret"), &result);
    bundle.setName(QStringLiteral("Новое имя"));
    const QByteArray written = bundle.toArray(QCA::SecureArray("другой"), opensslProviderName());
    QVERIFY(!written.isEmpty());
    const QByteArray shown =
        Corpus::openssl({QStringLiteral("pkcs12"), QStringLiteral("-passin"),
                         QStringLiteral("pass:другой"), QStringLiteral("-nodes")},
                        written);
    QCOMPARE(shown.count("BEGIN CERTIFICATE"), 2);
    QCOMPARE(shown.count("BEGIN PRIVATE KEY"), 1);
    const QCA::KeyBundle again = QCA::KeyBundle::fromArray(written, QCA::SecureArray("другой"),
                                                           &result, opensslProviderName());
    QCOMPARE(again.name(), QStringLiteral("Новое имя"));
    QCOMPARE(again.certificateChain().size(), 2);
}

void TestBundles::writesOddNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("read");
    const auto row = [](const char *title, const QString &name, const QString &read) {
        QTest::newRow(title) << name << read;
    };
    const QString key = QStringLiteral("🔑");
    row("an emoji", key, QStringLiteral("?"));
    row("among letters", QLatin1String("a ") + key + QLatin1String(" b"), QStringLiteral("a ? b"));
    row("of 16 bits", QStringLiteral("日\uFFEE"), QStringLiteral("日\uFFEE"));
    row("one letter", QStringLiteral("я"), QStringLiteral("я"));
    row("none", QString(), QString());
}

// A name is no reason to write nothing.
void TestBundles::writesOddNames()
{
    QFETCH(QString, name);
    QFETCH(QString, read);
    QCA::ConvertResult result;
    QCA::KeyBundle bundle =
        ::read(QStringLiteral("bundle-aes.p12"), QCA::SecureArray("secret"), &result);
    bundle.setName(name);
    const QByteArray written = bundle.toArray(QCA::SecureArray("other"), opensslProviderName());
    const QCA::KeyBundle again = QCA::KeyBundle::fromArray(written, QCA::SecureArray("other"),
                                                           &result, opensslProviderName());
    QCOMPARE(result, QCA::ConvertGood);
    QCOMPARE(again.name(), read);
    QCOMPARE(again.certificateChain().size(), 2);
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestBundles test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_bundles.moc"
