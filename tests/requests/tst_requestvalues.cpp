// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/keyrequest.h"
#include "tools/requestcontents.h"
#include "tools/subjectattributes.h"

#include <QtTest>

using namespace Trivex;

/// Which values an authority may be asked for in a name, and which of them are wrong.
class TestRequestValues : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void attributes_data();
    void attributes();
    void values_data();
    void values();
};

void TestRequestValues::attributes_data()
{
    QTest::addColumn<QString>("type");
    for (const QString &type : subjectAttributeTypes())
        QTest::newRow(qPrintable(type)) << type;
}

void TestRequestValues::attributes()
{
    QFETCH(QString, type);
    const SubjectAttribute *attribute = findSubjectAttribute(type);
    QVERIFY(attribute);
    QCOMPARE(subjectAttributeOid(type), QString::fromLatin1(attribute->oid));
    QCOMPARE(findSubjectAttribute(QString::fromLatin1(attribute->oid)), attribute);
    const QString tooLong(attribute->longest + 1, QLatin1Char('1'));
    QCOMPARE(RequestContents::problemOfName({type, tooLong}), RequestContents::TooLong);
    QCOMPARE(RequestContents::problemOfName({type, QStringLiteral(" ")}),
             RequestContents::NoProblem);
}

void TestRequestValues::values_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("isGood");
    const auto row = [](const char *type, const char *value, bool isGood) {
        QTest::addRow("%s %s", type, value)
            << QString::fromLatin1(type) << QString::fromUtf8(value) << isGood;
    };
    row("country", "RU", true);
    row("country", "ru", false);
    row("country", "РФ", false);
    row("email", "ivanov@example.ru", true);
    row("email", "иванов@example.ru", false);
    row("email", "a@b@c", false);
    row("inn", "500100732259", true);
    row("inn", "500100732258", false);
    row("snils", "112-233-445 95", true);
    row("ogrn", "1027700132195", true);
    row("ogrn", "102770013219", false);
    row("telephone", "+7 495 000-00-00", true);
    row("telephone", "семь", false);
    row("1.2.3.4", "anything", true);
    row("1.2.x", "anything", false);
    row("nonsense", "anything", false);
    row("dns", "www.example.org", true);
    row("dns", "*.example.org", true);
    row("dns", "пример.рф", true);
    row("dns", "a b", false);
    row("dns", "-a.example.org", false);
    row("ip", "192.0.2.1", true);
    row("ip", "2001:db8::1", true);
    row("ip", "192.0.2.256", false);
    row("uri", "https://example.org/a?b", true);
    row("uri", "example.org", false);
    row("uri", "urn:пример", false);
}

void TestRequestValues::values()
{
    QFETCH(QString, type);
    QFETCH(QString, value);
    QFETCH(bool, isGood);
    const QStringList others{QStringLiteral("dns"), QStringLiteral("ip"), QStringLiteral("uri")};
    const QString problem = others.contains(type)
        ? KeyRequest::problemOfAlternativeName(type, value)
        : KeyRequest::problemOfName(type, value);
    QCOMPARE(problem.isEmpty(), isGood);
}

QTEST_GUILESS_MAIN(TestRequestValues)
#include "tst_requestvalues.moc"
