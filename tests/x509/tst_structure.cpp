// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/pem.h"
#include "qca/describe/structure.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/corpus.h"

#include <QRegularExpression>
#include <QtTest>

#include <algorithm>

using namespace Trivex;
using TrivexTest::derElement;
using TrivexTest::hex;

/// The elements of an encoding, line by line.
class TestStructure : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsAsOpensslDoes();
    void isBounded();
};

void TestStructure::readsAsOpensslDoes()
{
    const QByteArray der = Corpus::read(QStringLiteral("extensions-leaf.der"));
    const QStringList shown = structureText(der).split(QLatin1Char('\n'));
    const QString printed = QString::fromUtf8(
        Corpus::openssl(QStringLiteral("asn1parse -inform DER").split(QLatin1Char(' ')), der));
    static const QRegularExpression place(
        QStringLiteral("^ *(\\d+):d=\\d+ +hl= *(\\d+) +l= *(\\d+) (?:prim|cons): +(\\S[^:]*\\S)"));
    const int width = QString::number(der.size()).size();
    QStringList expected;
    for (const QString &line : printed.split(QLatin1Char('\n'))) {
        const QRegularExpressionMatch match = place.match(line);
        if (match.hasMatch())
            expected += QStringLiteral("%1 %2")
                            .arg(match.captured(1).toInt(), width)
                            .arg(match.captured(2).toInt() + match.captured(3).toInt(), width);
    }
    QVERIFY(expected.size() > 50);
    for (const QString &line : expected) {
        QVERIFY2(std::any_of(shown.cbegin(), shown.cend(),
                             [&](const QString &one) { return one.startsWith(line); }),
                 qPrintable(line));
    }
    QVERIFY(structureText(der).contains(
        QStringLiteral("OBJECT  sha256WithRSAEncryption (1.2.840.113549.1.1.11)")));
    // Strings with DER in them are opened.
    QVERIFY(structureText(der).contains(QStringLiteral("example.org/cps")));
}

void TestStructure::isBounded()
{
    QByteArray content;
    for (int i = 0; i < 100; ++i)
        content += hex("0500");
    const QString text = structureText(derElement(0x30, content), 10);
    QCOMPARE(text.count(QLatin1Char('\n')), 10);
    QVERIFY2(text.endsWith(QString::fromUtf8("\n… 182 bytes")), qPrintable(text));
    QVERIFY(
        structureText(hex("3082ffff0500")).contains(QStringLiteral("no DER  30:82:FF:FF:05:00")));
    QVERIFY(structureText({}).isEmpty());
}

int main(int argc, char **argv)
{
    qputenv("LC_ALL", "C.UTF-8");
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestStructure test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_structure.moc"
