// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/qml/backstage.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QtQuickTest>

namespace {

/// Puts the backstage into each engine, where QuickTest asks for it.
class Setup : public QObject {
    Q_OBJECT
public:
    explicit Setup(TrivexTest::Backstage *backstage)
        : m_backstage(backstage)
    {
    }

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->rootContext()->setContextProperty(QStringLiteral("backstage"), m_backstage);
    }

private:
    TrivexTest::Backstage *m_backstage;
};

} // namespace

int main(int argc, char *argv[])
{
    TrivexTest::Backstage backstage;
    if (!backstage.token().isValid()) {
        qInfo("SKIP %s", qPrintable(backstage.token().problem()));
        return 0;
    }
    Setup setup(&backstage);
    return quick_test_main_with_setup(argc, argv, "qml", nullptr, &setup);
}

#include "main.moc"
