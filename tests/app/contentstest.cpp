// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/contentstest.h"

#include "tests/app/filedialogs.h"
#include "tests/support/userfiles.h"

#include <QtTest>

namespace TrivexTest {

void ContentsTest::prepare()
{
    writeTestFile(m_authority.file(QStringLiteral("key.pem")),
                  run(QStringLiteral("genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:2048")));
}

void ContentsTest::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.label()));
}

void ContentsTest::begin()
{
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(m_steps->show("personal"));
}

void ContentsTest::restore()
{
    m_window->window()->requestActivate();
}

QByteArray ContentsTest::certificate(const char *name) const
{
    return run(QStringLiteral("req -x509 -key key.pem -days 90 -utf8 -subj /CN=")
               + QString::fromUtf8(name));
}

bool ContentsTest::bring(int way, const QString &path)
{
    switch (way) {
    case CommandLine:
        m_steps->openFile(path);
        return true;
    case Drop:
        return m_steps->drop({QUrl::fromLocalFile(path)});
    default:
        m_window->key(Qt::Key_O, Qt::ControlModifier);
        return answerFileDialog(*m_window, path);
    }
}

int ContentsTest::items() const
{
    const QQuickItem *list = m_window->item(QStringLiteral("itemList"));
    return list ? list->property("count").toInt() : 0;
}

bool ContentsTest::turn(const QString &name)
{
    QQuickItem *tick = nullptr;
    m_window->waitFor([&] {
        visitItems(m_window->item(QStringLiteral("itemList")), [&](QQuickItem *item) {
            if (item->objectName() == QLatin1String("itemTick")
                && item->parentItem()->parentItem()->property("name").toString() == name)
                tick = item;
        });
        return tick != nullptr;
    });
    m_window->waitUntilStill(); // the dialog has its size
    return m_window->clickItem(tick);
}

bool ContentsTest::choosePlace(const QString &name)
{
    QQuickItem *box = m_window->item(QStringLiteral("tokenChooser"));
    if (!box)
        return false;
    box->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Home);
    for (int i = 0; i < 5 && box->property("displayText").toString() != name; ++i)
        m_window->key(Qt::Key_Down);
    return box->property("displayText").toString() == name;
}

bool ContentsTest::import()
{
    return m_window->click(QStringLiteral("importAccept"))
        && m_steps->answerPinUntil(
            rightPin(), [&] { return !m_window->isOpen(QStringLiteral("importDialog")); });
}

QStringList ContentsTest::files() const
{
    return QDir(userFolder()).entryList(QDir::Files);
}

void ContentsTest::removeFiles()
{
    const QStringList names = files();
    for (const QString &name : names)
        QFile::remove(userFile(name));
}

} // namespace TrivexTest
