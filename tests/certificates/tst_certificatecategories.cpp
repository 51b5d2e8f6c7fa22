// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificatemodel.h"
#include "qca/base/providers.h"
#include "tests/certificates/certificatefactory.h"
#include "tests/certificates/countingsource.h"
#include "tests/fakes/provider/fakeprovider.h"

#include <QAbstractItemModelTester>
#include <QtTest>

using TrivexTest::CertificateFactory;
using TrivexTest::CountingSource;
using TrivexTest::FakeEntry;
using TrivexTest::FakeProvider;
using TrivexTest::names;

/// Which rows a category of the filter model shows.
class TestCertificateCategories : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void emptyPatternShowsCategory();
    void entryCategories();
    void rowsWithoutEntry();
    void categoryChangesWhileSearching();

private:
    QSharedPointer<KeyStoreEntry> entry(const FakeEntry &fake, const QString &storeName);

    QCA::Initializer m_qca;
    FakeProvider *m_fake = nullptr;
    CertificateFactory m_factory;
};

void TestCertificateCategories::initTestCase()
{
    Trivex::rankProviders();
    m_fake = FakeProvider::install(QStringLiteral("fake"), {QStringLiteral("keystorelist")});
    QVERIFY(m_fake);
}

QSharedPointer<KeyStoreEntry> TestCertificateCategories::entry(const FakeEntry &fake,
                                                               const QString &storeName)
{
    std::unique_ptr<QCA::Provider::Context> context(
        m_fake->createContext(QStringLiteral("keystorelist")));
    auto *list = static_cast<QCA::KeyStoreListContext *>(context.get());
    m_fake->stores->reset();
    m_fake->stores->addStore({QStringLiteral("id"), storeName, QCA::KeyStore::SmartCard, {fake}});
    QCA::KeyStoreEntry wrapped;
    wrapped.change(list->entryList(list->keyStores().first()).first());
    return QSharedPointer<KeyStoreEntry>(new KeyStoreEntry(wrapped));
}

void TestCertificateCategories::emptyPatternShowsCategory()
{
    CountingSource source;
    source.reset({{QStringLiteral("b"), {}, 0, {}},
                  {QStringLiteral("r"), {}, 5, {}},
                  {QStringLiteral("A"), {}, 0, {}}});
    CertificateModel model;
    QAbstractItemModelTester tester(&model);
    model.setSourceModel(&source);
    QCOMPARE(names(model), QStringList({QStringLiteral("A"), QStringLiteral("b")}));
    model.setFilterRole(5);
    QCOMPARE(names(model), QStringList({QStringLiteral("r")}));
    for (const int none : {1, 2, 3, 4, 6, 7, 8, -1}) {
        model.setFilterRole(none);
        QCOMPARE(model.rowCount(), 0);
    }
}

void TestCertificateCategories::entryCategories()
{
    QVERIFY(m_factory.isValid());
    const QCA::KeyBundle bundle = m_factory.bundle(QStringLiteral("/CN=key"));
    QVERIFY(!bundle.isNull());
    const auto certificate = [this](const QString &id, const QCA::Certificate &value,
                                    const QString &store) {
        return entry({QCA::KeyStoreEntry::TypeCertificate, id, id, value, {}}, store);
    };
    const QString token = QStringLiteral("Token");
    FakeEntry keyed{
        QCA::KeyStoreEntry::TypeKeyBundle, QStringLiteral("k"), QStringLiteral("k"), {}, bundle};
    const QCA::Certificate root = m_factory.selfSigned(QStringLiteral("/CN=root"));
    const QCA::Certificate other = m_factory.issuedByNamesake(QStringLiteral("/CN=other"));
    CountingSource source;
    source.reset({{QStringLiteral("key"), {}, 3, entry(keyed, token)},
                  {QStringLiteral("root"), {}, 3, certificate(QStringLiteral("r"), root, token)},
                  {QStringLiteral("other"), {}, 3, certificate(QStringLiteral("o"), other, token)},
                  {QStringLiteral("user"),
                   {},
                   1,
                   certificate(QStringLiteral("u"), other, QStringLiteral("USER"))}});
    CertificateModel model;
    QAbstractItemModelTester tester(&model);
    model.setSourceModel(&source);
    const auto shown = [&model](int category) {
        model.setFilterRole(category);
        return names(model);
    };
    QCOMPARE(shown(1), QStringList({QStringLiteral("user")}));
    QCOMPARE(shown(3), QStringList({QStringLiteral("key")}));
    QCOMPARE(shown(6), QStringList({QStringLiteral("other"), QStringLiteral("user")}));
    QCOMPARE(shown(7), QStringList({QStringLiteral("root")}));
    for (const int none : {0, 2, 4, 5, 8, -1})
        QCOMPARE(shown(none), QStringList());
    // Once known, a category costs no read of the entry.
    source.takeReads();
    shown(6);
    QCOMPARE(source.takeReads(CountingSource::EntryRole), 0);
}

void TestCertificateCategories::rowsWithoutEntry()
{
    CountingSource source;
    source.reset({{QStringLiteral("bare"), {}, 3, {}}});
    CertificateModel model;
    model.setSourceModel(&source);
    for (int category = 0; category < 9; ++category) {
        model.setFilterRole(category);
        QCOMPARE(model.rowCount(), 0);
    }
    source.append(
        {QStringLiteral("empty"), {}, 3, QSharedPointer<KeyStoreEntry>(new KeyStoreEntry)});
    model.setFilterRole(6);
    QCOMPARE(model.rowCount(), 1);
}

void TestCertificateCategories::categoryChangesWhileSearching()
{
    CountingSource source;
    source.reset({{QStringLiteral("cat"), {}, 0, {}},
                  {QStringLiteral("car"), {}, 5, {}},
                  {QStringLiteral("dog"), {}, 5, {}}});
    CertificateModel model;
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name")});
    model.setPattern(QStringLiteral("ca"));
    model.setFilterRole(5);
    QCOMPARE(names(model), QStringList({QStringLiteral("car")}));
    model.setPattern(QStringLiteral("c"));
    model.setFilterRole(0);
    QCOMPARE(names(model), QStringList({QStringLiteral("cat")}));
}

QTEST_GUILESS_MAIN(TestCertificateCategories)
#include "tst_certificatecategories.moc"
