// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/looks.h"
#include "tests/app/samplewindowtest.h"

#include <QAccessible>
#include <QLocale>
#include <QMetaEnum>
#include <QXmlStreamReader>
#include <QtTest>

using namespace TrivexTest;

namespace {

bool isControl(const QQuickItem *item)
{
    static const char *const classes[] = {
        "QQuickAbstractButton", "QQuickTextField",  "QQuickTextArea", "QQuickComboBox",
        "QQuickTextEdit",       "QQuickTextInput",  "QQuickSlider",   "QQuickListView",
        "QQuickBusyIndicator",  "QQuickProgressBar"};
    for (const char *name : classes) {
        if (item->inherits(name))
            return true;
    }
    return item->activeFocusOnTab();
}

/// Texts of the English catalogue whose Russian differs, so that seeing one in a Russian window
/// means that it was left untranslated.
QHash<QString, QString> readCatalogue(const QString &name)
{
    QHash<QString, QString> texts;
    QFile file(QStringLiteral(TRIVEX_CATALOGUE_SOURCES "/") + name);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&file);
    QString id;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == QLatin1String("message"))
            id = reader.attributes().value(QLatin1String("id")).toString();
        else if (reader.name() == QLatin1String("translation"))
            texts.insert(id,
                         reader.readElementText(QXmlStreamReader::IncludeChildElements).trimmed());
    }
    return texts;
}

QStringList textsOf(const QQuickItem *item)
{
    QStringList texts;
    for (const char *property : {"text", "title", "placeholderText", "displayText"})
        texts += item->property(property).toString();
    if (QAccessibleInterface *accessible =
            QAccessible::queryAccessibleInterface(const_cast<QQuickItem *>(item)))
        texts += accessible->text(QAccessible::Name);
    texts.removeAll(QString());
    return texts;
}

} // namespace

/// Looks at every page and dialog as a screen reader, a keyboard and a stranger would.
class TestAppPages : public SampleWindowTest {
    Q_OBJECT
public:
    using SampleWindowTest::SampleWindowTest;

private Q_SLOTS:
    void everyPage_data();
    void everyPage();
    void secretsStaySecret_data();
    void secretsStaySecret();
    void everyResultOfSigningHasWords_data();
    void everyResultOfSigningHasWords();
    void tabReachesEverything_data();
    void tabReachesEverything();

private:
    bool opensOneWindow() const override { return false; }
    void open(const QString &locale);
    void checkNames(const QString &page);
    void checkTexts(const QString &page, bool russian);
    void checkFits(const QString &page);
};

void TestAppPages::open(const QString &locale)
{
    QLocale::setDefault(QLocale(locale));
    openWindow();
    QVERIFY(m_window->waitFor([&] { return m_window->rowCount() > 0; }));
}

void TestAppPages::everyPage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("mode");
    QTest::addColumn<double>("scale");
    QTest::newRow("english, wide, light") << "en_US" << QSize(1180, 760) << 1 << 1.0;
    QTest::newRow("russian, wide, dark") << "ru_RU" << QSize(1180, 760) << 2 << 1.0;
    QTest::newRow("russian, middle") << "ru_RU" << QSize(780, 700) << 1 << 1.0;
    QTest::newRow("russian, 400 px") << "ru_RU" << QSize(400, 700) << 1 << 1.0;
    QTest::newRow("russian, 4K, twice the text") << "ru_RU" << QSize(2500, 1500) << 1 << 2.0;
}

void TestAppPages::everyPage()
{
    QFETCH(QString, locale);
    QFETCH(QSize, size);
    QFETCH(int, mode);
    QFETCH(double, scale);
    open(locale);
    m_window->setTheme(mode, scale);
    m_window->window()->resize(size);
    for (const QString &page : pageNames()) {
        QVERIFY2(visitPage(*m_window, m_data, page), qPrintable(page));
        checkNames(page);
        checkTexts(page, locale.startsWith(QLatin1String("ru")));
        checkFits(page);
        leavePage(*m_window);
    }
}

void TestAppPages::checkNames(const QString &page)
{
    QStringList nameless;
    int controls = 0;
    visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
        if (!isControl(item))
            return;
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(item);
        ++controls;
        const bool named = accessible && accessible->role() != QAccessible::NoRole
            && accessible->role() != QAccessible::Client
            && !accessible->text(QAccessible::Name).isEmpty();
        if (!named)
            nameless += QStringLiteral("%1: %2 (role %3)")
                            .arg(page, describeItem(item))
                            .arg(accessible ? int(accessible->role()) : -1);
    });
    if (!nameless.isEmpty())
        QTest::qFail(qPrintable(nameless.join(QLatin1Char('\n'))), __FILE__, __LINE__);
    if (controls < 3)
        QTest::qFail(qPrintable(page + QStringLiteral(" has hardly a control")), __FILE__,
                     __LINE__);
}

void TestAppPages::checkTexts(const QString &page, bool russian)
{
    static const QHash<QString, QString> english =
        readCatalogue(QStringLiteral("trivex-app_en.ts"));
    static const QHash<QString, QString> translated =
        readCatalogue(QStringLiteral("trivex-app_ru.ts"));
    QStringList untranslated;
    for (auto it = english.cbegin(); it != english.cend(); ++it) {
        if (translated.value(it.key()) != it.value())
            untranslated += it.value();
    }
    visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
        for (const QString &text : textsOf(item)) {
            const bool raw = text == QLatin1String("USER")
                || text.contains(QLatin1String("trivex-"))
                || text.startsWith(QLatin1String("System Trusted"))
                || text.contains(QLatin1String("plugin-la-"));
            if (raw || (russian && untranslated.contains(text)))
                QTest::qFail(qPrintable(page + QStringLiteral(": ") + describeItem(item)
                                        + QStringLiteral(": ") + text),
                             __FILE__, __LINE__);
        }
    });
}

void TestAppPages::checkFits(const QString &page)
{
    const qreal width = m_window->window()->width();
    visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
        if (!isControl(item) || item->width() <= 0)
            return;
        const QRectF where = item->mapRectToScene({0, 0, item->width(), item->height()});
        if (where.left() < -1 || where.right() > width + 1)
            QTest::qFail(qPrintable(QStringLiteral("%1: %2 reaches from %3 to %4")
                                        .arg(page, describeItem(item))
                                        .arg(where.left())
                                        .arg(where.right())),
                         __FILE__, __LINE__);
    });
}

void TestAppPages::secretsStaySecret_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("name");
    QTest::newRow("PIN question") << "pin"
                                  << ""
                                  << "pinField";
    QTest::newRow("PIN for a signature") << "sign"
                                         << "signPinDialog"
                                         << "pinField";
    QTest::newRow("PIN for a new key") << "new-request"
                                       << ""
                                       << "generatePin";
    QTest::newRow("password of a bundle") << "locked-import"
                                          << ""
                                          << "bundlePassword";
}

void TestAppPages::secretsStaySecret()
{
    QFETCH(QString, page);
    QFETCH(QString, dialog);
    QFETCH(QString, name);
    open(QStringLiteral("en_US"));
    QVERIFY(visitPage(*m_window, m_data, page));
    if (!dialog.isEmpty())
        QMetaObject::invokeMethod(m_window->object(dialog), "open");
    QVERIFY(m_window->waitForItem(name));
    QQuickItem *field = m_window->item(name);
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(field);
    QVERIFY(accessible);
    QCOMPARE(accessible->role(), QAccessible::EditableText);
    // Whose secret is meant, which what is shown in the empty field does not say.
    const QString title = accessible->text(QAccessible::Name);
    QVERIFY2(title.size() > field->property("placeholderText").toString().size(),
             qPrintable(title));
    // By this a screen reader knows to keep silent about the keys that are pressed.
    QVERIFY(accessible->state().passwordEdit);

    Announcements announcements;
    field->forceActiveFocus(Qt::TabFocusReason);
    m_window->type(QStringLiteral("4711"));
    QCOMPARE(field->property("text").toString(), QStringLiteral("4711"));
    const QStringList hidden = whatIsTold(field);
    field->setProperty("echoMode", 0); // as the button that shows it does
    m_window->type(QStringLiteral("4711"));
    const QStringList shown = whatIsTold(field);
    QVERIFY(hidden.contains(title) && shown.contains(title)); // something was asked
    for (const QString &text : hidden + shown + announcements.texts()) {
        for (const QChar digit : QStringLiteral("471"))
            QVERIFY2(!text.contains(digit) || title.contains(digit), qPrintable(text));
    }
    leavePage(*m_window);
}

void TestAppPages::everyResultOfSigningHasWords_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("english") << "en_US";
    QTest::newRow("russian") << "ru_RU";
}

void TestAppPages::everyResultOfSigningHasWords()
{
    QFETCH(QString, locale);
    open(locale);
    QVERIFY(visitPage(*m_window, m_data, QStringLiteral("sign")));
    QQuickItem *page = m_window->item(QStringLiteral("signPage"));
    QVERIFY(page);
    constexpr int Raw = 2; // SignatureForm.Form
    page->setProperty("form", Raw);
    QObject *signer = page->findChild<QObject *>(QStringLiteral("signer"));
    QVERIFY(signer);
    const QMetaObject *type = signer->metaObject();
    const QMetaEnum errors = type->enumerator(type->indexOfEnumerator("Error"));
    QVERIFY(errors.keyCount() > 3);
    QSet<QString> causes;
    constexpr int Signing = 1; // SigningWork.Phase
    constexpr int Verifying = 2;
    for (const int doing : {Signing, Verifying}) {
        for (int i = 0; i < errors.keyCount(); ++i) {
            if (errors.value(i) == 0)
                continue;
            page->setProperty("phase", doing);
            QMetaObject::invokeMethod(signer, "setError", Q_ARG(int, 0));
            QMetaObject::invokeMethod(signer, "setError", Q_ARG(int, errors.value(i)));
            const QQuickItem *result = m_window->item(QStringLiteral("signResult"));
            QVERIFY2(result, errors.key(i));
            const QString cause = result->property("text").toString();
            const QString advice = result->property("detail").toString();
            QVERIFY2(cause.endsWith(QLatin1Char('.')) && advice.endsWith(QLatin1Char('.')),
                     qPrintable(cause + advice));
            QVERIFY2(!page->property("working").toBool(), errors.key(i));
            causes += cause;
        }
    }
    QCOMPARE(causes.size(), 3); // not signed, not genuine, no signature
}

void TestAppPages::tabReachesEverything_data()
{
    QTest::addColumn<QString>("page");
    for (const char *page : {"details", "requests", "new-request", "sign"})
        QTest::newRow(page) << page;
}

void TestAppPages::tabReachesEverything()
{
    QFETCH(QString, page);
    open(QStringLiteral("en_US"));
    QVERIFY(visitPage(*m_window, m_data, page));
    // One round by Tab: it comes back to where it began, never stands still, and passes over every
    // enabled button of the page. It may begin on the page itself.
    m_window->key(Qt::Key_Tab);
    m_window->key(Qt::Key_Tab);
    QQuickItem *first = m_window->window()->activeFocusItem();
    QVERIFY(first);
    QSet<QQuickItem *> seen;
    for (int i = 0; i < 200; ++i) {
        QQuickItem *now = m_window->window()->activeFocusItem();
        seen += now;
        m_window->key(Qt::Key_Tab);
        QQuickItem *next = m_window->window()->activeFocusItem();
        QVERIFY2(next && next != now, qPrintable(describeItem(now)));
        if (next == first)
            break;
    }
    QCOMPARE(m_window->window()->activeFocusItem(), first);
    visitItems(m_window->window()->contentItem(), [&](QQuickItem *item) {
        const bool reachable =
            item->inherits("QQuickAbstractButton") && item->isEnabled() && item->activeFocusOnTab();
        if (reachable && !seen.contains(item))
            QTest::qFail(qPrintable(QStringLiteral("not reached: ") + describeItem(item)), __FILE__,
                         __LINE__);
    });
    leavePage(*m_window);
}

int main(int argc, char **argv)
{
    return runSampleWindowTest<TestAppPages>(argc, argv);
}

#include "tst_app_pages.moc"
