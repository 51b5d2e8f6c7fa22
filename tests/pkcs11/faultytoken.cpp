// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/faultytoken.h"

#include "qca/tokens/tokens.h"

#include <QFile>
#include <QSaveFile>
#include <QTest>

#include <algorithm>
#include <cstdlib>

namespace TrivexTest {

FaultyToken::FaultyToken(const QString &label)
    : m_token(label)
{
}

void FaultyToken::useInThisProcess()
{
    m_token.useInThisProcess();
    qputenv("TRIVEX_PKCS11_MODULES", TRIVEX_FAULTY_MODULE);
    qputenv("TRIVEX_FAULTY_TARGET", QFile::encodeName(TestToken::softHsmLibrary()));
    qputenv("TRIVEX_FAULTY_CONTROL",
            QFile::encodeName(m_token.path() + QStringLiteral("/control")));
    qputenv("TRIVEX_FAULTY_LOG", QFile::encodeName(m_token.path() + QStringLiteral("/calls")));
}

void FaultyToken::control(const QByteArray &orders)
{
    QSaveFile file(m_token.path() + QStringLiteral("/control"));
    if (!file.open(QIODevice::WriteOnly) || file.write(orders + '\n') < 0 || !file.commit())
        qFatal("the control file can't be written");
}

QByteArray FaultyToken::newLog() const
{
    QFile file(m_token.path() + QStringLiteral("/calls"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    file.seek(m_forgotten);
    return file.readAll();
}

QList<QByteArray> FaultyToken::calls() const
{
    QList<QByteArray> names;
    const auto lines = newLog().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("C_"))
            names.append(line.left(line.indexOf(' ')));
    }
    return names;
}

int FaultyToken::count(const char *function) const
{
    return calls().count(QByteArray(function));
}

QMap<QByteArray, int> FaultyToken::callCounts() const
{
    QMap<QByteArray, int> counts;
    const auto all = calls();
    for (const QByteArray &call : all)
        ++counts[call];
    return counts;
}

int FaultyToken::countText(const char *text) const
{
    return newLog().count(text);
}

int FaultyToken::lastNumber(const char *mark) const
{
    QFile file(m_token.path() + QStringLiteral("/calls"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    // The log grows long, and what is looked for stands at its end.
    file.seek(std::max<qint64>(0, file.size() - 65536));
    const QByteArray text = file.readAll();
    const int at = text.lastIndexOf(mark);
    return at < 0 ? 0 : std::atoi(text.constData() + at + int(qstrlen(mark)));
}

bool FaultyToken::waitUntilInside(const char *function, int ms) const
{
    const QByteArray line = QByteArrayLiteral("waits ") + function + '\n';
    return QTest::qWaitFor([&] { return countText(line.constData()) > 0; }, ms);
}

QList<QByteArray> FaultyToken::attributesAsked() const
{
    static const QByteArray mark = QByteArrayLiteral(" attributes=");
    QList<QByteArray> types;
    const auto lines = newLog().split('\n');
    for (const QByteArray &line : lines) {
        const int at = line.indexOf(mark);
        const auto asked = at < 0 ? QList<QByteArray>() : line.mid(at + mark.size()).split(',');
        for (const QByteArray &type : asked) {
            if (!types.contains(type))
                types.append(type);
        }
    }
    return types;
}

void FaultyToken::forget()
{
    m_forgotten = int(QFile(m_token.path() + QStringLiteral("/calls")).size());
}

bool FaultyToken::replug(const QString &keyStoreId, const QByteArray &orders)
{
    const auto isPresent = [&](bool wanted) {
        return QTest::qWaitFor(
            [&] {
                const auto status = Trivex::TokenMonitor::token(keyStoreId);
                return status.present == wanted && !status.loading;
            },
            30000);
    };
    control("remove\n" + orders);
    if (!isPresent(false))
        return false;
    control(orders);
    return isPresent(true);
}

} // namespace TrivexTest
