// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/app/harness.h"

#include <QMimeData>
#include <QUrl>

namespace TrivexTest {

/// What the tests of single flows do with the window again and again, by mouse and keyboard.
class Steps {
public:
    explicit Steps(WindowDriver &driver)
        : m_driver(driver)
    {
    }

    /// Chooses a page in the side bar: "personal", "requests", "newRequest", "sign", …
    bool show(const char *category);
    /// The kinds of signature on the page that signs, in their order there.
    enum SignatureForm { Detached, Attached, Raw };
    /// Chooses one of them by keyboard.
    bool chooseForm(SignatureForm form);
    void openFile(const QString &path) { m_driver.application().activate({path}); }
    /// Drags something over the middle of the window and lets it go; whether it was taken.
    bool drop(const QMimeData *data);
    bool drop(const QList<QUrl> &urls);
    bool waitOpen(const char *dialog, int ms = Patience);
    bool waitClosed(const char *dialog, int ms = Patience);
    /// Waits for `item` to be there and enabled.
    bool waitEnabled(const char *item, int ms = Patience);
    /// Presses a button by keyboard, wherever it has been scrolled to.
    bool press(const char *button);
    /// Types into the PIN question, once it is there, and sends it.
    bool answerPin(const QString &pin, const char *dialog = "pinPromptDialog");
    /// Answers PIN questions with `pin` until `done` holds.
    bool answerPinUntil(const QString &pin, const std::function<bool()> &done, int ms = Patience);
    /// The text of a visible item; null when there is none.
    QString text(const char *item) const;
    QString flag(const char *field) const;
    /// The key store id of the first token in the side bar; empty without one.
    QString tokenStoreId() const;
    /// Closes the error dialog, once it is there; what it says is the cause.
    QString takeError(int ms = Patience);
    /// Starts a key on the new request page.
    bool startKey(const QString &name, const QString &pin);
    /// Chooses a kind of request on that page by its place in the list: 0 "Simple", 1 web server,
    /// 2 mail, 3 Russian person, 4 Russian company.
    bool chooseProfile(int number);
    /// Waits until the subject can be filled in.
    bool waitForKey(int ms = Patience);
    /// Opens a certificate file in the import dialog and confirms it.
    bool startImport(const QString &path);

    /// What a failed test leaves behind for whoever looks into it: a line in the log, a picture in
    /// the folder for temporary files.
    void leaveTraces(const char *test) const;
    /// Leaves whatever is open.
    void escape();
    /// Leaves the changes of a request, and agrees that they are lost.
    bool discardEdits();

private:
    WindowDriver &m_driver;
};

/// Sees to PIN questions from a timer: an operation that was started by a press returns only when
/// it has ended, so nobody else could.
class PinRobot : public QObject {
    Q_OBJECT
public:
    explicit PinRobot(WindowDriver &driver);

    /// What is done about the next questions.
    void answer(const QString &pin);
    /// Answers the next question; those that follow stay open until somebody says what to do.
    void answerOnce(const QString &pin);
    void leave();

private:
    void look();

    WindowDriver &m_driver;
    QTimer m_timer;
    QString m_pin;
    bool m_isOnce = false;
    bool m_isIdle = false;
};

/// Writes a file; the path, or an empty one when that failed.
QString writeTestFile(const QString &path, const QByteArray &contents);
/// One DER certificate or request in PEM.
QByteArray toPem(const QByteArray &der, const char *label = "CERTIFICATE");

} // namespace TrivexTest
