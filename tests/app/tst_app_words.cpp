// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/samplewindowtest.h"

#include <QtTest>

using namespace TrivexTest;

/// What the window calls the values of certificates and requests, in both languages: the words of
/// the models' own interface are not all ones that people know.
class TestAppWords : public SampleWindowTest {
    Q_OBJECT
public:
    using SampleWindowTest::SampleWindowTest;

private Q_SLOTS:
    void details_data();
    void details();
    void wholeYears();
    void oneDirection_data();
    void oneDirection();

private:
    bool opensOneWindow() const override { return false; }
    QStringList shownTexts() const;
};

QStringList TestAppWords::shownTexts() const
{
    QStringList texts;
    visitItems(m_window->item(QStringLiteral("detailsView")),
               [&](QQuickItem *item) { texts += item->property("text").toString(); });
    texts.removeAll(QString());
    return texts;
}

void TestAppWords::details_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QStringList>("refused");
    QTest::addColumn<QStringList>("wanted");
    const QStringList english = {QStringLiteral("EMSA"),          QStringLiteral("Marker"),
                                 QStringLiteral("Manufacturer"),  QStringLiteral("Subject"),
                                 QStringLiteral("Kind of token"), QStringLiteral("Key name")};
    const QStringList russian = {QStringLiteral("EMSA"), QStringLiteral("Метка"),
                                 QStringLiteral("Производитель"), QStringLiteral("Вид токена"),
                                 QStringLiteral("Имя ключа")};
    const QString inEnglish = QStringLiteral("en_US");
    const QString inRussian = QStringLiteral("ru_RU");
    QTest::newRow("certificate, English")
        << inEnglish << QStringLiteral("details") << english
        << QStringList{QStringLiteral("Issuer"), QStringLiteral("Holder"),
                       QStringLiteral("RSA with SHA-256")};
    QTest::newRow("certificate, Russian")
        << inRussian << QStringLiteral("details") << russian
        << QStringList{QStringLiteral("Издатель"), QStringLiteral("Владелец"),
                       QStringLiteral("RSA с SHA-256")};
    QTest::newRow("request, English")
        << inEnglish << QStringLiteral("requests")
        << english + QStringList{QStringLiteral("Issuer")} << QStringList{QStringLiteral("Holder")};
    QTest::newRow("request, Russian") << inRussian << QStringLiteral("requests")
                                      << russian + QStringList{QStringLiteral("Издатель")}
                                      << QStringList{QStringLiteral("Владелец")};
}

void TestAppWords::details()
{
    QFETCH(QString, locale);
    QFETCH(QString, page);
    QFETCH(QStringList, refused);
    QFETCH(QStringList, wanted);
    QLocale::setDefault(QLocale(locale));
    openWindow();
    QVERIFY(visitPage(*m_window, m_data, page));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    const QStringList texts = shownTexts();
    const QString all = texts.join(QLatin1Char('\n'));
    const auto said = [&](const QString &word) { return !texts.filter(word).isEmpty(); };
    for (const QString &word : qAsConst(refused))
        QVERIFY2(!said(word), qPrintable(word + QStringLiteral(" is in\n") + all));
    for (const QString &word : qAsConst(wanted))
        QVERIFY2(said(word), qPrintable(word + QStringLiteral(" is not in\n") + all));
}

void TestAppWords::wholeYears()
{
    // The short dates of this locale have two digits of the year.
    QLocale::setDefault(QLocale(QStringLiteral("en_US")));
    openWindow();
    for (const QString &page :
         {QStringLiteral("personal"), QStringLiteral("details"), QStringLiteral("checked")}) {
        QVERIFY(visitPage(*m_window, m_data, page));
        QStringList texts;
        visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
            if (item->isVisible())
                texts += item->property("text").toString();
        });
        const QRegularExpression shortYear(QStringLiteral("\\b\\d+/\\d+/\\d\\d\\b"));
        QCOMPARE(texts.filter(shortYear), QStringList());
        const QRegularExpression wholeYear(QStringLiteral("\\b\\d+/\\d+/\\d{4}\\b"));
        QVERIFY2(!texts.filter(wholeYear).isEmpty(), qPrintable(texts.join(QLatin1Char('\n'))));
        leavePage(*m_window);
    }
}

void TestAppWords::oneDirection_data()
{
    QTest::addColumn<QString>("locale");
    for (const char *locale : {"en_US", "ar_EG", "he_IL", "fa_IR"})
        QTest::newRow(locale) << QString::fromLatin1(locale);
}

void TestAppWords::oneDirection()
{
    // The texts are English where there are none in the user's language, and rows and columns run
    // as they do: buttons and ticks must not turn round among them.
    QFETCH(QString, locale);
    QLocale::setDefault(QLocale(locale));
    openWindow();
    for (const QString &page : {QStringLiteral("details"), QStringLiteral("import")}) {
        QVERIFY(visitPage(*m_window, m_data, page));
        int controls = 0;
        QStringList turned;
        visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
            const QVariant mirrored = item->property("mirrored");
            controls += item->inherits("QQuickControl") ? 1 : 0;
            if (mirrored.toBool())
                turned += item->objectName() + QLatin1Char(' ') + item->property("text").toString();
        });
        QVERIFY(controls > 10);
        QCOMPARE(turned, QStringList());
        leavePage(*m_window);
    }
}

int main(int argc, char **argv)
{
    return runSampleWindowTest<TestAppWords>(argc, argv);
}

#include "tst_app_words.moc"
