// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/tokens.h"
#include "tests/app/windowtest.h"
#include "tests/pkcs11/faultytoken.h"

#include <QClipboard>
#include <QQmlProperty>
#include <QtTest>

using namespace TrivexTest;
using Trivex::TokenKeyFacts;
using Trivex::TokenMonitor;

/// Keys without a certificate and the facts of a token, in the window over a token.
class TestAppBareKeys : public TokenWindowTest<FaultyToken> {
    Q_OBJECT
public:
    using TokenWindowTest::TokenWindowTest;

private Q_SLOTS:
    void init();

    void keysAreASection();
    void detailsOfAKey();
    void searchFindsKeys();
    void narrowWindow();
    void hiddenKeysAreShown();
    void certificateTakesTheRow();
    void removalIsLeft();
    void removalFails();
    void requestForTheKey();
    void requestIsNamedBeforeRemoval();
    void removalByKeyboard();
    void severalAtOnce();
    void facts();
    void factsByKeyboard();

private:
    void prepare() override;
    void arrive() override;
    void restore() override { m_token.control(); }

    bool showToken();
    bool freshToken();
    bool pick(const char *name);
    QByteArray publicInfo(const char *label) const;
    QString detail() const;
    int halves(const char *label) const;
    QString factsText() const;
};

void TestAppBareKeys::prepare()
{
    const TestToken &token = m_token.token();
    const auto make = [&token](const char *kind, const char *id, const char *label) {
        return token.generateKeyPair(QLatin1String(kind), QLatin1String(id), QLatin1String(label));
    };
    QVERIFY(make("rsa:2048", "01", "signer"));
    QVERIFY(token.writeObject(
        QStringLiteral("cert"),
        m_authority.issue(token.publicKey(QStringLiteral("01")), QStringLiteral("/CN=Signer")),
        QStringLiteral("01"), QStringLiteral("signer")));
    QVERIFY(make("rsa:2048", "02", "web"));
    for (const char *label : {"mail", "old", "older", "spare"})
        QVERIFY(make("EC:secp384r1", label[0] == 'm' ? "03" : "04", label));
    QVERIFY(make("EC:secp256r1", "07", "hidden"));
    QVERIFY(token.removeObject(QStringLiteral("pubkey"), QStringLiteral("07")));
}

void TestAppBareKeys::arrive()
{
    QVERIFY(m_window->waitForItem(QStringLiteral("token-") + m_token.token().label()));
}

void TestAppBareKeys::init()
{
    m_window->window()->resize(1180, 760);
    QVERIFY(m_steps->show("personal"));
    QVERIFY(showToken());
}

bool TestAppBareKeys::showToken()
{
    return m_window->click(QStringLiteral("token-") + m_token.token().label())
        && m_window->waitFor([this] { return m_window->rowNamed(QStringLiteral("web")) >= 0; });
}

bool TestAppBareKeys::freshToken()
{
    const bool isBack = m_token.replug(m_steps->tokenStoreId());
    m_token.forget();
    return isBack && m_window->waitFor([this] {
        return m_window->rowNamed(QStringLiteral("web")) >= 0
            && m_window->rowNamed(QStringLiteral("Signer")) >= 0;
    }) && m_window->waitUntilStill();
}

bool TestAppBareKeys::pick(const char *name)
{
    return m_window->clickRow(m_window->rowNamed(QLatin1String(name)))
        && m_window->waitFor([&] { return detail() == QLatin1String(name); });
}

QByteArray TestAppBareKeys::publicInfo(const char *label) const
{
    const auto keys = TokenMonitor::token(m_steps->tokenStoreId()).keyFacts;
    for (const TokenKeyFacts &key : keys) {
        if (key.label == QLatin1String(label))
            return key.publicInfo;
    }
    return {};
}

/// The name of the key that is shown in detail.
QString TestAppBareKeys::detail() const
{
    const QQuickItem *details = m_window->item(QStringLiteral("keyDetails"));
    return details ? details->property("name").toString() : QString();
}

int TestAppBareKeys::halves(const char *label) const
{
    const QByteArray all = m_token.token().tool({QStringLiteral("--list-objects")});
    return all.count(QByteArray("label:      ") + label + '\n');
}

QString TestAppBareKeys::factsText() const
{
    QString text;
    const QQuickItem *view = m_window->item(QStringLiteral("tokenFacts"));
    auto *facts = view ? view->property("facts").value<QObject *>() : nullptr;
    if (facts)
        QMetaObject::invokeMethod(facts, "text", Q_RETURN_ARG(QString, text));
    return text;
}

void TestAppBareKeys::keysAreASection()
{
    QVERIFY(m_window->waitFor([this] { return m_window->rowCount() == 6; }));
    const auto *list = m_window->item(QStringLiteral("certificateList"));
    QCOMPARE(
        QQmlProperty(const_cast<QQuickItem *>(list), QStringLiteral("section.property")).read(),
        QVariant(QStringLiteral("section")));
    const auto *model = list->property("model").value<QAbstractItemModel *>();
    QCOMPARE(valueOf(*model, m_window->rowNamed(QStringLiteral("web")), "section").toString(),
             qtTrId("trivex-app-keys-bare"));
    QCOMPARE(valueOf(*model, m_window->rowNamed(QStringLiteral("Signer")), "section").toString(),
             qtTrId("trivex-app-section-certificates"));
    QVERIFY(m_window->rowNamed(QStringLiteral("Signer"))
            < m_window->rowNamed(QStringLiteral("mail")));
    QVERIFY(m_window->rowNamed(QStringLiteral("mail")) < m_window->rowNamed(QStringLiteral("web")));
    // Of every other list they are no part.
    QVERIFY(m_steps->show("personal"));
    QVERIFY(m_window->waitFor([this] { return m_window->rowCount() == 1; }));
}

void TestAppBareKeys::detailsOfAKey()
{
    QVERIFY(pick("web"));
    QVERIFY(m_window->item(QStringLiteral("keyRequestButton")));
    QVERIFY(m_window->click(QStringLiteral("copyKeyButton")));
    const QString copied = QApplication::clipboard()->text();
    QVERIFY2(copied.contains(QStringLiteral("2048")), qPrintable(copied));
    QVERIFY(copied.contains(qtTrId("trivex-app-key-row-id") + QStringLiteral(": 02")));
    QVERIFY(copied.contains(m_token.token().label()));
    // A document is signed with a certificate, and a key alone is no file.
    QVERIFY(!m_window->item(QStringLiteral("signButton")));
    QVERIFY(!m_window->item(QStringLiteral("exportButton")));
    // From key to certificate and back.
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("Signer"))));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    QVERIFY(!m_window->item(QStringLiteral("keyDetails")));
    QVERIFY(pick("mail"));
}

void TestAppBareKeys::searchFindsKeys()
{
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QStringLiteral("WEB")));
    QVERIFY(m_window->waitFor([this] { return m_window->rowCount() == 1; }));
    QVERIFY(m_window->rowNamed(QStringLiteral("web")) == 0);
    QVERIFY(m_window->fill(QStringLiteral("searchField"), QString()));
    m_window->key(Qt::Key_Escape);
}

void TestAppBareKeys::narrowWindow()
{
    m_window->window()->resize(400, 760);
    QVERIFY(m_window->waitUntilStill());
    QVERIFY(m_window->clickRow(m_window->rowNamed(QStringLiteral("web"))));
    QVERIFY(m_window->waitForItem(QStringLiteral("keyDetails")));
    QVERIFY(m_window->waitForItem(QStringLiteral("backButton")));
    QVERIFY(m_window->click(QStringLiteral("backButton")));
    QVERIFY(m_window->waitFor([this] { return m_window->rowCount() == 6; }));
}

void TestAppBareKeys::hiddenKeysAreShown()
{
    QVERIFY(freshToken());
    QCOMPARE(m_window->rowNamed(QStringLiteral("hidden")), -1);
    QVERIFY(m_window->waitForItem(QStringLiteral("keysNotice")));
    QVERIFY(m_window->click(QStringLiteral("keysNoticeAction")));
    QVERIFY(m_steps->waitOpen("pinPromptDialog"));
    QVERIFY(m_steps->answerPin(rightPin()));
    QVERIFY(
        m_window->waitFor([this] { return m_window->rowNamed(QStringLiteral("hidden")) >= 0; }));
    QCOMPARE(m_token.count("C_Login"), 1);
    QVERIFY(m_window->waitFor([this] { return !m_window->item(QStringLiteral("keysNotice")); }));
    QVERIFY(pick("hidden"));
    // What the token doesn't show can't be certified, and that is said.
    QVERIFY(!m_window->item(QStringLiteral("keyRequestButton")));
    QVERIFY(m_window->item(QStringLiteral("keyRequestNotice")));
}

/// The same key stays chosen, whichever row stands for it.
void TestAppBareKeys::certificateTakesTheRow()
{
    QVERIFY(pick("mail"));
    const QString file =
        writeTestFile(inHome(QStringLiteral("mail.crt")),
                      toPem(m_authority.issue(publicInfo("mail"), QStringLiteral("/CN=Mail"))));
    answerPins(rightPin());
    QVERIFY(m_steps->startImport(file));
    QVERIFY(m_steps->waitClosed("importDialog"));
    QVERIFY(m_window->waitFor([this] { return m_window->rowNamed(QStringLiteral("Mail")) >= 0; }));
    QVERIFY(m_window->waitFor([this] { return m_window->rowNamed(QStringLiteral("mail")) < 0; }));
    QVERIFY(m_window->waitForItem(QStringLiteral("detailsView")));
    const auto *list = m_window->item(QStringLiteral("certificateList"));
    QVERIFY(m_window->waitFor([&] {
        return list->property("currentIndex").toInt() == m_window->rowNamed(QStringLiteral("Mail"));
    }));
    // And back, when another program takes the certificate away.
    QVERIFY(m_token.token().removeObject(QStringLiteral("cert"), QStringLiteral("03")));
    QVERIFY(freshToken());
    QVERIFY(m_window->waitFor([this] { return detail() == QLatin1String("mail"); }));
    QVERIFY(m_window->waitFor([&] {
        return list->property("currentIndex").toInt() == m_window->rowNamed(QStringLiteral("mail"));
    }));
}

void TestAppBareKeys::removalIsLeft()
{
    QVERIFY(pick("old"));
    QVERIFY(m_window->click(QStringLiteral("removeKeyButton")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QVERIFY(m_window->click(QStringLiteral("removeCancel")));
    QVERIFY(m_steps->waitClosed("removeDialog"));
    QCOMPARE(halves("old"), 2);
    QVERIFY(m_window->rowNamed(QStringLiteral("old")) >= 0);
}

void TestAppBareKeys::removalFails()
{
    QVERIFY(pick("old"));
    answerPins(rightPin());
    m_token.control("fail C_DestroyObject 2 CKR_FUNCTION_FAILED");
    QVERIFY(m_window->click(QStringLiteral("removeKeyButton")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QVERIFY(m_window->click(QStringLiteral("removeConfirm")));
    QVERIFY(!m_steps->takeError().isEmpty());
    m_token.control();
    QCOMPARE(halves("old"), 2);
    QVERIFY(m_window->rowNamed(QStringLiteral("old")) >= 0);
    QCOMPARE(detail(), QStringLiteral("old"));
}

void TestAppBareKeys::requestForTheKey()
{
    QVERIFY(pick("web"));
    const QByteArray wanted = publicInfo("web");
    answerPins(rightPin());
    QVERIFY(m_window->click(QStringLiteral("keyRequestButton")));
    QVERIFY(m_window->waitForItem(QStringLiteral("existingKeyNotice")));
    QVERIFY(!m_window->item(QStringLiteral("generateButton")));
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Web Server")));
    const int before = m_token.count("C_GenerateKeyPair");
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    QCOMPARE(m_token.count("C_GenerateKeyPair"), before);
    // Another program finds the key's public half in it, and its signature good.
    const QString file = inHome(QStringLiteral("CertificateRequest/Web Server.csr"));
    const QByteArray pem = m_authority.openssl({QStringLiteral("req"), QStringLiteral("-in"), file,
                                                QStringLiteral("-noout"), QStringLiteral("-verify"),
                                                QStringLiteral("-pubkey")});
    // Newer programs say before it that the signature is good.
    const int begin = pem.indexOf("BEGIN PUBLIC KEY");
    QVERIFY2(begin >= 0, pem.constData());
    QByteArray body = pem.mid(pem.indexOf('\n', begin) + 1);
    body = QByteArray::fromBase64(body.left(body.indexOf("-----END")));
    QCOMPARE(body, wanted);
}

void TestAppBareKeys::requestIsNamedBeforeRemoval()
{
    // A request for a key that this test makes on the page itself.
    answerPins(rightPin());
    QVERIFY(m_steps->startKey(QStringLiteral("waiting"), rightPin()));
    QVERIFY(m_steps->waitForKey());
    QVERIFY(m_window->fill(QStringLiteral("commonNameInput"), QStringLiteral("Petrova")));
    QVERIFY(m_steps->press("createRequest"));
    QVERIFY(m_window->waitForItem(QStringLiteral("savedCard")));
    QVERIFY(showToken());
    QVERIFY(
        m_window->waitFor([this] { return m_window->rowNamed(QStringLiteral("waiting")) >= 0; }));
    QVERIFY(pick("waiting"));
    QVERIFY(m_window->waitForItem(QStringLiteral("keyRequestNotice")));
    const QQuickItem *notice = m_window->item(QStringLiteral("keyRequestNotice"));
    QVERIFY(notice->property("text").toString().contains(QStringLiteral("Petrova")));
    QVERIFY(m_window->click(QStringLiteral("removeKeyButton")));
    QVERIFY(m_steps->waitOpen("removeDialog"));
    const QQuickItem *warning = m_window->item(QStringLiteral("removeRequestsNotice"));
    QVERIFY(warning);
    QVERIFY(warning->property("text").toString().contains(QStringLiteral("Petrova")));
    m_window->key(Qt::Key_Escape);
    QVERIFY(m_steps->waitClosed("removeDialog"));
    QCOMPARE(halves("waiting"), 2);
}

void TestAppBareKeys::removalByKeyboard()
{
    QVERIFY(freshToken());
    answerPins(rightPin());
    QVERIFY(pick("old"));
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QVERIFY(m_steps->press("removeConfirm"));
    QVERIFY(m_window->waitFor([this] { return m_window->rowNamed(QStringLiteral("old")) < 0; }));
    QVERIFY(m_window->waitForItem(QStringLiteral("toastText")));
    QTRY_COMPARE(m_steps->text("toastText"), qtTrId("trivex-app-key-removed"));
    QCOMPARE(m_token.count("C_Login"), 1);
    QCOMPARE(halves("old"), 0);
    // That of the same id and the certificate are where they were.
    QCOMPARE(halves("older"), 2);
    QVERIFY(m_window->rowNamed(QStringLiteral("Signer")) >= 0);
    QVERIFY(m_window->waitFor([this] { return detail().isEmpty(); }));
}

void TestAppBareKeys::severalAtOnce()
{
    answerPins(rightPin());
    QVERIFY(pick("older"));
    m_window->key(Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(m_window->waitForItem(QStringLiteral("selectionCount")));
    QVERIFY(!m_window->item(QStringLiteral("keyDetails")));
    m_window->key(Qt::Key_C, Qt::ControlModifier);
    QTRY_VERIFY(QApplication::clipboard()->text().startsWith(QStringLiteral("older, ")));
    m_window->key(Qt::Key_Delete);
    QVERIFY(m_steps->waitOpen("removeDialog"));
    QVERIFY(m_window->click(QStringLiteral("removeConfirm")));
    QVERIFY(m_window->waitFor([this] {
        return m_window->rowNamed(QStringLiteral("older")) < 0
            && m_window->rowNamed(QStringLiteral("spare")) < 0;
    }));
    QCOMPARE(halves("older") + halves("spare"), 0);
    QCOMPARE(halves("web"), 2);
}

void TestAppBareKeys::facts()
{
    QVERIFY(m_window->click(QStringLiteral("tokenFactsButton")));
    QVERIFY(m_steps->waitOpen("tokenFactsDialog"));
    QVERIFY(m_window->waitFor(
        [this] { return factsText().contains(qtTrId("trivex-app-ability-makes")); }));
    const QString text = factsText();
    for (const QString &wanted :
         {m_token.token().label(), QStringLiteral("SoftHSM"), qtTrId("trivex-app-tries-all"),
          QString(qtTrId("trivex-app-token-certificates") + QStringLiteral(": 1")),
          qtTrId("trivex-app-ability-rsa")})
        QVERIFY2(text.contains(wanted), qPrintable(wanted + text));
    QVERIFY(m_window->click(QStringLiteral("tokenFactsCopy")));
    QCOMPARE(QApplication::clipboard()->text(), text);
    // Taken out under one's eyes.
    m_token.control("final-try");
    QVERIFY(
        m_window->waitFor([this] { return factsText().contains(qtTrId("trivex-app-tries-one")); }));
    m_token.control("remove");
    QVERIFY(m_window->waitFor(
        [this] { return !factsText().contains(qtTrId("trivex-app-ability-makes")); }));
    m_token.control();
    QVERIFY(m_window->waitFor(
        [this] { return factsText().contains(qtTrId("trivex-app-ability-makes")); }));
    QVERIFY(m_window->click(QStringLiteral("tokenFactsClose")));
    QVERIFY(m_steps->waitClosed("tokenFactsDialog"));
    QVERIFY(showToken());
}

void TestAppBareKeys::factsByKeyboard()
{
    auto *button = m_window->item(QStringLiteral("tokenFactsButton"));
    QVERIFY(button);
    button->forceActiveFocus(Qt::TabFocusReason);
    m_window->key(Qt::Key_Space);
    QVERIFY(m_steps->waitOpen("tokenFactsDialog"));
    m_window->key(Qt::Key_Return);
    QVERIFY(m_steps->waitClosed("tokenFactsDialog"));
}

int main(int argc, char **argv)
{
    return runTokenWindowTest<TestAppBareKeys, FaultyToken>(argc, argv, QStringLiteral("Ключи"));
}

#include "tst_app_barekeys.moc"
