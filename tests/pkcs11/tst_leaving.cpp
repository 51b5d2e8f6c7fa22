// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/calls/module.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/support/needtokens.h"

#include <QFile>
#include <QtTest>

using namespace TrivexTest;
using Trivex::Pkcs11::Module;
using Trivex::Pkcs11::ModulePtr;
using Trivex::Pkcs11::ModuleSource;

/// A library that two sources name one after the other is never open for both.
class TestLeaving : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void leftBeforeItWasOpen();
    void leftWhileItIsOpen();
    void eachLeavingCounts();

private:
    std::unique_ptr<FaultyToken> m_token;
    ModuleSource m_first;
    ModuleSource m_second;
    ModuleSource m_other;
};

void TestLeaving::initTestCase()
{
    m_token = std::make_unique<FaultyToken>(QStringLiteral("Leaving"));
    TRIVEX_NEED_TOKENS();
    QVERIFY2(m_token->token().isValid(), qPrintable(m_token->token().problem()));
    m_token->useInThisProcess();
    const QString library = qEnvironmentVariable("TRIVEX_PKCS11_MODULES");
    m_first.key = QStringLiteral("first");
    m_second.key = QStringLiteral("second");
    m_other.key = QStringLiteral("other");
    m_first.library = m_second.library = library;
    m_other.library = m_token->token().path() + QStringLiteral("/other.so");
    QVERIFY(QFile::copy(library, m_other.library));
}

/// Its user was told while it was on the way to the module, and will finalise what it gets.
void TestLeaving::leftBeforeItWasOpen()
{
    Module::leave(m_first);
    QVERIFY(!Module::open(m_second));
    QVERIFY(Module::open(m_other));
    {
        const ModulePtr late = Module::open(m_first);
        QVERIFY(late);
        QVERIFY(!Module::open(m_second));
    }
    Module::hasLeft(m_first);
    QVERIFY(Module::open(m_second));
}

void TestLeaving::leftWhileItIsOpen()
{
    {
        const ModulePtr open = Module::open(m_first);
        QVERIFY(open);
        Module::leave(m_first);
        QVERIFY(!Module::open(m_second));
    }
    // It has been finalised, and its user has not said that he is gone.
    QVERIFY(!Module::open(m_second));
    Module::hasLeft(m_first);
    QVERIFY(Module::open(m_second));
}

void TestLeaving::eachLeavingCounts()
{
    Module::leave(m_first);
    Module::leave(m_first);
    Module::hasLeft(m_first);
    QVERIFY(!Module::open(m_second));
    Module::hasLeft(m_first);
    QVERIFY(Module::open(m_second));
}

QTEST_GUILESS_MAIN(TestLeaving)

#include "tst_leaving.moc"
