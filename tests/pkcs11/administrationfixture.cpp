// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/administrationfixture.h"

#include "tests/pkcs11/administering.h"

#include <QProcess>
#include <QtTest>

using namespace Trivex;

namespace TrivexTest {

bool AdministrationFixture::prepare()
{
    // SoftHSM finds tokens of other programs when it starts only.
    if (!makeToken() || !addSigner() || !m_token->token().addTokenWithoutUserPin(OtherName))
        return false;
    m_token->useInThisProcess();
    if (!start(1))
        return false;
    m_storeId = storeIdOf(StoreName);
    return !m_storeId.isEmpty();
}

bool AdministrationFixture::resetPins()
{
    m_token->control();
    if (!QTest::qWaitFor([&] { return TokenMonitor::token(m_storeId).present; }, Patience))
        return false;
    if (opensWith(TestToken::pin()) && opensWith(TestToken::soPin(), "so"))
        return true;
    for (const QByteArray &officer : {TestToken::soPin(), NewPin}) {
        if (opensWith(officer, "so"))
            perform(TokenAdministration::ChangeOfficerPin, officer, TestToken::soPin());
    }
    perform(TokenAdministration::SetPin, TestToken::soPin(), TestToken::pin());
    return opensWith(TestToken::pin());
}

TokenAdministrationResult AdministrationFixture::perform(TokenAdministration::Kind kind,
                                                         const QByteArray &pin,
                                                         const QByteArray &newPin,
                                                         const QString &name, bool mayBeLastTry)
{
    TokenAdministration task = administration(kind, pin, newPin);
    task.name = name;
    task.mayBeLastTry = mayBeLastTry;
    return administer(m_storeId, std::move(task), &m_task);
}

bool AdministrationFixture::opensWith(const QByteArray &pin, const char *type,
                                      const QString &name) const
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("SOFTHSM2_CONF"), m_token->token().configurationFile());
    environment.remove(QStringLiteral("LD_PRELOAD"));
    tool.setProcessEnvironment(environment);
    const QString given = QString::fromLatin1(pin);
    // An administrator sees no objects: his PIN is changed to itself.
    const QStringList login = qstrcmp(type, "so") == 0
        ? QStringList{QStringLiteral("--so-pin"), given, QStringLiteral("--change-pin"),
                      QStringLiteral("--new-pin"), given}
        : QStringList{QStringLiteral("--pin"), given, QStringLiteral("--list-objects")};
    tool.start(QStringLiteral("pkcs11-tool"),
               QStringList{QStringLiteral("--module"), TestToken::softHsmLibrary(),
                           QStringLiteral("--token-label"), name, QStringLiteral("--login"),
                           QStringLiteral("--login-type"), QLatin1String(type)}
                   + login);
    return tool.waitForFinished(Patience) && tool.exitCode() == 0;
}

int AdministrationFixture::objects() const
{
    return m_token->token().objectCount();
}

QString AdministrationFixture::storeIdOf(const QString &name)
{
    const auto tokens = TokenMonitor::tokens();
    for (const TokenStatus &token : tokens) {
        if (token.name == name)
            return token.keyStoreId;
    }
    return {};
}

QString AdministrationFixture::waitForToken(const QString &name)
{
    const bool came = QTest::qWaitFor(
        [&] {
            const TokenStatus token = TokenMonitor::token(storeIdOf(name));
            return token.present && !token.loading;
        },
        Patience);
    return came ? storeIdOf(name) : QString();
}

bool AdministrationFixture::waitForCounts(int certificates, int keys)
{
    return QTest::qWaitFor(
        [&] {
            const TokenStatus token = TokenMonitor::token(m_storeId);
            return token.present && !token.loading && token.certificates == certificates
                && token.keyFacts.size() == keys;
        },
        Patience);
}

bool AdministrationFixture::makeAnew()
{
    const auto result =
        perform(TokenAdministration::Initialise, TestToken::soPin(), TestToken::pin(), StoreName);
    m_storeId = waitForToken(StoreName);
    return result.error.kind == TokenError::NoError && waitForCounts(0, 0) && addSigner()
        && m_token->replug(m_storeId) && waitForCounts(1, 1);
}

} // namespace TrivexTest
