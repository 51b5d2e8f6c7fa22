// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokenregistry.h"
#include "tests/support/quietbackend.h"
#include "tools/tokenadmin.h"

#include <QSignalSpy>
#include <QtTest>

#include <utility>

using namespace Trivex;

namespace {

const QString TokenId = QStringLiteral("token");

/// Notes what it is asked to do, and does nothing.
class Tokens : public TrivexTest::QuietBackend {
public:
    CancellationPtr startAdministration(const QString &storeId, TokenAdministration wanted,
                                        TokenAdministrationDone done) override
    {
        if (storeId != TokenId)
            return {};
        task = std::move(wanted);
        pending = std::move(done);
        return std::make_shared<Cancellation>();
    }

    void end(TokenError::Kind kind)
    {
        TokenAdministrationResult result;
        result.error.kind = kind;
        std::exchange(pending, {})(result);
    }

    TokenAdministration task;
    TokenAdministrationDone pending;
};

void publish(bool hasPinPad)
{
    TokenStatus status;
    status.keyStoreId = status.name = TokenId;
    status.present = true;
    status.hasPinPad = hasPinPad;
    status.shortestPin = 4;
    status.longestPin = 8;
    publishTokenStatus(status, nextStatusNumber());
}

} // namespace

/// What a token is told to do with its PINs: a mistake here locks it, or sets what nobody knows.
class TestTokenAdmin : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void whatIsTold_data();
    void whatIsTold();
    void pinPadGetsNoPin();
    void whosePin();
    void lengths_data();
    void lengths();

private:
    QCA::Initializer m_initializer;
};

void TestTokenAdmin::init()
{
    publish(false);
}

void TestTokenAdmin::whatIsTold_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("mayBeLastTry");
    for (const bool mayBeLastTry : {false, true}) {
        const auto row = [&](const char *name, int kind) {
            QTest::addRow("%s%s", name, mayBeLastTry ? ", the last try" : "")
                << kind << mayBeLastTry;
        };
        row("change", TokenAdministration::ChangePin);
        row("administrator's change", TokenAdministration::ChangeOfficerPin);
        row("set", TokenAdministration::SetPin);
        row("initialise", TokenAdministration::Initialise);
    }
}

void TestTokenAdmin::whatIsTold()
{
    QFETCH(int, kind);
    QFETCH(bool, mayBeLastTry);
    Tokens tokens;
    TokenAdmin admin;
    admin.setStoreId(TokenId);
    QSignalSpy finished(&admin, &TokenAdmin::finished);
    const QString pin = QStringLiteral("old");
    const QString newPin = QStringLiteral("new");
    if (kind == TokenAdministration::ChangePin)
        admin.changePin(pin, newPin, mayBeLastTry);
    else if (kind == TokenAdministration::ChangeOfficerPin)
        admin.changeOfficerPin(pin, newPin, mayBeLastTry);
    else if (kind == TokenAdministration::SetPin)
        admin.setPin(pin, newPin, mayBeLastTry);
    else
        admin.initialise(QStringLiteral("name"), pin, newPin, mayBeLastTry);
    QVERIFY(admin.isRunning());
    QVERIFY(tokens.pending);
    QCOMPARE(int(tokens.task.kind), kind);
    QCOMPARE(tokens.task.pin.toByteArray(), QByteArray("old"));
    QCOMPARE(tokens.task.newPin.toByteArray(), QByteArray("new"));
    QCOMPARE(tokens.task.mayBeLastTry, mayBeLastTry);
    QCOMPARE(tokens.task.name.isEmpty(), kind != TokenAdministration::Initialise);
    tokens.end(TokenError::NoError);
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY(!admin.isRunning());
    QVERIFY(admin.message().isEmpty());
}

void TestTokenAdmin::pinPadGetsNoPin()
{
    publish(true);
    Tokens tokens;
    TokenAdmin admin;
    admin.setStoreId(TokenId);
    admin.changePin(QStringLiteral("old"), QStringLiteral("new"), false);
    QVERIFY(tokens.pending);
    QVERIFY(tokens.task.pin.isEmpty());
    QVERIFY(tokens.task.newPin.isEmpty());
}

// Two PINs may be wrong, or locked: which one is said.
void TestTokenAdmin::whosePin()
{
    for (const auto kind : {TokenError::WrongPin, TokenError::PinLocked}) {
        TokenError error;
        error.kind = kind;
        const QString own = TokenAdmin::messageOf(error, false);
        const QString officers = TokenAdmin::messageOf(error, true);
        QVERIFY(!own.isEmpty() && !officers.isEmpty());
        QVERIFY(own != officers);
        // The object asks by what was begun.
        Tokens tokens;
        TokenAdmin admin;
        admin.setStoreId(TokenId);
        admin.changePin(QStringLiteral("old"), QStringLiteral("new"), false);
        tokens.end(kind);
        QTRY_COMPARE(admin.message(), own);
        admin.setPin(QStringLiteral("old"), QStringLiteral("new"), false);
        tokens.end(kind);
        QTRY_COMPARE(admin.message(), officers);
    }
}

void TestTokenAdmin::lengths_data()
{
    QTest::addColumn<QString>("pin");
    QTest::addColumn<bool>("fits");
    QTest::newRow("none") << QString() << false;
    QTest::newRow("too short") << QStringLiteral("123") << false;
    QTest::newRow("shortest") << QStringLiteral("1234") << true;
    QTest::newRow("longest") << QStringLiteral("12345678") << true;
    QTest::newRow("too long") << QStringLiteral("123456789") << false;
    // Tokens count bytes.
    QTest::newRow("two bytes each") << QStringLiteral("дддд") << true;
    QTest::newRow("two bytes each, too long") << QStringLiteral("ддддд") << false;
}

void TestTokenAdmin::lengths()
{
    QFETCH(QString, pin);
    TokenAdmin admin;
    admin.setStoreId(TokenId);
    QTEST(admin.fits(pin), "fits");
}

QTEST_GUILESS_MAIN(TestTokenAdmin)
#include "tst_tokenadmin.moc"
