// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/console/consoletest.h"

#include "tests/support/needtokens.h"

#include <QCryptographicHash>
#include <QFile>
#include <QtTest>

namespace TrivexTest {

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QString hash(const QByteArray &der)
{
    return QString::fromLatin1(QCryptographicHash::hash(der, QCryptographicHash::Sha256).toHex());
}

void ConsoleTest::prepare()
{
    TRIVEX_NEED_TOKENS();
    qputenv("HOME", QFile::encodeName(m_files.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("share"))));
    m_token = std::make_unique<TestToken>();
    QVERIFY2(m_token->isValid(), qPrintable(m_token->problem()));
    m_token->useInThisProcess();
    m_authority = std::make_unique<TestAuthority>();
    QVERIFY(m_authority->isValid());
    QVERIFY(m_token->generateKeyPair(QStringLiteral("EC:secp256r1"), QStringLiteral("01"),
                                     QStringLiteral("signer")));
    m_certificate = m_authority->issue(m_token->publicKey(QStringLiteral("01")),
                                       QStringLiteral("/CN=Пётр/O=Поле"));
    QVERIFY(m_token->writeObject(QStringLiteral("cert"), m_certificate, QStringLiteral("01"),
                                 QStringLiteral("signer")));
    QVERIFY(write(path(QStringLiteral("one")), m_certificate));
    QVERIFY(write(path(QStringLiteral("pin")), TestToken::pin() + '\n'));
}

QByteArray ConsoleTest::writeSecond()
{
    const QByteArray second = m_authority->issue(m_token->publicKey(QStringLiteral("01")),
                                                 QStringLiteral("/CN=Пётр/O=Лес"));
    const bool isWritten = m_token->writeObject(QStringLiteral("cert"), second,
                                                QStringLiteral("01"), QStringLiteral("second"));
    return isWritten ? second : QByteArray();
}

QStringList ConsoleTest::signing(const QString &document) const
{
    return {QStringLiteral("--sign"),     document,
            QStringLiteral("--key"),      QStringLiteral("Пётр"),
            QStringLiteral("--pin-file"), path(QStringLiteral("pin"))};
}

} // namespace TrivexTest
