// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/steps.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFile>
#include <QtTest>

namespace TrivexTest {

bool Steps::show(const char *category)
{
    if (!m_driver.click(QStringLiteral("category-") + QLatin1String(category)))
        return false;
    const bool isShown = m_driver.waitFor([&] {
        return m_driver.window()->property("current").toString() == QLatin1String(category);
    });
    m_driver.waitUntilStill(1000); // a page on which something turns never is
    return isShown;
}

bool Steps::chooseForm(SignatureForm form)
{
    const QString name = QStringLiteral("signatureForm");
    if (!m_driver.waitForItem(name))
        return false;
    QQuickItem *chooser = m_driver.item(name);
    const auto index = [chooser] { return chooser->property("currentIndex").toInt(); };
    for (int step = 0; step < 3 && index() != form; ++step) {
        chooser->forceActiveFocus();
        m_driver.key(index() < form ? Qt::Key_Down : Qt::Key_Up);
    }
    return index() == form;
}

bool Steps::drop(const QMimeData *data)
{
    const QPoint middle(m_driver.window()->width() / 2, m_driver.window()->height() / 2);
    QDragEnterEvent enter(middle, Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton,
                          Qt::NoModifier);
    QCoreApplication::sendEvent(m_driver.window(), &enter);
    if (!enter.isAccepted())
        return false;
    QDragMoveEvent move(middle, Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton,
                        Qt::NoModifier);
    QCoreApplication::sendEvent(m_driver.window(), &move);
    QDropEvent drop(middle, Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_driver.window(), &drop);
    // Never as a move: the sender would delete its file.
    return drop.isAccepted() && drop.dropAction() == Qt::CopyAction;
}

bool Steps::drop(const QList<QUrl> &urls)
{
    QMimeData data;
    data.setUrls(urls);
    return drop(&data);
}

bool Steps::waitOpen(const char *dialog, int ms)
{
    return m_driver.waitFor([&] { return m_driver.isOpen(QLatin1String(dialog)); }, ms);
}

bool Steps::waitClosed(const char *dialog, int ms)
{
    // Out of the scene too: until then the fading dialog swallows clicks.
    return m_driver.waitFor(
        [&] {
            const QObject *found = m_driver.object(QLatin1String(dialog));
            return !found || !found->property("visible").toBool();
        },
        ms);
}

bool Steps::waitEnabled(const char *item, int ms)
{
    return m_driver.waitFor(
        [&] {
            const QQuickItem *found = m_driver.item(QLatin1String(item));
            return found && found->isEnabled();
        },
        ms);
}

bool Steps::press(const char *button)
{
    if (!waitEnabled(button))
        return false;
    m_driver.item(QLatin1String(button))->forceActiveFocus(Qt::TabFocusReason);
    m_driver.key(Qt::Key_Return);
    return true;
}

bool Steps::answerPin(const QString &pin, const char *dialog)
{
    return waitOpen(dialog) && m_driver.fill(QStringLiteral("pinField"), pin)
        && m_driver.click(QStringLiteral("pinAccept"));
}

bool Steps::answerPinUntil(const QString &pin, const std::function<bool()> &done, int ms)
{
    return m_driver.waitFor(
        [&] {
            for (const char *dialog : {"pinPromptDialog", "signPinDialog"}) {
                if (m_driver.isOpen(QLatin1String(dialog)))
                    answerPin(pin, dialog);
            }
            return done();
        },
        ms);
}

QString Steps::text(const char *item) const
{
    const QQuickItem *found = m_driver.item(QLatin1String(item));
    return found ? found->property("text").toString() : QString();
}

QString Steps::flag(const char *field) const
{
    const QQuickItem *found = m_driver.item(QLatin1String(field));
    return found ? found->property("flag").toString() : QString();
}

QString Steps::tokenStoreId() const
{
    const auto *model =
        m_driver.window()->findChild<QAbstractItemModel *>(QStringLiteral("tokens"));
    return model ? valueOf(*model, 0, "storeId").toString() : QString();
}

QString Steps::takeError(int ms)
{
    if (!waitOpen("errorDialog", ms))
        return {};
    const QString cause = text("errorCause");
    // A failure without a next step is only half told.
    if (text("errorAdvice").isEmpty() || !m_driver.click(QStringLiteral("errorClose"))
        || !waitClosed("errorDialog"))
        return {};
    return cause;
}

bool Steps::startKey(const QString &name, const QString &pin)
{
    if (!show("newRequest"))
        return false;
    // The page keeps a key that has no request yet.
    for (const char *over : {"leaveKey", "startOver"}) {
        if (m_driver.item(QLatin1String(over)) && !press(over))
            return false;
    }
    return waitEnabled("keyNameInput") && m_driver.fill(QStringLiteral("keyNameInput"), name)
        && m_driver.fill(QStringLiteral("generatePin"), pin) && waitEnabled("generateButton")
        && m_driver.click(QStringLiteral("generateButton"));
}

bool Steps::chooseProfile(int number)
{
    QQuickItem *chooser = m_driver.item(QStringLiteral("profileChooser"));
    if (!chooser || !m_driver.waitUntilStill())
        return false;
    chooser->forceActiveFocus(Qt::TabFocusReason);
    m_driver.key(Qt::Key_Home);
    for (int i = 0; i < number; ++i)
        m_driver.key(Qt::Key_Down);
    return chooser->property("currentIndex").toInt() == number;
}

bool Steps::waitForKey(int ms)
{
    return waitEnabled("commonNameInput", ms);
}

bool Steps::startImport(const QString &path)
{
    openFile(path);
    return waitOpen("importDialog") && waitEnabled("importAccept")
        && m_driver.click(QStringLiteral("importAccept"));
}

void Steps::leaveTraces(const char *test) const
{
    QStringList open;
    for (const QObject *object : m_driver.window()->findChildren<QObject *>()) {
        if (object->inherits("QQuickPopup") && object->property("visible").toBool())
            open << object->objectName();
    }
    const QQuickItem *focus = m_driver.window()->activeFocusItem();
    qInfo("after %s: page %s; open: %s; focus: %s", test,
          qPrintable(m_driver.window()->property("current").toString()),
          qPrintable(open.join(QLatin1String(", "))),
          focus ? qPrintable(focus->objectName()) : "none");
    m_driver.window()->grabWindow().save(
        QDir::temp().filePath(QStringLiteral("trivex-%1.png").arg(QLatin1String(test))));
}

void Steps::escape()
{
    for (int i = 0; i < 3; ++i)
        m_driver.key(Qt::Key_Escape);
    // A dialog that is fading away still swallows clicks.
    m_driver.waitUntilStill();
    if (m_driver.isOpen(QStringLiteral("editRequestDialog")))
        discardEdits();
}

bool Steps::discardEdits()
{
    if (!m_driver.isOpen(QStringLiteral("leaveEditing")))
        m_driver.key(Qt::Key_Escape);
    return waitOpen("leaveEditing") && press("leaveEditingConfirm")
        && waitClosed("editRequestDialog") && m_driver.waitUntilStill();
}

PinRobot::PinRobot(WindowDriver &driver)
    : m_driver(driver)
{
    m_timer.setInterval(100);
    connect(&m_timer, &QTimer::timeout, this, &PinRobot::look);
    m_timer.start();
}

void PinRobot::answer(const QString &pin)
{
    m_pin = pin;
    m_isOnce = false;
    m_isIdle = false;
}

void PinRobot::answerOnce(const QString &pin)
{
    answer(pin);
    m_isOnce = true;
}

void PinRobot::leave()
{
    answer(QString());
}

void PinRobot::look()
{
    if (m_isIdle)
        return;
    for (const char *dialog : {"pinPromptDialog", "signPinDialog"}) {
        if (!m_driver.isOpen(QLatin1String(dialog)))
            continue;
        m_timer.stop();
        // Before it answers: what comes of it may be seen, and lead to other orders, meanwhile.
        m_isIdle = m_isOnce;
        if (m_pin.isEmpty())
            m_driver.key(Qt::Key_Escape);
        else
            Steps(m_driver).answerPin(m_pin, dialog);
        m_timer.start();
    }
}

QString writeTestFile(const QString &path, const QByteArray &contents)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size() && file.flush();
    return written ? path : QString();
}

QByteArray toPem(const QByteArray &der, const char *label)
{
    const QByteArray text = der.toBase64();
    QByteArray result = QByteArrayLiteral("-----BEGIN ") + label + "-----\n";
    for (int i = 0; i < text.size(); i += 64)
        result += text.mid(i, 64) + '\n';
    return result + "-----END " + label + "-----\n";
}

} // namespace TrivexTest
