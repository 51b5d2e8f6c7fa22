// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/pages.h"

#include <QApplication>
#include <QDir>
#include <QLocale>
#include <QQmlProperty>
#include <QtTest>

using namespace TrivexTest;

namespace {

struct Look {
    const char *name;
    const char *locale;
    int mode; ///< of the theme: 1 light, 2 dark
    QSize size;
};

const Look looks[] = {{"light", "en_GB", 1, {1180, 760}},   {"dark", "en_GB", 2, {1180, 760}},
                      {"russian", "ru_RU", 1, {1180, 760}}, {"middle", "ru_RU", 1, {780, 700}},
                      {"narrow", "ru_RU", 1, {400, 760}},   {"large", "en_GB", 1, {3840, 2160}}};

bool take(const Look &look, const SampleData &data, const QString &directory, const QString &only)
{
    QLocale::setDefault(QLocale(QLatin1String(look.locale)));
    WindowDriver driver;
    QQuickWindow *window = driver.window();
    driver.setTheme(look.mode);
    window->resize(look.size);
    driver.waitFor([&] { return driver.rowCount() > 0; });
    driver.waitUntilStill();
    bool good = true;
    for (const QString &page : pageNames()) {
        if (!only.isEmpty() && page != only)
            continue;
        if (!visitPage(driver, data, page)) {
            fprintf(stderr, "%s: %s could not be shown\n", look.name, qPrintable(page));
            good = false;
        }
        QTest::mouseMove(window, {1, 1});
        driver.waitUntilStill();
        window->grabWindow().save(
            QStringLiteral("%1/%2-%3.png").arg(directory, QLatin1String(look.name), page));
        leavePage(driver);
    }
    return good;
}

} // namespace

/// Pictures of every page in every look: screenshots <directory> [page] [look]. An empty page is
/// every one.
int main(int argc, char **argv)
{
    WindowEnvironment display;
    SampleData data(display);
    for (const QString &problem : {display.problem(), data.problem()}) {
        if (!problem.isEmpty()) {
            fprintf(stderr, "%s\n", qPrintable(problem));
            return 1;
        }
    }
    QApplication application(argc, argv);
    Trivex::Application::prepare();
    const QStringList arguments = QCoreApplication::arguments();
    const QString directory = arguments.value(1, QStringLiteral("."));
    QDir().mkpath(directory);
    bool good = true;
    const QString only = arguments.value(3);
    for (const Look &look : looks) {
        if (only.isEmpty() || only == QLatin1String(look.name))
            good = take(look, data, directory, arguments.value(2)) && good;
    }
    return good ? 0 : 1;
}
