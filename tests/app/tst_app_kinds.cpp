// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/pages.h"
#include "tests/app/windowtest.h"
#include "tests/support/derelement.h"
#include "tests/support/userfiles.h"

#include <QtTest>

using namespace TrivexTest;

namespace {

const QString OtherToken = QStringLiteral("Второй токен");

QByteArray sequence(const QByteArray &content)
{
    return derElement(0x30, content);
}

QByteArray object(const char *hex)
{
    return derElement(0x06, QByteArray::fromHex(hex));
}

QByteArray bits(const QByteArray &content)
{
    return derElement(0x03, QByteArray(1, '\0') + content);
}

QByteArray nameOf(const QByteArray &commonName)
{
    return sequence(derElement(0x31, sequence(object("550403") + derElement(0x0c, commonName))));
}

/// A kind of GOST R key by its identifiers.
struct Gost {
    const char *name;
    const char *key;
    const char *parameters;
    const char *signature;
    int bytes; ///< of the public key
    const char *shownKey;
    const char *shownSignature;
    const char *shownParameters;
};

const Gost gosts[] = {
    {"Gost 2001", "2a8503020213", "2a850302022301", "2a8503020203", 64,
     "GOST R 34.10-2001, 256 bits", "GOST R 34.10-2001 with GOST R 34.11-94",
     "GOST R 34.10-2001, parameter set A (1.2.643.2.2.35.1)"},
    {"Gost 256", "2a85030701010101", "2a8503070102010101", "2a85030701010302", 64,
     "GOST R 34.10-2012, 256 bits", "GOST R 34.10-2012 with GOST R 34.11-2012 (256 bits)",
     "GOST R 34.10-2012 (256 bits), parameter set A (1.2.643.7.1.2.1.1.1)"},
    {"Gost 512", "2a85030701010102", "2a8503070102010201", "2a85030701010303", 128,
     "GOST R 34.10-2012, 512 bits", "GOST R 34.10-2012 with GOST R 34.11-2012 (512 bits)",
     "GOST R 34.10-2012 (512 bits), parameter set A (1.2.643.7.1.2.1.2.1)"}};

/// Made by hand, because openssl makes none without an engine that not every machine has. The
/// signature is none; what is shown are the names.
QByteArray gostCertificate(const Gost &gost)
{
    const QByteArray key = sequence(sequence(object(gost.key) + sequence(object(gost.parameters)))
                                    + bits(derElement(0x04, QByteArray(gost.bytes, '\x11'))));
    const QByteArray algorithm = sequence(object(gost.signature));
    const QByteArray times =
        sequence(derElement(0x17, "250101000000Z") + derElement(0x17, "490101000000Z"));
    const QByteArray contents =
        sequence(derElement(0xa0, derElement(0x02, "\x02")) + derElement(0x02, "\x17") + algorithm
                 + nameOf("Gost Root") + times + nameOf(gost.name) + key);
    return sequence(contents + algorithm + bits(QByteArray(gost.bytes, '\x22')));
}

} // namespace

/// Certificates, names, bundles and tokens of every kind, as the window shows them.
class TestAppKinds : public TokenWindowTest<TestToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void severalTokens();
    void keys_data();
    void keys();
    void numbersByName();
    void encodings_data();
    void encodings();
    void oldBundles_data();
    void oldBundles();
    void tokensComeAndGo();

private:
    void prepare() override;
    void arrive() override;
    /// A certificate of the user's own, by `openssl req` with these further arguments.
    bool add(const QString &name, const QStringList &further) const;
    bool choose(const QString &name);
    bool showToken(const QString &name);
    /// Chooses by keyboard where an import goes.
    bool chooseToken(const QString &name);
    QString value(const QString &label) const;
};

bool TestAppKinds::add(const QString &name, const QStringList &further) const
{
    QStringList arguments = {QStringLiteral("req"), QStringLiteral("-x509"),
                             QStringLiteral("-nodes"), QStringLiteral("-keyout"),
                             QStringLiteral("/dev/null")};
    if (!further.contains(QStringLiteral("-newkey")))
        arguments += {QStringLiteral("-newkey"), QStringLiteral("ed25519")};
    const QByteArray pem = m_authority.openssl(arguments + further);
    return !pem.isEmpty() && !writeTestFile(userFile(name + QStringLiteral(".pem")), pem).isEmpty();
}

void TestAppKinds::prepare()
{
    QVERIFY(m_token.addToken(OtherToken));
    for (const Gost &gost : gosts) {
        const QString name = QString::fromLatin1(gost.name);
        QVERIFY(
            !writeTestFile(userFile(name + QStringLiteral(".pem")), toPem(gostCertificate(gost)))
                 .isEmpty());
    }
    const QString subject = QStringLiteral("/CN=%1");
    QVERIFY(add(QStringLiteral("Edwards"),
                {QStringLiteral("-subj"), subject.arg(QStringLiteral("Edwards"))}));
    for (const char *curve : {"P-256", "P-384", "P-521"}) {
        const QString name = QLatin1String(curve);
        QVERIFY(add(name,
                    {QStringLiteral("-newkey"), QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
                     QStringLiteral("ec_paramgen_curve:") + name, QStringLiteral("-sha384"),
                     QStringLiteral("-subj"), subject.arg(name)}));
    }
    // The openssl program takes no attribute by a number that it has no name for.
    const QString named = writeTestFile(m_authority.file(QStringLiteral("numbers.cnf")),
                                        "oid_section=o\n[o]\ninnle=1.2.643.100.4\n[req]\n"
                                        "distinguished_name=d\n[d]\n");
    QVERIFY(add(QStringLiteral("Numbers"),
                {QStringLiteral("-config"), named, QStringLiteral("-subj"),
                 QStringLiteral("/CN=Numbers/1.2.643.3.131.1.1=500100732259"
                                "/1.2.643.100.3=11223344595/1.2.643.100.1=1027700132195"
                                "/innle=7707083893/1.2.643.100.5=304500116000157")}));
    // The one that libcrypto takes for Cyrillic letters where it is free to choose, and the other.
    for (const char *mask : {"default", "utf8only"}) {
        const QString name = QStringLiteral("Имя ") + QLatin1String(mask);
        const QString settings = writeTestFile(
            m_authority.file(QLatin1String(mask)),
            QByteArray("[req]\ndistinguished_name=d\nstring_mask=") + mask + "\n[d]\n");
        QVERIFY(add(name,
                    {QStringLiteral("-config"), settings, QStringLiteral("-utf8"),
                     QStringLiteral("-subj"), subject.arg(name)}));
    }
}

void TestAppKinds::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.label()));
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + OtherToken));
}

bool TestAppKinds::choose(const QString &name)
{
    return m_window->waitFor([&] { return m_window->rowNamed(name) >= 0; })
        && m_window->clickRow(m_window->rowNamed(name))
        && m_window->waitForItem(QStringLiteral("detailsView"));
}

bool TestAppKinds::showToken(const QString &name)
{
    return m_window->waitForItem(QStringLiteral("token-") + name)
        && m_window->click(QStringLiteral("token-") + name);
}

bool TestAppKinds::chooseToken(const QString &name)
{
    QQuickItem *chooser = m_window->item(QStringLiteral("tokenChooser"));
    if (!chooser)
        return false;
    chooser->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Home);
    const auto chosen = [&] { return chooser->property("displayText").toString(); };
    for (int i = 1; i < chooser->property("count").toInt() && chosen() != name; ++i)
        m_window->key(Qt::Key_Down);
    return chosen() == name;
}

QString TestAppKinds::value(const QString &label) const
{
    QString found = QStringLiteral("nothing");
    visitItems(m_window->item(QStringLiteral("detailsView")), [&](const QQuickItem *item) {
        if (item->property("label").toString() == label && item->property("fixedWidth").isValid())
            found = item->property("value").toString();
    });
    return found;
}

void TestAppKinds::keys_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("signature");
    QTest::addColumn<QString>("curve");
    const auto row = [](const char *name, const char *key, const char *signature,
                        const char *curve = "nothing") {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(key)
                            << QString::fromLatin1(signature) << QString::fromLatin1(curve);
    };
    row("Edwards", "Ed25519, 256 bits", "Ed25519");
    row("P-256", "Elliptic Curve, 256 bits", "ECDSA with SHA-384", "P-256 (prime256v1)");
    row("P-384", "Elliptic Curve, 384 bits", "ECDSA with SHA-384", "P-384 (secp384r1)");
    row("P-521", "Elliptic Curve, 521 bits", "ECDSA with SHA-384", "P-521 (secp521r1)");
    for (const Gost &gost : gosts)
        row(gost.name, gost.shownKey, gost.shownSignature, gost.shownParameters);
}

void TestAppKinds::keys()
{
    QFETCH(QString, name);
    QFETCH(QString, key);
    QFETCH(QString, signature);
    QFETCH(QString, curve);
    QVERIFY(m_steps->show("users"));
    QVERIFY(choose(name));
    QTRY_COMPARE(value(qtTrId("trivex-app-key-kind-and-size")), key);
    QCOMPARE(value(qtTrId("trivex-app-signature-algorithm")), signature);
    QCOMPARE(value(qtTrId("trivex-app-key-curve")), curve);
}

void TestAppKinds::numbersByName()
{
    QVERIFY(m_steps->show("users"));
    QVERIFY(choose(QStringLiteral("Numbers")));
    const struct {
        const char *name;
        const char *number;
    } values[] = {{"INN (taxpayer number)", "500100732259"},
                  {"INNLE (company taxpayer number)", "7707083893"},
                  {"SNILS (personal insurance number)", "11223344595"},
                  {"OGRN (company registration number)", "1027700132195"},
                  {"OGRNIP (sole proprietor registration number)", "304500116000157"}};
    for (const auto &one : values)
        QTRY_COMPARE(value(QLatin1String(one.name)), QLatin1String(one.number));
}

void TestAppKinds::encodings_data()
{
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("type");
    QTest::newRow("BMPString") << QStringLiteral("default") << QStringLiteral("BMPSTRING");
    QTest::newRow("UTF8String") << QStringLiteral("utf8only") << QStringLiteral("UTF8STRING");
}

void TestAppKinds::encodings()
{
    QFETCH(QString, mask);
    QFETCH(QString, type);
    const QString name = QStringLiteral("Имя ") + mask;
    QVERIFY(m_authority
                .openssl({QStringLiteral("asn1parse"), QStringLiteral("-in"),
                          userFile(name + QStringLiteral(".pem"))})
                .contains(type.toLatin1()));
    QVERIFY(m_steps->show("users"));
    QVERIFY(choose(name));
    QTRY_COMPARE(value(QStringLiteral("Name")), name);
}

void TestAppKinds::oldBundles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("certificates");
    QTest::newRow("RC2") << QStringLiteral("Rivest") << QStringLiteral("PBE-SHA1-RC2-40")
                         << QStringLiteral("PBE-SHA1-RC2-40");
    QTest::newRow("3DES") << QStringLiteral("Triple") << QStringLiteral("PBE-SHA1-3DES")
                          << QStringLiteral("PBE-SHA1-3DES");
}

// As programs wrote them for twenty years, and libcrypto reads them only when asked to.
void TestAppKinds::oldBundles()
{
    QFETCH(QString, name);
    QFETCH(QString, keys);
    QFETCH(QString, certificates);
    const QString bundle = m_authority.bundle(
        {QStringLiteral("-algorithm"), QStringLiteral("RSA")}, QStringLiteral("/CN=") + name,
        QStringLiteral("secret"), name,
        {QStringLiteral("-legacy"), QStringLiteral("-keypbe"), keys, QStringLiteral("-certpbe"),
         certificates, QStringLiteral("-macalg"), QStringLiteral("SHA1")});
    QVERIFY(!bundle.isEmpty());
    const int before = m_token.objectCount();
    m_steps->openFile(bundle);
    QVERIFY(m_steps->waitOpen("importDialog"));
    // The first, empty try has ended, and the dialog has its size.
    QVERIFY(m_window->waitFor([&] { return !m_steps->text("importProblem").isEmpty(); }));
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->fill(QStringLiteral("bundlePassword"), QStringLiteral("secret")));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitEnabled("importAccept"));
    QVERIFY(chooseToken(m_token.label()));
    QVERIFY(m_window->click(QStringLiteral("importAccept")));
    QVERIFY(m_steps->answerPinUntil(
        rightPin(), [&] { return !m_window->isOpen(QStringLiteral("importDialog")); }));
    QVERIFY(m_steps->show("personal"));
    QVERIFY(choose(name));
    // The pair and its certificate at least; the issuer's comes along once.
    QVERIFY(m_token.objectCount() >= before + 3);
}

/// Two tokens stand side by side, and what is for one goes to that one.
void TestAppKinds::severalTokens()
{
    const TestAuthority other(QStringLiteral("For the other one"));
    const struct {
        QString file;
        QString token;
    } imports[] = {{other.certificateFile(), OtherToken},
                   {m_authority.certificateFile(), m_token.label()}};
    for (const auto &one : imports) {
        m_steps->openFile(one.file);
        QVERIFY(m_steps->waitOpen("importDialog"));
        QVERIFY(m_steps->waitEnabled("importAccept"));
        QVERIFY(chooseToken(one.token));
        QVERIFY(m_window->click(QStringLiteral("importAccept")));
        QVERIFY(m_steps->waitOpen("pinPromptDialog"));
        QCOMPARE(m_steps->text("pinTokenName"), one.token);
        QVERIFY(m_steps->answerPin(rightPin()));
        QVERIFY(m_steps->waitClosed("importDialog"));
    }
    QVERIFY(showToken(OtherToken));
    QVERIFY(choose(QStringLiteral("For the other one")));
    QVERIFY(m_window->rowNamed(QStringLiteral("Test Root")) < 0);
    QVERIFY(showToken(m_token.label()));
    QVERIFY(choose(QStringLiteral("Test Root")));
    QVERIFY(m_window->rowNamed(QStringLiteral("For the other one")) < 0);
}

void TestAppKinds::tokensComeAndGo()
{
    const auto said = [&](const QString &token) {
        const QQuickItem *entry = m_window->item(QStringLiteral("token-") + token);
        return entry ? entry->property("note").toString() : QStringLiteral("nothing");
    };
    const auto bothAre = [&](const QString &state) {
        return said(m_token.label()) == state && said(OtherToken) == state;
    };
    const auto isThere = [&] { return m_window->rowNamed(QStringLiteral("Test Root")) >= 0; };
    QVERIFY(m_steps->show("roots"));
    QVERIFY(m_window->waitFor([&] { return isThere() && bothAre(QString()); }));
    m_token.removeModule();
    const bool gone = m_window->waitFor(
        [&] { return !isThere() && bothAre(qtTrId("trivex-app-token-removed")); });
    m_token.restoreModule();
    QVERIFY(gone);
    QVERIFY(m_window->waitFor([&] { return isThere() && bothAre(QString()); }));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppKinds, TestToken>(argc, argv, QStringLiteral("Токен К"));
}

#include "tst_app_kinds.moc"
