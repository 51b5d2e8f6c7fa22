// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/storewriter.h"
#include "qca/questions/mailbox.h"
#include "qca/tokens/tokenregistry.h"
#include "tests/support/quietbackend.h"

#include <QtTest>

#include <memory>
#include <thread>

using Trivex::Mailbox;
using Trivex::StoreWriter;

namespace {

/// Takes every change, and has done it when `startChange` returns.
class QuickBackend : public TrivexTest::QuietBackend {
public:
    bool startChange(const QString &, const Trivex::StoreChange &,
                     Trivex::StoreChangeDone done) override
    {
        std::thread([&done] { done({true, QStringLiteral("entry")}); }).join();
        return true;
    }
};

} // namespace

/// What threads leave for the event loop of another, and what becomes of it when that goes first.
class TestMailbox : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void runsInOrder();
    void clearedByItsEnd();
    void goesWhileItRuns();
    void writerGoesBeforeItsResult();

private:
    QCA::Initializer m_qca;
};

void TestMailbox::runsInOrder()
{
    Mailbox mailbox;
    QVector<int> ran;
    std::thread([&] {
        for (int i = 0; i < 3; ++i)
            mailbox.post([&ran, i] { ran.append(i); });
    }).join();
    QVERIFY(ran.isEmpty());
    QTRY_COMPARE(ran, QVector<int>({0, 1, 2}));
}

// What is posted uses whoever owns the mailbox, and that has gone by then.
void TestMailbox::clearedByItsEnd()
{
    int ran = 0;
    const auto held = std::make_shared<int>();
    std::unique_ptr<Mailbox, Mailbox::DeleteLater> mailbox(new Mailbox);
    const QPointer<Mailbox> watched(mailbox.get());
    mailbox->post([&ran, held] { ++ran; });
    mailbox.reset();
    QCOMPARE(held.use_count(), 1L);
    QTRY_VERIFY(!watched);
    QCOMPARE(ran, 0);
}

void TestMailbox::goesWhileItRuns()
{
    QVector<int> ran;
    std::unique_ptr<Mailbox, Mailbox::DeleteLater> mailbox(new Mailbox);
    const QPointer<Mailbox> watched(mailbox.get());
    mailbox->post([&] {
        mailbox.reset();
        ran.append(1);
    });
    mailbox->post([&ran] { ran.append(2); });
    QTRY_VERIFY(!watched);
    QCOMPARE(ran, QVector<int>({1}));
}

// A model is closed when its write has ended, and before it has heard of that. A sanitizer sees it
// where the memory is not used again at once.
void TestMailbox::writerGoesBeforeItsResult()
{
    QuickBackend backend;
    QCA::KeyStoreManager manager;
    QCA::KeyStore store(QStringLiteral("any"), &manager);
    auto writer = std::make_unique<StoreWriter>();
    QSignalSpy removed(writer.get(), &StoreWriter::removed);
    writer->remove(&store, QStringLiteral("entry"));
    QTRY_COMPARE(removed.count(), 1);
    writer->remove(&store, QStringLiteral("entry"));
    writer.reset();
    QCoreApplication::processEvents();
    QCOMPARE(removed.count(), 1);
}

QTEST_GUILESS_MAIN(TestMailbox)
#include "tst_mailbox.moc"
