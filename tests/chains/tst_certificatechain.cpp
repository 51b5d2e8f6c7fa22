// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The type that applications use: which stores count, when a check runs, and what it tells.
#include "qca/base/catalogues.h"
#include "qca/tokens/userstore.h"
#include "tests/chains/chainrows.h"
#include "tests/chains/madechain.h"
#include "tests/support/loopmeter.h"
#include "tests/x509/corpus.h"
#include "tools/certificatechain.h"
#include "tools/certificatefile.h"
#include "tools/validity.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace Trivex;
using namespace MadeChain;

namespace {

constexpr int LongEnough = 20000;

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

} // namespace

class TestCertificateChain : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void throughStores();
    void whatIsTrusted_data();
    void whatIsTrusted();
    void comesAndGoes();
    void nothingTwice();
    void anotherMeanwhile();
    void cancelled();
    void atADate();
    void datesAsTyped();
    void listsOfTheFolder();
    void staleList();
    void fromAFile();
    void listOfTheFile();
    void requestsHaveNone();
    void dropped();
    void manyRows();
    void everySentence();

private:
    bool waitReady() const;
    static QString listFile(const char *name)
    {
        return userStoreDirectory() + QLatin1Char('/') + QString::fromUtf8(name);
    }

    const Party m_root = make({"Root", -10, Year, authority()}, nullptr);
    const Party m_middle = make({"Middle", -10, Year, authority()}, &m_root);
    const Party m_leaf = make({"Leaf", -1, 30}, &m_middle);
    QCA::Initializer m_initializer;
    std::unique_ptr<ChainRows> m_rows;
    std::unique_ptr<EntryModel> m_entries;
    std::unique_ptr<CertificateChain> m_chain;
};

void TestCertificateChain::initTestCase()
{
    QVERIFY(QDir().mkpath(userStoreDirectory()));
    installCatalogues(QStringLiteral("trivex-app"), this);
}

void TestCertificateChain::init()
{
    m_rows = std::make_unique<ChainRows>();
    m_entries = std::make_unique<EntryModel>();
    m_entries->setSourceModel(m_rows.get());
    m_chain = std::make_unique<CertificateChain>();
    new QAbstractItemModelTester(
        m_chain->steps(), QAbstractItemModelTester::FailureReportingMode::Fatal, m_chain->steps());
    m_chain->setEntries(m_entries.get());
}

void TestCertificateChain::cleanup()
{
    m_chain.reset();
    m_entries.reset();
    m_rows.reset();
    QDir folder(userStoreDirectory());
    for (const QString &name : folder.entryList(QDir::Files))
        folder.remove(name);
}

bool TestCertificateChain::waitReady() const
{
    // What came in is gathered for a moment before it counts.
    QTest::qWait(100);
    return QTest::qWaitFor([this] { return m_chain->isReady() && !m_chain->isRunning(); },
                           LongEnough);
}

void TestCertificateChain::throughStores()
{
    m_rows->add(ChainRows::System, "system", m_root.der());
    m_rows->add(ChainRows::User, "USER", m_middle.der());
    m_chain->setCertificate(m_rows->add(ChainRows::SmartCard, "Token A", m_leaf.der()));
    QVERIFY(waitReady());
    QCOMPARE(m_chain->verdict(), int(CertificateChain::Good));
    QCOMPARE(m_chain->steps()->rowCount(), 3);
    const auto value = [this](int row, int role) { return m_chain->steps()->value(row, role); };
    QCOMPARE(value(0, ChainStepModel::NameRole).toString(), QStringLiteral("Leaf"));
    QCOMPARE(value(0, ChainStepModel::PlaceRole).toString(), QStringLiteral("Token A"));
    QCOMPARE(value(1, ChainStepModel::PlaceRole), m_entries->storeNameAt(1));
    QVERIFY(value(2, ChainStepModel::RootRole).toBool());
    QCOMPARE(m_chain->stepItems()->rowCount(), 3);
    QVERIFY(!m_chain->stepItems()->details(1).isEmpty());
    QVERIFY(!m_chain->note().isEmpty()); // nobody has looked whether it was revoked
    QVERIFY(m_chain->advice().isEmpty());
    QCOMPARE(m_chain->checks(), 1);
}

void TestCertificateChain::whatIsTrusted_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("store");
    QTest::addColumn<int>("verdict");
    QTest::newRow("the system's") << int(ChainRows::System) << QByteArray("system")
                                  << int(CertificateChain::Good);
    QTest::newRow("the user's own")
        << int(ChainRows::User) << QByteArray("USER") << int(CertificateChain::Good);
    QTest::newRow("on a token") << int(ChainRows::SmartCard) << QByteArray("Token")
                                << int(CertificateChain::Bad);
    QTest::newRow("a token that calls itself so")
        << int(ChainRows::SmartCard) << QByteArray("system") << int(CertificateChain::Bad);
}

// Whoever hands somebody a token or a file does not say by that whom they trust.
void TestCertificateChain::whatIsTrusted()
{
    QFETCH(int, type);
    QFETCH(QByteArray, store);
    QFETCH(int, verdict);
    m_rows->add(ChainRows::SmartCard, "Token", m_middle.der());
    m_rows->add(ChainRows::StoreType(type), store.constData(), m_root.der());
    m_chain->setCertificate(m_rows->add(ChainRows::SmartCard, "Token", m_leaf.der()));
    QVERIFY(waitReady());
    QCOMPARE(m_chain->verdict(), verdict);
    QCOMPARE(m_chain->steps()->rowCount(), 3);
    QCOMPARE(m_chain->steps()->value(2, ChainStepModel::RootRole).toBool(),
             verdict == CertificateChain::Good);
}

void TestCertificateChain::comesAndGoes()
{
    m_rows->add(ChainRows::System, "system", m_root.der());
    m_chain->setCertificate(m_rows->add(ChainRows::User, "USER", m_leaf.der()));
    QVERIFY(waitReady());
    QCOMPARE(m_chain->verdict(), int(CertificateChain::Unknown));
    QVERIFY(m_chain->message().contains(QStringLiteral("Middle")));
    // A token with its issuer comes, and goes.
    m_rows->add(ChainRows::SmartCard, "Token", m_middle.der());
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->verdict(), int(CertificateChain::Good), LongEnough);
    m_rows->removeRow(2);
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->verdict(), int(CertificateChain::Unknown), LongEnough);
    QCOMPARE(m_chain->checks(), 3);
    // With its row the certificate goes.
    m_rows->removeRow(1);
    QTRY_VERIFY_WITH_TIMEOUT(!m_chain->isReady(), LongEnough);
    QCOMPARE(m_chain->steps()->rowCount(), 0);
}

// What has nothing to do with the path is no reason to check it again.
void TestCertificateChain::nothingTwice()
{
    m_rows->add(ChainRows::System, "system", m_root.der());
    m_rows->add(ChainRows::System, "system", m_middle.der());
    QObject *leaf = m_rows->add(ChainRows::User, "USER", m_leaf.der());
    m_chain->setCertificate(leaf);
    QVERIFY(waitReady());
    QCOMPARE(m_chain->checks(), 1);
    const Party stranger = make({"Stranger", -1, 30, authority()}, nullptr);
    QSignalSpy changed(ChainSources::of(m_entries.get()), &ChainSources::changed);
    for (int i = 0; i < 5; ++i) {
        changed.clear();
        m_rows->add(ChainRows::SmartCard, "Token", stranger.der());
        QTRY_VERIFY_WITH_TIMEOUT(changed.count() > 0, LongEnough);
        QVERIFY(waitReady());
    }
    m_chain->setCertificate(leaf);
    m_chain->setDate(QDateTime());
    writeFile(listFile("stranger.crl"), list(stranger, {}));
    changed.clear();
    QTRY_VERIFY_WITH_TIMEOUT(changed.count() > 0, LongEnough);
    QVERIFY(waitReady());
    QCOMPARE(m_chain->checks(), 1);
    // One of several changes is enough for the last to be seen, and no more than that is done.
    m_chain->setDate(QDateTime::currentDateTime().addDays(1));
    m_chain->setDate(QDateTime::currentDateTime().addDays(2));
    m_chain->setDate(QDateTime::currentDateTime().addDays(50));
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->verdict(), int(CertificateChain::Bad), LongEnough);
    QCOMPARE(m_chain->checks(), 2);
}

// What was found for one certificate is not told of the next, though it ended when that was chosen.
void TestCertificateChain::anotherMeanwhile()
{
    m_rows->add(ChainRows::System, "system", m_root.der());
    QObject *middle = m_rows->add(ChainRows::System, "system", m_middle.der());
    QObject *leaf = m_rows->add(ChainRows::User, "USER", m_leaf.der());
    connect(m_chain.get(), &CertificateChain::runningChanged, m_chain.get(), [&] {
        if (!m_chain->isRunning() || m_chain->certificate() != leaf)
            return;
        m_chain->setCertificate(middle);
        QThread::msleep(500); // the check has ended, and nobody has heard of it yet
    });
    QStringList told;
    connect(m_chain.get(), &CertificateChain::finished, m_chain.get(), [&] {
        if (m_chain->isReady())
            told += m_chain->steps()->value(0, ChainStepModel::NameRole).toString();
    });
    m_chain->setCertificate(leaf);
    QTRY_VERIFY_WITH_TIMEOUT(told.contains(QStringLiteral("Middle")), LongEnough);
    QCOMPARE(told, QStringList{QStringLiteral("Middle")});
}

// After a check that was given up, the result of an earlier one does not stand.
void TestCertificateChain::cancelled()
{
    m_rows->add(ChainRows::System, "system", m_root.der());
    m_rows->add(ChainRows::System, "system", m_middle.der());
    m_chain->setCertificate(m_rows->add(ChainRows::User, "USER", m_leaf.der()));
    QVERIFY(waitReady());
    connect(m_chain.get(), &CertificateChain::runningChanged, m_chain.get(), [&] {
        if (m_chain->isRunning())
            m_chain->cancel();
    });
    m_chain->setDate(QDateTime::currentDateTime().addDays(60));
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->checks(), 2, LongEnough);
    QTRY_VERIFY_WITH_TIMEOUT(!m_chain->isRunning(), LongEnough);
    QVERIFY(!m_chain->isReady());
    QCOMPARE(m_chain->steps()->rowCount(), 0);
}

void TestCertificateChain::atADate()
{
    m_rows->add(ChainRows::System, "system", m_root.der());
    m_rows->add(ChainRows::System, "system", m_middle.der());
    m_chain->setCertificate(m_rows->add(ChainRows::User, "USER", m_leaf.der()));
    QVERIFY(waitReady());
    QCOMPARE(m_chain->verdict(), int(CertificateChain::Good));
    QVERIFY(m_chain->setDateText(QDate::currentDate().addDays(60).toString(Qt::ISODate)));
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->verdict(), int(CertificateChain::Bad), LongEnough);
    const QVariantList codes = m_chain->steps()->value(0, ChainStepModel::CodesRole).toList();
    QCOMPARE(codes, QVariantList{X509_V_ERR_CERT_HAS_EXPIRED});
    QVERIFY(m_chain->report().contains(QStringLiteral("[10]")));
    QVERIFY(m_chain->setDateText(QString()));
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->verdict(), int(CertificateChain::Good), LongEnough);
}

void TestCertificateChain::datesAsTyped()
{
    const QDate day(2019, 12, 31);
    for (const char *text : {"2019-12-31", "31.12.2019"}) {
        QVERIFY(m_chain->setDateText(QString::fromLatin1(text)));
        QCOMPARE(m_chain->date().date(), day);
    }
    const QLocale before;
    for (const char *name : {"en_US", "ru_RU", "de_DE", "sv_SE"}) {
        const QLocale locale((QLatin1String(name)));
        QLocale::setDefault(locale);
        QVERIFY(m_chain->setDateText({}));
        QVERIFY(m_chain->setDateText(locale.toString(day, QLocale::ShortFormat)));
        QCOMPARE(m_chain->date().date(), day);
        // With the whole year, where the locale writes two digits of it.
        QString format = locale.dateFormat(QLocale::ShortFormat);
        if (!format.contains(QLatin1String("yyyy")))
            format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
        QVERIFY(m_chain->setDateText({}));
        QVERIFY2(m_chain->setDateText(locale.toString(day, format)), name);
        QCOMPARE(m_chain->date().date(), day);
    }
    QLocale::setDefault(before);
    // Today is this moment: what became valid in the afternoon is so already.
    QVERIFY(m_chain->setDateText(QDate::currentDate().toString(Qt::ISODate)));
    QVERIFY(!m_chain->date().isValid());
    QVERIFY(m_chain->setDateText(QStringLiteral("2019-12-31")));
    for (const char *text : {"31.02.2019", "tomorrow", "2019-13-01", "12"}) {
        QVERIFY2(!m_chain->setDateText(QString::fromLatin1(text)), text);
        QCOMPARE(m_chain->date().date(), day);
    }
}

void TestCertificateChain::listsOfTheFolder()
{
    m_rows->add(ChainRows::System, "system", m_root.der());
    m_rows->add(ChainRows::System, "system", m_middle.der());
    m_chain->setCertificate(m_rows->add(ChainRows::User, "USER", m_leaf.der()));
    QVERIFY(waitReady());
    QCOMPARE(m_chain->verdict(), int(CertificateChain::Good));
    // It comes, in either form and under any of the names.
    writeFile(listFile("list.crl"), list(m_middle, {{&m_leaf, -3, CRL_REASON_SUPERSEDED}}));
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->verdict(), int(CertificateChain::Bad), LongEnough);
    QVERIFY(m_chain->steps()->value(0, ChainStepModel::ListedRole).toBool());
    // It is written to in place.
    writeFile(listFile("list.crl"), listPem(list(m_middle, {})));
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->verdict(), int(CertificateChain::Good), LongEnough);
    QVERIFY(m_chain->note().isEmpty());
    QVERIFY(QFile::remove(listFile("list.crl")));
    QTRY_VERIFY_WITH_TIMEOUT(!m_chain->note().isEmpty(), LongEnough);
    writeFile(listFile("list.pem"), listPem(list(m_middle, {{&m_leaf, -3}})));
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->verdict(), int(CertificateChain::Bad), LongEnough);
    // Noise harms nothing.
    writeFile(listFile("noise.crl"), QByteArray(1000, 'x'));
    writeFile(listFile("empty.crl"), {});
    QTest::qWait(500);
    QCOMPARE(m_chain->verdict(), int(CertificateChain::Bad));
}

void TestCertificateChain::staleList()
{
    writeFile(listFile("list.crl"), list(m_middle, {}, -20, -5));
    m_rows->add(ChainRows::System, "system", m_root.der());
    m_rows->add(ChainRows::System, "system", m_middle.der());
    m_chain->setCertificate(m_rows->add(ChainRows::User, "USER", m_leaf.der()));
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->verdict(), int(CertificateChain::Doubtful), LongEnough);
    const QString date = Trivex::Validity().date(QDateTime::currentDateTimeUtc().addDays(-5));
    QVERIFY2(m_chain->message().contains(date), qPrintable(m_chain->message()));
    QVERIFY(m_chain->advice().contains(userStoreDirectory()));
}

void TestCertificateChain::fromAFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("chain.pem"));
    writeFile(path,
              certificatePem(m_leaf.der()) + certificatePem(m_middle.der())
                  + certificatePem(m_root.der()));
    CertificateFile file;
    file.open(path);
    QCOMPARE(file.items()->rowCount(), 3);
    m_chain->setItems(file.items());
    m_chain->setItemRow(0);
    QVERIFY(waitReady());
    // The file brings its own root, which says nothing.
    QCOMPARE(m_chain->verdict(), int(CertificateChain::Bad));
    QCOMPARE(m_chain->steps()->rowCount(), 3);
    m_rows->add(ChainRows::System, "system", m_root.der());
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->verdict(), int(CertificateChain::Good), LongEnough);
    m_chain->setItemRow(1);
    QVERIFY(!m_chain->isReady());
    QVERIFY(waitReady());
    QCOMPARE(m_chain->steps()->rowCount(), 2);
    m_chain->setItemRow(7);
    QVERIFY(!m_chain->isReady());
    // Without any stores, a file is enough to see its path.
    m_chain->setEntries(nullptr);
    m_chain->setItemRow(0);
    QVERIFY(waitReady());
    QCOMPARE(m_chain->steps()->rowCount(), 3);
    QCOMPARE(m_chain->verdict(), int(CertificateChain::Bad));
}

void TestCertificateChain::listOfTheFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("all.pem"));
    m_rows->add(ChainRows::System, "system", m_root.der());
    writeFile(path,
              certificatePem(m_leaf.der()) + certificatePem(m_middle.der())
                  + listPem(list(m_middle, {{&m_leaf, -3, CRL_REASON_KEY_COMPROMISE}})));
    CertificateFile file;
    file.open(path);
    m_chain->setItems(file.items());
    m_chain->setItemRow(0);
    QVERIFY(waitReady());
    QCOMPARE(m_chain->verdict(), int(CertificateChain::Bad));
    const QString date = Trivex::Validity().date(QDateTime::currentDateTimeUtc().addDays(-3));
    QVERIFY2(m_chain->message().contains(date), qPrintable(m_chain->message()));
    // Reading it again, without the list, makes it good.
    writeFile(path, certificatePem(m_leaf.der()) + certificatePem(m_middle.der()));
    file.open(path);
    QTRY_COMPARE_WITH_TIMEOUT(m_chain->verdict(), int(CertificateChain::Good), LongEnough);
}

void TestCertificateChain::requestsHaveNone()
{
    QObject request;
    m_rows->add(ChainRows::System, "system", m_root.der());
    m_chain->setCertificate(&request);
    // No check must begin in this time.
    QTest::qWait(300);
    QVERIFY(!m_chain->isReady());
    QCOMPARE(m_chain->checks(), 0);
    QVERIFY(m_chain->message().isEmpty());
}

void TestCertificateChain::dropped()
{
    for (int i = 0; i < 20; ++i) {
        QObject *leaf = m_rows->add(ChainRows::User, "USER", m_leaf.der());
        CertificateChain chain;
        chain.setEntries(m_entries.get());
        chain.setCertificate(leaf);
        // Each round lets the check go at another moment.
        QTest::qWait(i * 3);
        if (i % 2 == 0)
            chain.cancel();
    }
    // The list goes while a path of it is looked for.
    m_chain->setCertificate(m_rows->add(ChainRows::User, "USER", m_middle.der()));
    m_entries.reset();
    QTest::qWait(100);
    QVERIFY(!m_chain->isReady());
}

// Ten thousand certificates are taken in while the window goes on, and a path is found among them
// without going through them again.
void TestCertificateChain::manyRows()
{
    constexpr int Many = 10000;
    QByteArray other = m_leaf.der();
    for (int i = 0; i < Many; ++i) {
        other[other.size() - 1] = char(i);
        other[other.size() - 2] = char(i >> 8);
        m_rows->add(ChainRows::User, "USER", other);
    }
    m_rows->add(ChainRows::System, "system", m_root.der());
    m_rows->add(ChainRows::System, "system", m_middle.der());
    QObject *leaf = m_rows->add(ChainRows::User, "USER", m_leaf.der());
    TrivexTest::LoopMeter meter;
    meter.start();
    m_chain->setCertificate(leaf);
    QVERIFY(waitReady());
    QCOMPARE(m_chain->verdict(), int(CertificateChain::Good));
    QCOMPARE(m_chain->checks(), 1);
    m_rows->removeRow(17);
    QVERIFY(waitReady());
    QCOMPARE(m_chain->checks(), 1);
    QVERIFY(meter.beats() > 5);
    QVERIFY2(meter.longest() < TrivexTest::LoopMeter::Unnoticed,
             qPrintable(QString::number(meter.longest())));
}

// Nobody is left without a word, or with an identifier in place of one.
void TestCertificateChain::everySentence()
{
    for (int reason = int(ChainReason::Expired); reason <= int(ChainReason::Other); ++reason) {
        ChainStep step;
        step.issuer = QStringLiteral("Somebody");
        step.findings = {{ChainReason(reason), 0, QDateTime::currentDateTimeUtc(), 1}};
        ChainStepModel model;
        model.setSteps({step});
        for (const int role : {ChainStepModel::TextRole, ChainStepModel::AdviceRole}) {
            const QString text = model.value(0, role).toString();
            QVERIFY2(text.endsWith(QLatin1Char('.')), qPrintable(text));
            QVERIFY2(!text.contains(QLatin1String("trivex-app")), qPrintable(text));
            QVERIFY2(!text.contains(QLatin1Char('%')), qPrintable(text));
        }
    }
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestCertificateChain test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_certificatechain.moc"
