// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/environment.h"

#include <QColor>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QtTest>

namespace {

double channel(double value)
{
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

/// Relative luminance and contrast as WCAG 2.1 defines them.
double luminance(const QColor &color)
{
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF())
        + 0.0722 * channel(color.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (qMax(la, lb) + 0.05) / (qMin(la, lb) + 0.05);
}

} // namespace

class TestAppTheme : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void contrastIsEnough_data();
    void contrastIsEnough();
    void coloursFollowTheValidity();
    void everyIconIsThere();
};

void TestAppTheme::contrastIsEnough_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("light") << 1;
    QTest::newRow("dark") << 2;
}

void TestAppTheme::contrastIsEnough()
{
    QFETCH(int, mode);
    QQmlEngine engine;
    engine.addImportPath(Trivex::moduleDirectory());
    QQmlComponent component(&engine);
    component.setData("import QtQml 2.15\nimport Trivex.Crypto.Controls 1.0\n"
                      "QtObject { property int mode; onModeChanged: Theme.mode = mode\n"
                      "property var pairs: Theme.pairs; property bool dark: Theme.dark }",
                      QUrl());
    QScopedPointer<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    object->setProperty("mode", mode);
    QCOMPARE(object->property("dark").toBool(), mode == 2);
    const QVariantList pairs = object->property("pairs").value<QVariantList>();
    QVERIFY(pairs.size() > 20);
    for (const QVariant &pair : pairs) {
        const QVariantList parts = pair.toList();
        const double value = contrast(parts.at(1).value<QColor>(), parts.at(2).value<QColor>());
        QVERIFY2(value >= 4.5,
                 qPrintable(QStringLiteral("%1: %2").arg(parts.at(0).toString()).arg(value)));
    }
}

void TestAppTheme::coloursFollowTheValidity()
{
    // The theme knows the states by number, so that it needs no module behind it.
    QQmlEngine engine;
    engine.addImportPath(Trivex::moduleDirectory());
    QQmlComponent component(&engine);
    component.setData("import QtQml 2.15\nimport Trivex.Crypto.Controls 1.0\n"
                      "import Trivex.Crypto.Tools 1.0\n"
                      "QtObject { property int mode; onModeChanged: Theme.mode = mode\n"
                      "property var found: [Validity.Unknown, Validity.Valid, Validity.Expiring,\n"
                      "Validity.Expired, Validity.NotYet, 99, undefined].map(function(state) {\n"
                      "return [Theme.stateColor(state), Theme.stateGround(state)] })\n"
                      "property var wanted: [[Theme.neutral, Theme.neutralSoft],\n"
                      "[Theme.good, Theme.goodSoft], [Theme.warn, Theme.warnSoft],\n"
                      "[Theme.bad, Theme.badSoft], [Theme.warn, Theme.warnSoft],\n"
                      "[Theme.neutral, Theme.neutralSoft], [Theme.neutral, Theme.neutralSoft]] }",
                      QUrl());
    QScopedPointer<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    QVariantList last;
    for (int mode : {1, 2}) {
        object->setProperty("mode", mode);
        const QVariantList wanted = object->property("wanted").toList();
        QCOMPARE(wanted.size(), 7);
        QCOMPARE(object->property("found").toList(), wanted);
        // They change with the theme.
        QVERIFY(wanted != last);
        last = wanted;
    }
}

void TestAppTheme::everyIconIsThere()
{
    // Icons are named in the QML files; a wrong name would show as an empty place.
    const QString directory =
        Trivex::moduleDirectory() + QStringLiteral("/Trivex/Crypto/Controls/");
    const QRegularExpression named(
        QStringLiteral("(?:Theme\\.icon\\(|\\bicon: |\\bname: )\"([a-z-]+)\""));
    QStringList sources;
    QDirIterator modules(directory, {QStringLiteral("*.qml")}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (modules.hasNext())
        sources += modules.next();
    QDirIterator pages(QStringLiteral(TRIVEX_APP_QML_DIR), {QStringLiteral("*.qml")}, QDir::Files);
    while (pages.hasNext())
        sources += pages.next();
    int found = 0;
    for (const QString &source : qAsConst(sources)) {
        QFile file(source);
        QVERIFY(file.open(QIODevice::ReadOnly));
        auto matches = named.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext()) {
            const QString icon = matches.next().captured(1);
            ++found;
            QVERIFY2(
                QFile::exists(directory + QStringLiteral("icons/") + icon + QStringLiteral(".svg")),
                qPrintable(source + QStringLiteral(": ") + icon));
        }
    }
    QVERIFY(found > 20);
}

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    TestAppTheme test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_app_theme.moc"
