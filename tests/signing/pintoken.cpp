// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/signing/pintoken.h"

#include "qca/questions/asker.h"
#include "qca/questions/questionscope.h"

#include <QEventLoop>

namespace TrivexTest {

PinToken::PinToken(const QString &storeId)
{
    m_question.keyStoreId = storeId;
}

std::unique_ptr<KeyStoreEntry> PinToken::entry()
{
    return bundleEntry(scriptedKey(softwareKey(), [this] { return logIn(); }));
}

bool PinToken::logIn()
{
    const QString pin = plain ? askPlainly() : askOurWay();
    tried << pin;
    return pin == QLatin1String("1234");
}

QString PinToken::askOurWay() const
{
    Trivex::QuestionInfo question = m_question;
    question.addressee = Trivex::QuestionScope::current();
    const Trivex::Reply reply = Trivex::ask(
        question,
        QCA::KeyStoreInfo(QCA::KeyStore::SmartCard, question.keyStoreId, QStringLiteral("Token")));
    return reply.accepted ? QString::fromUtf8(reply.password.toByteArray()) : QStringLiteral("-");
}

QString PinToken::askPlainly()
{
    QCA::PasswordAsker asker;
    QEventLoop loop;
    QObject::connect(&asker, &QCA::PasswordAsker::responseReady, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    asker.ask(QCA::Event::StylePIN, QStringLiteral("file"), nullptr);
    loop.exec();
    asker.waitForResponse();
    return asker.accepted() ? QString::fromUtf8(asker.password().toByteArray())
                            : QStringLiteral("-");
}

} // namespace TrivexTest
