// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificate.h"
#include "certificates/keystoreentry.h"
#include "certificates/securemessage.h"
#include "keystores/keystoremodel.h"
#include "tests/certificates/metainterface.h"
#include "tests/fakes/provider/privatehome.h"

#include <QFile>
#include <QPluginLoader>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExtensionInterface>
#include <QStandardItemModel>
#include <QTranslator>
#include <QtTest>

#include <memory>

namespace {

const TrivexTest::PrivateHome privateHome;

const char *const uncreatable[] = {"Certificate", "SecureMessage", "SecureMessageKey",
                                   "SecureMessageSignature"};

QByteArray document(const QByteArray &version, const QByteArray &body)
{
    return "import QtQml 2.15\nimport Trivex.Crypto " + version + "\n" + body;
}

} // namespace

class TestPlugin : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void creatable_data();
    void creatable();
    void uncreatableTypes();
    void versions();
    void singleton();
    void enumerations();
    void metaTypes();
    void onePluginPerProcess();
    void interface_data();
    void interface();
    void slotsAreNotForScripts();
    void everyEngineIsTranslated();
    void ownership();
    void viewsFollowLargeChanges();
    void enginesShareAModel();
    void pageGoesInAnInnerLoop();
    void callsAtTheEnd_data();
    void callsAtTheEnd();

private:
    std::unique_ptr<QObject> make(const QByteArray &source, QString *error = nullptr);

    std::unique_ptr<QQmlEngine> m_engine;
};

void TestPlugin::init()
{
    m_engine = std::make_unique<QQmlEngine>();
    m_engine->addImportPath(QStringLiteral(TRIVEX_TEST_QML_DIR));
}

std::unique_ptr<QObject> TestPlugin::make(const QByteArray &source, QString *error)
{
    QQmlComponent component(m_engine.get());
    component.setData(source, QUrl());
    std::unique_ptr<QObject> object(component.create());
    if (error)
        *error = component.errorString();
    else if (!object)
        qWarning() << component.errorString();
    return object;
}

void TestPlugin::creatable_data()
{
    QTest::addColumn<QString>("type");
    for (const char *type :
         {"SignVerify", "LoaderFile", "KeyStoreEntry", "CertificateModel", "CertificateInfoModel",
          "CertificateRequest", "CertificateRequestModel"})
        QTest::newRow(type) << QString::fromLatin1(type);
}

void TestPlugin::creatable()
{
    QFETCH(QString, type);
    const auto object = make(document("1.0", type.toLatin1() + " {}"));
    QVERIFY(object);
    QCOMPARE(QString::fromLatin1(object->metaObject()->className()), type);
}

void TestPlugin::uncreatableTypes()
{
    for (const char *type : uncreatable) {
        QString error;
        QVERIFY(!make(document("1.0", QByteArray(type) + " {}"), &error));
        QVERIFY2(error.contains(QStringLiteral("Not create ") + QLatin1String(type)),
                 qPrintable(error));
    }
}

void TestPlugin::versions()
{
    QVERIFY(make(document("1.0", "QtObject {}")));
    for (const char *version : {"0.0", "2.0", "3.0"}) {
        QString error;
        // Of the module nothing at all, or the import itself would succeed.
        QVERIFY2(!make(document(version, "QtObject {}"), &error), version);
        QVERIFY2(error.contains(QStringLiteral("Trivex.Crypto")), qPrintable(error));
    }
}

void TestPlugin::singleton()
{
    const QByteArray source = document("1.0",
                                       "QtObject { property QtObject a: KeyStoreModel\n"
                                       "property QtObject b: KeyStoreModel }");
    const auto object = make(source);
    QVERIFY(object);
    QPointer<QObject> first = object->property("a").value<QObject *>();
    QVERIFY(first);
    QCOMPARE(object->property("b").value<QObject *>(), first.data());
    QCOMPARE(first->parent(), m_engine.get());

    QQmlEngine other;
    other.addImportPath(QStringLiteral(TRIVEX_TEST_QML_DIR));
    QQmlComponent component(&other);
    component.setData(source, QUrl());
    const std::unique_ptr<QObject> second(component.create());
    QVERIFY(second);
    QVERIFY(second->property("a").value<QObject *>() != first);
    m_engine.reset();
    QVERIFY(!first);
    QVERIFY(second->property("a").value<QObject *>());
}

void TestPlugin::enumerations()
{
    const auto object = make(document("1.0",
                                      "QtObject { property int a: KeyStoreModel.RootImported\n"
                                      "property int b: SecureMessage.ErrorFileNotLoaded\n"
                                      "property int c: Certificate.IdentificationKind\n"
                                      "property int d: SecureMessageSignature.NoKey\n"
                                      "property int e: SecureMessageKey.X509 }"));
    QVERIFY(object);
    QCOMPARE(object->property("a").toInt(), 7);
    QCOMPARE(object->property("b").toInt(), 257);
    QCOMPARE(object->property("c").toInt(), 20);
    QCOMPARE(object->property("d").toInt(), 3);
    QCOMPARE(object->property("e").toInt(), 2);
}

void TestPlugin::metaTypes()
{
    QVERIFY(make(document("1.0", "QtObject {}")));
    for (const char *name :
         {"LoaderFile*", "KeyStoreEntry*", "Certificate*", "SecureMessageKey*",
          "SecureMessageSignature*", "CertificateRequest*", "QFile*", "KeyStoreModel*"}) {
        const int type = QMetaType::type(name);
        QVERIFY2(type != QMetaType::UnknownType, name);
        QVERIFY2(QMetaType::typeFlags(type) & QMetaType::PointerToQObject, name);
    }
    for (const char *name : {"QCA_KeyStoreEntry*", "KeyStoreItem*"}) {
        const int type = QMetaType::type(name);
        QVERIFY2(type != QMetaType::UnknownType, name);
        QVERIFY2(!(QMetaType::typeFlags(type) & QMetaType::PointerToQObject), name);
    }
    QCOMPARE(QMetaType::type("QByteArray"), int(QMetaType::QByteArray));
    const int list = QMetaType::type("CertificateList*");
    QVERIFY(list != QMetaType::UnknownType);
    QCOMPARE(QMetaType::sizeOf(list), int(sizeof(void *)));
    QVERIFY(QVariant(list, nullptr).canConvert<QVariantList>());
}

void TestPlugin::onePluginPerProcess()
{
    QPluginLoader loader(
        QStringLiteral(TRIVEX_TEST_QML_DIR "/Trivex/Crypto/libtrivexcryptoplugin.so"));
    QObject *plugin = loader.instance();
    QVERIFY2(plugin, qPrintable(loader.errorString()));
    QCOMPARE(plugin->metaObject()->className(), "TrivexQmlPlugin");
    QCOMPARE(loader.metaData().value(QStringLiteral("className")).toString(),
             QStringLiteral("TrivexQmlPlugin"));
    QCOMPARE(loader.metaData().value(QStringLiteral("IID")).toString(),
             QStringLiteral(QQmlExtensionInterface_iid));
    QPluginLoader again(loader.fileName());
    QCOMPARE(again.instance(), plugin);
}

void TestPlugin::interface_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("wanted");
    // The table lies beside the test: a block per type, a line per member, in order.
    QFile file(QStringLiteral(TRIVEX_TEST_INTERFACES));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QString type;
    QStringList lines;
    const auto flush = [&] {
        if (!type.isEmpty())
            QTest::newRow(qPrintable(type)) << type << lines;
        lines.clear();
    };
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            flush();
            type = line.mid(1, line.size() - 2);
        } else if (!line.isEmpty() && !line.startsWith(QLatin1Char('#'))) {
            lines << line;
        }
    }
    flush();
}

void TestPlugin::interface()
{
    QFETCH(QString, type);
    QFETCH(QStringList, wanted);
    QVERIFY(make(document("1.0", "QtObject {}")));
    // Every class is known by its pointer, or made by QML.
    const int pointer = QMetaType::type((type + QLatin1Char('*')).toLatin1());
    const QMetaObject *meta = QMetaType::metaObjectForType(pointer);
    std::unique_ptr<QObject> object;
    if (type == QLatin1String("SecureMessage"))
        meta = &SecureMessage::staticMetaObject; // no object of it ever exists
    if (!meta) {
        object = make(document("1.0", type.toLatin1() + " {}"));
        QVERIFY(object);
        meta = object->metaObject();
    }
    const QStringList found = TrivexTest::metaInterface(*meta);
    for (int i = 0; i < qMin(found.size(), wanted.size()); ++i)
        QCOMPARE(found.at(i), wanted.at(i));
    QCOMPARE(found.size(), wanted.size());
}

void TestPlugin::slotsAreNotForScripts()
{
    const QMetaObject &meta = KeyStoreModel::staticMetaObject;
    int found = 0;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() != QMetaMethod::Slot)
            continue;
        ++found;
        QVERIFY2(method.access() == QMetaMethod::Private, method.methodSignature().constData());
    }
    QCOMPARE(found, 7);
}

void TestPlugin::everyEngineIsTranslated()
{
    const auto translators = [](const QObject &engine) {
        int found = 0;
        for (const QTranslator *translator : engine.findChildren<QTranslator *>())
            found += qstrcmp(translator->metaObject()->className(), "AppTranslator") == 0;
        return found;
    };
    QCOMPARE(translators(*m_engine), 0);
    QVERIFY(make(document("1.0", "QtObject {}")));
    QVERIFY(make(document("1.0", "QtObject { property int again: 1 }")));
    QCOMPARE(translators(*m_engine), 2);
    QQmlEngine other;
    other.addImportPath(QStringLiteral(TRIVEX_TEST_QML_DIR));
    QQmlComponent component(&other);
    component.setData(document("1.0", "QtObject {}"), QUrl());
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    QCOMPARE(translators(other), 2);
    QCOMPARE(translators(*m_engine), 2);
}

void TestPlugin::ownership()
{
    // What a call returns to the script must survive its garbage collection.
    const auto object = make(document("1.0",
                                      "QtObject { property var m: KeyStoreModel\n"
                                      "property var roles: []\n"
                                      "property KeyStoreEntry e: KeyStoreEntry {}\n"
                                      "function touch() { for (var i = 0; i < m.rowCount(); ++i)\n"
                                      "{ roles.forEach(role => m.data(m.index(i, 0), role)) }\n"
                                      "gc(); return e.certificate === null && e.name === '' } }"));
    QVERIFY(object);
    const auto names = object->property("m").value<QAbstractItemModel *>()->roleNames();
    object->setProperty("roles",
                        QVariantList{names.key("keyStoreEntry"), names.key("certificate")});
    QTest::qWait(200); // the rows that come, if any: nobody knows how many
    QVariant result;
    QVERIFY(QMetaObject::invokeMethod(object.get(), "touch", Q_RETURN_ARG(QVariant, result)));
    QVERIFY(result.toBool());
    QVERIFY(QMetaObject::invokeMethod(object.get(), "touch", Q_RETURN_ARG(QVariant, result)));
    QVERIFY(result.toBool());
}

namespace {

enum { NameRole = Qt::UserRole + 1, TypeRole = NameRole + 4 };

void addRow(QStandardItemModel &model, const QString &name)
{
    auto *item = new QStandardItem;
    item->setData(name, NameRole);
    item->setData(0, TypeRole);
    model.appendRow(item);
}

QByteArray page()
{
    return document("1.0",
                    "Instantiator { property alias filter: filter\n"
                    "model: CertificateModel { id: filter; sourceModel: source\n"
                    "searchRoles: ['name']; pattern: 'row' }\n"
                    "delegate: QtObject { property string shown: name } }");
}

} // namespace

void TestPlugin::viewsFollowLargeChanges()
{
    QStandardItemModel source;
    source.setItemRoleNames({{NameRole, "name"}, {TypeRole, "type"}});
    for (int i = 0; i < 1000; ++i)
        addRow(source, QStringLiteral("row %1").arg(i));
    m_engine->rootContext()->setContextProperty(QStringLiteral("source"), &source);
    const auto object = make(document("1.0",
                                      "Instantiator { id: view\n"
                                      "property alias pattern: filter.pattern\n"
                                      "function text(i) { return objectAt(i).shown }\n"
                                      "model: CertificateModel { id: filter; sourceModel: source\n"
                                      "searchRoles: ['name'] }\n"
                                      "delegate: QtObject { property string shown: name } }"));
    QVERIFY(object);
    const auto shown = [&object](int row) {
        QVariant text;
        QMetaObject::invokeMethod(object.get(), "text", Q_RETURN_ARG(QVariant, text),
                                  Q_ARG(QVariant, row));
        return text.toString();
    };
    QTRY_COMPARE(object->property("count").toInt(), 1000);
    object->setProperty("pattern", QStringLiteral("9"));
    QTRY_COMPARE(object->property("count").toInt(), 271);
    QVERIFY(shown(0).contains(QLatin1Char('9')) && shown(270).contains(QLatin1Char('9')));
    object->setProperty("pattern", QStringLiteral("999"));
    QTRY_COMPARE(object->property("count").toInt(), 1);
    QCOMPARE(shown(0), QStringLiteral("row 999"));
    object->setProperty("pattern", QString());
    QTRY_COMPARE(object->property("count").toInt(), 1000);
}

/// One engine ends, the other one's view goes on with the same rows.
void TestPlugin::enginesShareAModel()
{
    QStandardItemModel source;
    source.setItemRoleNames({{NameRole, "name"}, {TypeRole, "type"}});
    addRow(source, QStringLiteral("row 1"));
    auto first = std::move(m_engine);
    first->rootContext()->setContextProperty(QStringLiteral("source"), &source);
    QQmlComponent component(first.get());
    component.setData(page(), QUrl());
    std::unique_ptr<QObject> one(component.create());
    QVERIFY(one);
    init();
    m_engine->rootContext()->setContextProperty(QStringLiteral("source"), &source);
    const auto other = make(page());
    QVERIFY(other);
    addRow(source, QStringLiteral("row 2"));
    QTRY_COMPARE(one->property("count").toInt(), 2);
    QTRY_COMPARE(other->property("count").toInt(), 2);
    one.reset();
    first.reset();
    addRow(source, QStringLiteral("row 3"));
    source.removeRow(0);
    addRow(source, QStringLiteral("other"));
    QTRY_COMPARE(other->property("count").toInt(), 2);
}

/// Somebody who hears of a row waits in a loop, and another page of the same model goes there.
void TestPlugin::pageGoesInAnInnerLoop()
{
    QStandardItemModel source;
    source.setItemRoleNames({{NameRole, "name"}, {TypeRole, "type"}});
    m_engine->rootContext()->setContextProperty(QStringLiteral("source"), &source);
    // Before and after the one that goes: each hears of the row at another moment.
    const auto before = make(page());
    QPointer<QObject> page2 = make(page()).release();
    const auto after = make(page());
    QVERIFY(before && page2 && after);
    auto *filter = before->property("filter").value<QAbstractItemModel *>();
    QVERIFY(filter);
    connect(filter, &QAbstractItemModel::rowsInserted, page2, [&] {
        QEventLoop loop;
        connect(page2, &QObject::destroyed, &loop, &QEventLoop::quit);
        page2->deleteLater();
        loop.exec();
    });
    addRow(source, QStringLiteral("row 1"));
    QVERIFY(!page2);
    addRow(source, QStringLiteral("row 2"));
    QTRY_COMPARE(before->property("count").toInt(), 2);
    QTRY_COMPARE(after->property("count").toInt(), 2);
}

void TestPlugin::callsAtTheEnd_data()
{
    QTest::addColumn<bool>("endsEngine");
    QTest::newRow("of the page") << false;
    QTest::newRow("of the engine") << true;
}

/// `Component.onDestruction` runs while the page's objects go.
void TestPlugin::callsAtTheEnd()
{
    QFETCH(bool, endsEngine);
    QStandardItemModel source;
    source.setItemRoleNames({{NameRole, "name"}, {TypeRole, "type"}});
    addRow(source, QStringLiteral("row 1"));
    addRow(source, QStringLiteral("other"));
    QStandardItemModel told;
    m_engine->rootContext()->setContextProperty(QStringLiteral("source"), &source);
    m_engine->rootContext()->setContextProperty(QStringLiteral("told"), &told);
    auto object = make(document("1.0",
                                "QtObject { property CertificateModel filter: CertificateModel {\n"
                                "sourceModel: source; searchRoles: ['name']; pattern: 'row' }\n"
                                "property SignVerify signer: SignVerify {}\n"
                                "property CertificateRequest request: CertificateRequest {}\n"
                                "property LoaderFile file: LoaderFile {}\n"
                                "Component.onDestruction: {\n"
                                "signer.sign('data', '/nowhere/file.sig', null)\n"
                                "signer.pinAccepted('1234'); signer.pinRejected()\n"
                                "filter.pattern = 'other'; filter.sourceModel = null\n"
                                "told.objectName = 'done' } }"));
    QVERIFY(object);
    auto *filter = object->property("filter").value<QAbstractItemModel *>();
    QVERIFY(filter);
    QCOMPARE(filter->rowCount(), 1);
    if (endsEngine)
        object.release()->setParent(m_engine.get());
    else
        object.reset();
    if (endsEngine)
        m_engine.reset();
    QCOMPARE(told.objectName(), QStringLiteral("done"));
    addRow(source, QStringLiteral("row 2")); // nobody is left to hear of it
    QCoreApplication::processEvents();
}

QTEST_GUILESS_MAIN(TestPlugin)
#include "tst_plugin.moc"
