// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/controls/controlstest.h"

#include "tests/app/looks.h"

#include <QFileInfo>
#include <QQuickStyle>
#include <QtTest>

namespace TrivexTest {

namespace {

constexpr QSize Narrow(400, 640);
constexpr QSize Huge(3840, 2160);

} // namespace

bool hasWidgets()
{
    return qEnvironmentVariable("TRIVEX_TEST_KIND") == QLatin1String("widgets");
}

QString useStyle()
{
    QString style = qEnvironmentVariable("TRIVEX_TEST_STYLE", QStringLiteral("Default"));
    if (style == QLatin1String("Trivex"))
        style = QStringLiteral(TRIVEX_CONTROLS_STYLE);
    if (!QFileInfo(style).isAbsolute() && !QQuickStyle::availableStyles().contains(style))
        return QStringLiteral("the style %1 is not installed").arg(style);
    if (style.startsWith(QLatin1String("org.kde.desktop")) && !hasWidgets())
        return QStringLiteral("the style %1 draws with widgets").arg(style);
    qputenv("QT_QUICK_CONTROLS_STYLE", style.toUtf8());
    QQuickStyle::setStyle(style);
    return {};
}

ControlsTest::ControlsTest()
{
    Host::collectMessages();
}

void ControlsTest::cleanup()
{
    const QStringList said = Host::takeMessages();
    QVERIFY2(said.isEmpty(), qPrintable(said.join(QLatin1Char('\n'))));
}

void ControlsTest::languagesAndSizes()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QSize>("size");
    for (const QString &locale : {QStringLiteral("en_US"), QStringLiteral("ru_RU")}) {
        for (const QSize &size : {Narrow, Huge})
            QTest::addRow("%s, %d px", qPrintable(locale), size.width()) << locale << size;
    }
}

void ControlsTest::looksWell(const Host &host, const QString &name)
{
    host.picture(
        QStringLiteral("%1-%2-%3").arg(name, QLocale().name().left(2)).arg(host.window()->width()));
    waitUntilStill(host.window());
    const QStringList room = host.lackOfRoom();
    QVERIFY2(room.isEmpty(), qPrintable(name + QLatin1Char('\n') + room.join(QLatin1Char('\n'))));
    const QStringList contrast = host.lackOfContrast();
    QVERIFY2(contrast.isEmpty(),
             qPrintable(name + QLatin1Char('\n') + contrast.join(QLatin1Char('\n'))));
}

} // namespace TrivexTest
