// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/keystoremodel.h"
#include "requests/certificaterequest.h"
#include "requests/certificaterequestmodel.h"
#include "tests/requests/home.h"
#include "tests/signing/scriptedkey.h"
#include "tests/support/textlist.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

using namespace TrivexTest;

namespace {

const Home *home = nullptr;

QCA::PrivateKey otherKey()
{
    static const QCA::PrivateKey key =
        QCA::KeyGenerator().createRSA(2048, 65537, QStringLiteral("qca-ossl"));
    return key;
}

void makeRequestFile(const char *name, const char *commonName,
                     const QCA::PrivateKey &key = softwareKey())
{
    QCA::CertificateInfo info;
    info.insert(QCA::CommonName, QLatin1String(commonName));
    info.insert(QCA::Organization, QStringLiteral("Company"));
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(info);
    QCA::CertificateRequest(options, key, QStringLiteral("qca-ossl"))
        .toPEMFile(home->requests().filePath(QLatin1String(name)));
}

void makeFile(const char *name, const QByteArray &content)
{
    QFile file(home->requests().filePath(QLatin1String(name)));
    file.open(QIODevice::WriteOnly);
    file.write(content);
}

QStringList names(const CertificateRequestModel &model)
{
    QStringList result;
    for (int row = 0; row < model.rowCount(); ++row)
        result << model.data(model.index(row), CertificateRequestModel::NameRole).toString();
    return result;
}

} // namespace

class TestRequestModel : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void interface();
    void listsRequestsOnly();
    void roles();
    void unreadableFilesAreRows();
    void emptyBeforeInit();
    void followsTheDirectory();
    void removal();
    void removalOutOfRange();
    void deletedDirectory();
    void arrivedCertificate();
    void arrivedCertificateOfOtherKind();
    void arrivedNothing();
    void modelSetTwice();
    void earlierModelIsStillHeard();
    void listHasNoSignalOfItsOwn();
    void objectsBelongToTheModel();
};

void TestRequestModel::init()
{
    home->clearRequests();
}

void TestRequestModel::interface()
{
    const QMetaObject &meta = CertificateRequestModel::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << QString::fromLatin1(meta.method(i).methodSignature());
    QCOMPARE(methods,
             list({"certificateRequestChanged()", "keyStoreModelChanged()", "update(QString)",
                   "listenKeyStoreModel()", "findKeyBundleReq(QCA::PublicKey)", "init()",
                   "remove(int)"}));
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 1);
    QCOMPARE(meta.property(meta.propertyOffset()).name(), "keyStoreModel");
    const CertificateRequestModel model;
    const QHash<int, QByteArray> expected{
        {257, "name"}, {259, "certificate"}, {260, "issuer"}, {261, "type"}};
    QCOMPARE(model.roleNames(), expected);
}

void TestRequestModel::listsRequestsOnly()
{
    makeRequestFile("Ivanov.csr", "Ivanov");
    makeFile("notes.txt", "notes");
    makeFile(".hidden.csr", "hidden");
    makeFile(".trivex-1.part", "part");
    home->requests().mkdir(QStringLiteral("directory.csr"));
    CertificateRequestModel model;
    const QAbstractItemModelTester tester(&model);
    model.init();
    QCOMPARE(names(model), list({"Ivanov"}));
}

void TestRequestModel::roles()
{
    makeRequestFile("b.csr", "B");
    makeRequestFile("a.csr", "A");
    CertificateRequestModel model;
    const QAbstractItemModelTester tester(&model);
    model.init();
    QCOMPARE(names(model), list({"A", "B"}));
    for (int row = 0; row < 2; ++row) {
        const QModelIndex index = model.index(row);
        auto *request =
            index.data(CertificateRequestModel::CertificateRole).value<CertificateRequest *>();
        QVERIFY(request);
        QCOMPARE(request->commonName(), names(model).at(row));
        QCOMPARE(index.data(CertificateRequestModel::IssuerRole).toString(),
                 QStringLiteral("Company"));
        QCOMPARE(index.data(CertificateRequestModel::TypeRole), QVariant(5));
        for (const int role :
             {int(Qt::DisplayRole), CertificateRequestModel::NameRole - 1,
              CertificateRequestModel::NameRole + 1, CertificateRequestModel::TypeRole + 1})
            QVERIFY(!index.data(role).isValid());
    }
    QVERIFY(!model.data(QModelIndex(), CertificateRequestModel::NameRole).isValid());
    QVERIFY(!model.data(model.index(2), CertificateRequestModel::NameRole).isValid());
}

void TestRequestModel::unreadableFilesAreRows()
{
    makeFile("bad.csr", "nothing");
    CertificateRequestModel model;
    const QAbstractItemModelTester tester(&model);
    model.init();
    QCOMPARE(names(model), list({""}));
    QCOMPARE(model.index(0).data(CertificateRequestModel::TypeRole), QVariant(5));
    QVERIFY(model.index(0)
                .data(CertificateRequestModel::CertificateRole)
                .value<CertificateRequest *>());
    // No path is known of it, so it stays.
    model.remove(0);
    QCOMPARE(home->requestFiles(), list({"bad.csr"}));
}

void TestRequestModel::emptyBeforeInit()
{
    makeRequestFile("a.csr", "A");
    CertificateRequestModel model;
    QCOMPARE(model.rowCount(), 0);
    KeyStoreModel stores;
    QSignalSpy changed(&model, &CertificateRequestModel::keyStoreModelChanged);
    model.setKeyStoreModel(nullptr);
    QCOMPARE(changed.count(), 0);
    model.setKeyStoreModel(&stores);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(names(model), list({"A"}));
    QCOMPARE(model.index(0)
                 .data(CertificateRequestModel::CertificateRole)
                 .value<CertificateRequest *>()
                 ->keyStoreModel(),
             &stores);
}

void TestRequestModel::followsTheDirectory()
{
    CertificateRequestModel model;
    const QAbstractItemModelTester tester(&model);
    model.init();
    makeRequestFile("a.csr", "A");
    QTRY_COMPARE(names(model), list({"A"}));
    makeRequestFile("b.csr", "B");
    QTRY_COMPARE(names(model), list({"A", "B"}));
    QVERIFY(QFile::remove(home->requests().filePath(QStringLiteral("a.csr"))));
    QTRY_COMPARE(names(model), list({"B"}));
}

void TestRequestModel::removal()
{
    makeRequestFile("a.csr", "A");
    makeRequestFile("b.csr", "B");
    CertificateRequestModel model;
    const QAbstractItemModelTester tester(&model);
    model.init();
    model.remove(0);
    QCOMPARE(home->requestFiles(), list({"b.csr"}));
    QCOMPARE(names(model), list({"A", "B"}));
    QTRY_COMPARE(names(model), list({"B"}));
}

void TestRequestModel::removalOutOfRange()
{
    makeRequestFile("a.csr", "A");
    CertificateRequestModel model;
    model.init();
    model.remove(-1);
    model.remove(1);
    model.remove(1000);
    QCOMPARE(home->requestFiles(), list({"a.csr"}));
}

void TestRequestModel::deletedDirectory()
{
    makeRequestFile("a.csr", "A");
    CertificateRequestModel model;
    const QAbstractItemModelTester tester(&model);
    model.init();
    QVERIFY(home->requests().removeRecursively());
    QTest::qWait(300); // no row must go in this time
    QCOMPARE(model.rowCount(), 1);
    home->clearRequests();
    makeRequestFile("b.csr", "B");
    QTRY_COMPARE(names(model), list({"B"}));
    makeRequestFile("c.csr", "C");
    QTRY_COMPARE(names(model), list({"B", "C"}));
}

void TestRequestModel::arrivedCertificate()
{
    makeRequestFile("1.csr", "other", otherKey());
    makeRequestFile("2.csr", "first");
    makeRequestFile("3.csr", "second");
    KeyStoreModel stores;
    CertificateRequestModel model;
    model.setKeyStoreModel(&stores);
    Q_EMIT stores.keyBundleWritten(softwareKey().toPublicKey());
    QCOMPARE(home->requestFiles(), list({"1.csr", "3.csr"}));
    QTRY_COMPARE(names(model), list({"other", "second"}));
    // Another model is listened to, and no row is made anew for it.
    KeyStoreModel more;
    const QPersistentModelIndex row = model.index(1);
    model.setKeyStoreModel(&more);
    QVERIFY(row.isValid());
    QCOMPARE(model.rowCount(), 2);
    Q_EMIT more.keyBundleWritten(otherKey().toPublicKey());
    QTRY_COMPARE(names(model), list({"second"}));
}

void TestRequestModel::arrivedCertificateOfOtherKind()
{
    makeRequestFile("1.csr", "A");
    makeFile("bad.csr", "nothing");
    KeyStoreModel stores;
    CertificateRequestModel model;
    model.setKeyStoreModel(&stores);
    Q_EMIT stores.keyBundleWritten(foreignKey().toPublicKey());
    Q_EMIT stores.keyBundleWritten(otherKey().toPublicKey());
    QCOMPARE(home->requestFiles(), list({"1.csr", "bad.csr"}));
}

void TestRequestModel::arrivedNothing()
{
    makeRequestFile("1.csr", "A");
    KeyStoreModel stores;
    CertificateRequestModel model;
    model.setKeyStoreModel(&stores);
    Q_EMIT stores.keyBundleWritten(QCA::PublicKey());
    QCOMPARE(home->requestFiles(), list({"1.csr"}));
}

void TestRequestModel::modelSetTwice()
{
    makeRequestFile("2.csr", "first");
    makeRequestFile("3.csr", "second");
    KeyStoreModel stores;
    CertificateRequestModel model;
    model.setKeyStoreModel(&stores);
    model.setKeyStoreModel(&stores);
    Q_EMIT stores.keyBundleWritten(softwareKey().toPublicKey());
    QCOMPARE(home->requestFiles(), list({"3.csr"}));
}

void TestRequestModel::earlierModelIsStillHeard()
{
    makeRequestFile("2.csr", "first");
    KeyStoreModel earlier;
    KeyStoreModel later;
    CertificateRequestModel model;
    model.setKeyStoreModel(&earlier);
    model.setKeyStoreModel(&later);
    QCOMPARE(model.keyStoreModel(), &later);
    Q_EMIT earlier.keyBundleWritten(softwareKey().toPublicKey());
    QCOMPARE(home->requestFiles(), QStringList());
}

void TestRequestModel::listHasNoSignalOfItsOwn()
{
    CertificateRequestModel model;
    QSignalSpy changed(&model, &CertificateRequestModel::certificateRequestChanged);
    model.init();
    makeRequestFile("a.csr", "A");
    QTRY_COMPARE(model.rowCount(), 1);
    model.remove(0);
    QTRY_COMPARE(model.rowCount(), 0);
    QCOMPARE(changed.count(), 0);
}

void TestRequestModel::objectsBelongToTheModel()
{
    makeRequestFile("1.csr", "A");
    auto model = std::make_unique<CertificateRequestModel>();
    model->init();
    QPointer<CertificateRequest> request = model->index(0)
                                               .data(CertificateRequestModel::CertificateRole)
                                               .value<CertificateRequest *>();
    model->init();
    QVERIFY(!request);
    request = model->index(0)
                  .data(CertificateRequestModel::CertificateRole)
                  .value<CertificateRequest *>();
    QVERIFY(request);
    model.reset();
    QVERIFY(!request);
}

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale::c());
    const Home place;
    home = &place;
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    qRegisterMetaType<CertificateRequest *>();
    TestRequestModel test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestmodel.moc"
