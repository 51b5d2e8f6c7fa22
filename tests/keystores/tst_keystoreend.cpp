// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/keystoremodel.h"
#include "tests/fakes/provider/privatehome.h"
#include "tests/keystores/keystorefixture.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QtTest>

#include <chrono>
#include <future>
#include <thread>

using TrivexTest::KeyStoreFixture;

namespace {

const TrivexTest::PrivateHome privateHome;

/// What a window may stand still for, with room for a busy machine; ms.
constexpr int Moment = 1000;
/// How long the module stays in its call after the model and the program have let go of QCA.
constexpr std::chrono::seconds Hang{2};

const QString Mark = QStringLiteral("test-mark");

} // namespace

/// A model that goes, and QCA right after it, while a module hangs.
class tst_KeyStoreEnd : public KeyStoreFixture {
    Q_OBJECT
private Q_SLOTS:
    void qcaEndsWhileAModuleHangs();
};

void tst_KeyStoreEnd::qcaEndsWhileAModuleHangs()
{
    prepare();
    install();
    configure();
    addStore("t", "Token", {certificate("c")});
    for (const char *id : {"u", "v", "w"})
        addStore(id, id, {certificate(id)});
    auto model = std::make_unique<KeyStoreModel>();
    QTRY_COMPARE(model->rowCount(), 4);
    stores().block();
    model->removeCertificate(QStringLiteral("c"));
    QTRY_COMPARE(stores().calls().size(), 1);
    // Lists that wait behind it, each in a thread of its own.
    for (const char *id : {"u", "v", "w"})
        stores().setEntries(QString::fromLatin1(id), {certificate(id), certificate("more")});
    QTest::qWait(50);
    const QPointer<QCA::KeyStore> store(model->keyStoreByName(QStringLiteral("Token")));
    const auto hanging = std::async(std::launch::async, [script = &stores()] {
        std::this_thread::sleep_for(Hang);
        script->unblock();
    });
    QCA::setProperty(Mark, true);
    QElapsedTimer timer;
    timer.start();
    model.reset();
    endQca();
    QVERIFY2(timer.elapsed() < Moment, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(store); // let go
    QTRY_VERIFY(!store);
    // QCA has ended with the last of the stores: this is another one.
    const auto isNew = [] {
        const QCA::Initializer qca;
        return QCA::getProperty(Mark).isNull();
    };
    QTRY_VERIFY(isNew());
}

QTEST_GUILESS_MAIN(tst_KeyStoreEnd)
#include "tst_keystoreend.moc"
