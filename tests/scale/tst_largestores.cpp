// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/plaintoken.h"
#include "tests/support/loopmeter.h"
#include "tests/support/needtokens.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QAbstractItemModel>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QtTest>

#include <malloc.h>

using namespace TrivexTest;

namespace {

constexpr int Each = 5000;
/// What the engine and the window take, 430 bytes for each, counts among them.
constexpr int BytesEach = 3840;
constexpr int BytesEachRead = 6912;
const QString StoreName = QStringLiteral("Large");

/// Everything an application has on the module: the stores' model, a filter for each category, and
/// a list on the screen.
const char Window[] = R"(
import QtQuick 2.15
import QtQuick.Window 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Tools 1.0

Window {
    id: window
    width: 480
    height: 640
    visible: true
    property bool touched: false
    property int rows: KeyStoreModel ? source.count : 0
    property alias list: view
    function readAll() {
        let read = 0
        for (let row = 0; row < view.count; ++row) {
            const certificate = Rows.value(others, row, "certificate")
            const entry = Rows.value(others, row, "keyStoreEntry")
            read += certificate.commonName.length > 0 && entry !== null ? 1 : 0
        }
        return read
    }
    ModelCount { id: source; model: entries }
    EntryModel { id: entries; sourceModel: KeyStoreModel }
    CertificateModel {
        sourceModel: entries; filterRole: KeyStoreModel.SmartCard; searchRoles: ["haystack"]
    }
    CertificateModel {
        sourceModel: entries; filterRole: KeyStoreModel.User; searchRoles: ["haystack"]
    }
    CertificateModel {
        sourceModel: entries; filterRole: KeyStoreModel.RootImported; searchRoles: ["haystack"]
    }
    CertificateModel {
        id: others
        sourceModel: entries; filterRole: KeyStoreModel.Imported; searchRoles: ["haystack"]
    }
    CertificateModel {
        sourceModel: entries; filterRole: KeyStoreModel.System; searchRoles: ["haystack"]
    }
    ListView {
        id: view
        anchors.fill: parent
        model: others
        delegate: Text { width: view.width; height: 32; text: name + " " + issuer }
    }
}
)";

/// What the process has allocated, whoever did.
qint64 usedMemory()
{
    malloc_trim(0);
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks + info.hblkhd);
}

/// `count` certificates of a usual size that differ in their names, from number `first` on. Their
/// signatures are not good for the changed names, which nothing here asks about.
QList<QByteArray> certificates(const QByteArray &model, int first, int count)
{
    const QByteArray place = QByteArrayLiteral("Holder 00000");
    QList<QByteArray> made;
    for (int i = first; i < first + count; ++i) {
        QByteArray one = model;
        const QByteArray name = "Holder " + QByteArray::number(i).rightJustified(5, '0');
        // The first is the issuer's.
        one.replace(one.lastIndexOf(place), name.size(), name);
        made.append(one);
    }
    return made;
}

} // namespace

/// Ten thousand certificates, half on a token and half in the user's directory, through all layers.
class TestLargeStores : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void loadsWithoutStall();
    void keepsLittle();
    void keepsLittleWhenAllIsRead();

private:
    bool fillDirectory(const QList<QByteArray> &certificates) const;

    std::unique_ptr<TestToken> m_token;
    QTemporaryDir m_home;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    qint64 m_module = 0;
    qint64 m_before = 0;
    int m_size = 0;
};

bool TestLargeStores::fillDirectory(const QList<QByteArray> &certificates) const
{
    const QString path = m_home.filePath(QStringLiteral("data/trivex/certificates"));
    if (!QDir().mkpath(path))
        return false;
    int number = 0;
    for (const QByteArray &der : certificates) {
        const QByteArray pem =
            "-----BEGIN CERTIFICATE-----\n" + der.toBase64() + "\n-----END CERTIFICATE-----\n";
        QFile file(QStringLiteral("%1/%2.pem").arg(path).arg(++number));
        if (!file.open(QIODevice::WriteOnly) || file.write(pem) != pem.size())
            return false;
    }
    return true;
}

void TestLargeStores::initTestCase()
{
    // One arena for all threads: only that one is counted.
    mallopt(M_ARENA_MAX, 1);
    for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        qputenv(name, QFile::encodeName(m_home.filePath(QStringLiteral("data"))));
    TRIVEX_NEED_TOKENS();
    m_token = std::make_unique<TestToken>(StoreName);
    QVERIFY2(m_token->isValid(), qPrintable(m_token->problem()));
    m_token->useInThisProcess();

    const TestAuthority authority(QStringLiteral("An authority with a name of the usual length"));
    QVERIFY(authority.isValid());
    const QString request = authority.file(QStringLiteral("holder.csr"));
    QVERIFY(
        !authority
             .openssl({QStringLiteral("req"), QStringLiteral("-newkey"), QStringLiteral("rsa:4096"),
                       QStringLiteral("-nodes"), QStringLiteral("-keyout"),
                       authority.file(QStringLiteral("holder.key")), QStringLiteral("-subj"),
                       QStringLiteral("/C=XX/ST=A province/L=A town/O=A company of a usual name"
                                      "/OU=A department/CN=Holder 00000"),
                       QStringLiteral("-addext"),
                       QStringLiteral("subjectAltName=email:holder@example.org,DNS:example.org"),
                       QStringLiteral("-out"), request})
             .isNull());
    const QByteArray model = authority.issueForRequest(request);
    m_size = model.size();
    QVERIFY(model.contains("Holder 00000"));
    {
        PlainToken plain(TestToken::softHsmLibrary());
        QVERIFY(plain.isOpen());
        QVERIFY(plain.writeCertificates(certificates(model, 0, Each), TestToken::pin()));
    }
    QVERIFY(fillDirectory(certificates(model, Each, Each)));
    // What the token's own module keeps of its objects is not ours. The first round also pays for
    // what is kept once.
    for (int round = 0; round < 2; ++round) {
        const qint64 before = usedMemory();
        PlainToken plain(TestToken::softHsmLibrary());
        QCOMPARE(plain.readCertificates(), Each);
        m_module = usedMemory() - before;
    }
}

void TestLargeStores::loadsWithoutStall()
{
    m_before = usedMemory();
    LoopMeter meter;
    m_engine = std::make_unique<QQmlApplicationEngine>();
    m_engine->loadData(Window);
    QCOMPARE(m_engine->rootObjects().size(), 1);
    QObject *window = m_engine->rootObjects().constFirst();
    QVERIFY(QTest::qWaitForWindowExposed(qobject_cast<QQuickWindow *>(window)));
    QElapsedTimer timer;
    timer.start();
    meter.start();
    QTRY_VERIFY(window->property("rows").toInt() >= 2 * Each);
    meter.stop();
    qInfo("%d rows in %lld ms, longest stall %lld ms (%lld by the clock)",
          window->property("rows").toInt(), timer.elapsed(), meter.longest(),
          meter.longestByTheClock());
    QVERIFY2(meter.longest() <= LoopMeter::Unnoticed, qPrintable(QString::number(meter.longest())));
}

void TestLargeStores::keepsLittle()
{
    QTest::qWait(1500); // what is read ahead while the loop is idle belongs to it
    const qint64 each = (usedMemory() - m_before - m_module) / (2 * Each);
    qInfo("%lld bytes a certificate of %d bytes; %lld more in the module", each, m_size,
          m_module / Each);
    QVERIFY2(each <= BytesEach, qPrintable(QString::number(each)));
}

void TestLargeStores::keepsLittleWhenAllIsRead()
{
    QObject *window = m_engine->rootObjects().constFirst();
    QVariant read;
    QVERIFY(QMetaObject::invokeMethod(window, "readAll", Q_RETURN_ARG(QVariant, read)));
    QVERIFY(read.toInt() >= Each);
    m_engine->collectGarbage();
    QTest::qWait(500); // what script has let go is deleted by the loop, by and by
    const qint64 each = (usedMemory() - m_before - m_module) / (2 * Each);
    qInfo("%lld bytes a certificate when script has read every row (%d)", each, read.toInt());
    QVERIFY2(each <= BytesEachRead, qPrintable(QString::number(each)));
}

QTEST_MAIN(TestLargeStores)
#include "tst_largestores.moc"
