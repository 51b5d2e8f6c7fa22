// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/keystoreentry.h"
#include "keystores/keystoremodel.h"
#include "tests/certificates/certificatefactory.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/support/allocations.h"
#include "tests/support/systemlist.h"

#include <QtTest>

using namespace TrivexTest;

namespace {

const PrivateHome privateHome;
const QString SystemStore = QStringLiteral("qca-default-systemstore");
const QByteArray Placeholder = QByteArrayLiteral("Holder 00000");

/// Reading the bytes, their names and their id, the entry and its row. The native object of a
/// certificate alone takes more.
constexpr qint64 MostAllocations = 150;

QCA::KeyStoreEntry entryOf(const KeyStoreModel &model, int row)
{
    const QVariant value = model.data(model.index(row, 0), KeyStoreModel::KeyStoreEntryRole);
    const auto *entry = value.value<KeyStoreEntry *>();
    return entry ? entry->entry() : QCA::KeyStoreEntry();
}

/// As QCA itself lists them for whoever asks it.
QList<QCA::KeyStoreEntry> listedByQca()
{
    QCA::KeyStoreManager manager;
    const QCA::KeyStore store(SystemStore, &manager);
    return store.entryList();
}

} // namespace

/// The system's list in the model: what QCA lists, read in another way.
class TestSystemList : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void isWhatQcaLists();
    void costsLittle();
    void modelGoesWhileItIsRead();

private:
    /// Makes a list of `count` certificates the system's.
    bool setList(int count, const QByteArray &more = {});
    /// The allocations until a model has all rows.
    qint64 loading(int count);

    QCA::Initializer m_qca;
    CertificateFactory m_factory;
    QByteArray m_der;
};

void TestSystemList::initTestCase()
{
    QVERIFY2(m_factory.isValid(), "the openssl program is needed");
    const QString subject = QStringLiteral("/O=A company of a usual name/CN=Holder 00000");
    m_der = m_factory.selfSigned(subject).toDER();
    QVERIFY(m_der.contains(Placeholder));
}

bool TestSystemList::setList(int count, const QByteArray &more)
{
    const QString path = m_factory.file(QStringLiteral("list-%1.pem").arg(count));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    for (int i = 0; i < count; ++i) {
        QByteArray der = m_der;
        der.replace(Placeholder, "Holder " + QByteArray::number(i).rightJustified(5, '0'));
        file.write("# a comment\n-----BEGIN CERTIFICATE-----\n" + der.toBase64()
                   + "\n-----END CERTIFICATE-----\n");
    }
    file.write(more);
    file.close();
    setSystemList(path);
    // A store takes a new configuration over in a thread of QCA's, at some time.
    QCA::KeyStoreManager::start();
    return QTest::qWaitFor([count] { return listedByQca().size() >= count; }, 20000);
}

/// Ids, names and order, and what an entry is kept as by those who keep it.
void TestSystemList::isWhatQcaLists()
{
    const QByteArray twice =
        "-----BEGIN CERTIFICATE-----\n" + m_der.toBase64() + "\n-----END CERTIFICATE-----\n";
    const QByteArray damaged = "-----BEGIN CERTIFICATE-----\nMAMCAQA=\n-----END CERTIFICATE-----\n";
    QVERIFY(setList(5, damaged + twice));
    const QList<QCA::KeyStoreEntry> listed = listedByQca();
    QCOMPARE(listed.size(), 6);
    const KeyStoreModel model;
    // The one that is there twice has one row.
    QTRY_COMPARE(model.rowCount(), 5);
    for (int row = 0; row < model.rowCount(); ++row) {
        const QCA::KeyStoreEntry entry = entryOf(model, row);
        QCOMPARE(entry.id(), listed.at(row).id());
        QCOMPARE(entry.name(), listed.at(row).name());
        QCOMPARE(entry.storeId(), SystemStore);
        QCOMPARE(entry.storeName(), listed.at(row).storeName());
        QCOMPARE(entry.toString(), listed.at(row).toString());
        QCOMPARE(entry.certificate().toDER(), listed.at(row).certificate().toDER());
        QCOMPARE(entry.certificate().isSelfSigned(), listed.at(row).certificate().isSelfSigned());
        QVERIFY(!QCA::KeyStoreEntry::fromString(entry.toString()).isNull());
    }
}

qint64 TestSystemList::loading(int count)
{
    if (!setList(count))
        return -1;
    const qint64 before = allocations();
    const KeyStoreModel model;
    const bool isThere = QTest::qWaitFor([&] { return model.rowCount() == count; }, 20000);
    return isThere ? allocations() - before : -1;
}

/// By the difference of two lists, so that what a model costs otherwise does not count.
void TestSystemList::costsLittle()
{
    if (allocations() < 0)
        QSKIP("the sanitizers count no allocations");
    QVERIFY(loading(10) > 0); // what is made once
    const qint64 few = loading(100);
    const qint64 many = loading(400);
    QVERIFY(few > 0 && many > 0);
    const qint64 each = (many - few) / 300;
    qInfo("%lld allocations a certificate", each);
    QVERIFY2(each <= MostAllocations, qPrintable(QString::number(each)));
}

void TestSystemList::modelGoesWhileItIsRead()
{
    QVERIFY(setList(400));
    for (int i = 0; i < 20; ++i) {
        const KeyStoreModel model;
        // Each model goes at another moment of the reading.
        QTest::qWait(i % 4);
    }
    const KeyStoreModel model;
    QTRY_COMPARE(model.rowCount(), 400);
}

QTEST_GUILESS_MAIN(TestSystemList)
#include "tst_systemlist.moc"
