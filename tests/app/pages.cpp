// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/pages.h"

#include "tests/app/steps.h"
#include "tests/support/userfiles.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QtTest>

#include <memory>

namespace TrivexTest {

namespace {

const char identifiers[] =
    "/1.2.643.3.131.1.1=500100732259/1.2.643.100.3=11223344595/1.2.643.100.1=1027700132195"
    "/1.2.643.100.4=7707083893/1.2.643.100.5=304500116000157";

bool writeFile(const QString &path, const QByteArray &contents)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

QString samplePicture(const QString &path)
{
    QImage image(320, 240, QImage::Format_RGB32);
    image.fill(QColor(0xdc, 0xf3, 0xe5));
    QPainter painter(&image);
    painter.fillRect(60, 50, 200, 140, QColor(0x1a, 0x66, 0xdd));
    painter.fillRect(90, 90, 140, 16, Qt::white);
    painter.fillRect(90, 120, 100, 16, Qt::white);
    painter.end();
    image.save(path);
    return path;
}

void openDialog(WindowDriver &driver, const char *name)
{
    QMetaObject::invokeMethod(driver.object(QLatin1String(name)), "open");
    driver.waitFor([&] { return driver.isOpen(QLatin1String(name)); });
}

void showPinDialog(WindowDriver &driver, const SampleData &data)
{
    QObject *dialog = driver.object(QStringLiteral("pinPromptDialog"));
    dialog->setProperty("tokenName", data.tokenName());
    dialog->setProperty("purposeText", qtTrId("trivex-app-purpose-write"));
    dialog->setProperty("pinText", qtTrId("trivex-app-pin-final"));
    dialog->setProperty("lastTry", true);
    openDialog(driver, "pinPromptDialog");
}

void showErrorDialog(WindowDriver &driver)
{
    QMetaObject::invokeMethod(driver.object(QStringLiteral("errorDialog")), "show",
                              Q_ARG(QVariant, qtTrId("trivex-app-cause-removed")),
                              Q_ARG(QVariant, qtTrId("trivex-app-advice-removed")),
                              Q_ARG(QVariant, QStringLiteral("report")));
    driver.waitFor([&] { return driver.isOpen(QStringLiteral("errorDialog")); });
}

void openBundle(WindowDriver &driver, const QStringList &files)
{
    driver.application().activate(files);
    driver.waitFor([&] { return driver.isOpen(QStringLiteral("importDialog")); });
    // The first, empty try has ended, and the dialog has its size.
    driver.waitForItem(QStringLiteral("importProblem"));
    driver.waitUntilStill();
}

void showLockedBundle(WindowDriver &driver, const SampleData &data)
{
    openBundle(driver, {data.bundle()});
}

/// The same, with files that are asked about after it.
void showWaitingFiles(WindowDriver &driver, const SampleData &data)
{
    QStringList files = {data.bundle()};
    for (int i = 1; i < 300; ++i)
        files << data.bundle() + QString::number(i);
    openBundle(driver, files);
}

void showImportDialog(WindowDriver &driver, const SampleData &data)
{
    showLockedBundle(driver, data);
    driver.fill(QStringLiteral("bundlePassword"), QStringLiteral("secret"));
    driver.key(Qt::Key_Return);
    driver.waitFor([&] {
        const QQuickItem *accept = driver.item(QStringLiteral("importAccept"));
        return accept && accept->isEnabled();
    });
}

} // namespace

void visitItems(QQuickItem *item, const std::function<void(QQuickItem *)> &look)
{
    if (!item->isVisible())
        return;
    look(item);
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children)
        visitItems(child, look);
}

QString describeItem(const QQuickItem *item)
{
    QString text =
        QLatin1String(item->metaObject()->className()) + QLatin1Char(' ') + item->objectName();
    for (const QQuickItem *up = item->parentItem(); up; up = up->parentItem()) {
        if (!up->objectName().isEmpty())
            return text + QStringLiteral(" in ") + up->objectName();
    }
    return text;
}

SampleData::SampleData(WindowEnvironment &environment)
    : m_token(QStringLiteral("Рабочий токен"))
    , m_authority(QStringLiteral("Удостоверяющий центр «Пример»"))
{
    m_problem = m_token.problem();
    if (m_problem.isEmpty() && !m_authority.isValid())
        m_problem = QStringLiteral("the openssl program does not work");
    if (!m_problem.isEmpty())
        return;
    m_token.useInThisProcess();
    fillToken();
    fillFiles(environment);
}

QByteArray SampleData::issue(const QByteArray &publicKey, const QString &subject) const
{
    // Through a request, because only that reads the subject as UTF-8; the key is the token's.
    const QString key = m_authority.file(QStringLiteral("subject.der"));
    const QString request = m_authority.file(QStringLiteral("subject.csr"));
    writeFile(key, publicKey);
    m_authority.openssl({QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
                         QStringLiteral("rsa:2048"), QStringLiteral("-nodes"),
                         QStringLiteral("-keyout"), QStringLiteral("/dev/null"),
                         QStringLiteral("-utf8"), QStringLiteral("-subj"), subject,
                         QStringLiteral("-out"), request});
    const QString keyPem = m_authority.file(QStringLiteral("subject.pem"));
    m_authority.openssl({QStringLiteral("pkey"), QStringLiteral("-pubin"),
                         QStringLiteral("-inform"), QStringLiteral("DER"), QStringLiteral("-in"),
                         key, QStringLiteral("-out"), keyPem});
    return m_authority.openssl(
        {QStringLiteral("x509"), QStringLiteral("-req"), QStringLiteral("-in"), request,
         QStringLiteral("-force_pubkey"), keyPem, QStringLiteral("-CA"),
         m_authority.certificateFile(), QStringLiteral("-CAkey"),
         m_authority.file(QStringLiteral("ca.key")), QStringLiteral("-CAcreateserial"),
         QStringLiteral("-days"), QStringLiteral("365"), QStringLiteral("-outform"),
         QStringLiteral("DER")});
}

bool SampleData::put(const QString &keyType, const QString &id, const QString &subject)
{
    return m_token.generateKeyPair(keyType, id, id)
        && m_token.writeObject(QStringLiteral("cert"), issue(m_token.publicKey(id), subject), id,
                               id);
}

void SampleData::fillToken()
{
    const bool done =
        put(QStringLiteral("rsa:2048"), QStringLiteral("01"),
            QStringLiteral("/CN=Иванова Мария Петровна/O=АО «Пример»/OU=Бухгалтерия/L=Москва"
                           "/ST=г. Москва/C=RU/emailAddress=m.ivanova@example.org")
                + QLatin1String(identifiers))
        && put(QStringLiteral("EC:secp384r1"), QStringLiteral("02"),
               QStringLiteral("/CN=build.example.org/O=Example Ltd/C=GB"))
        && m_token.writeObject(QStringLiteral("cert"), m_authority.certificate(),
                               QStringLiteral("03"), QStringLiteral("ca"));
    if (!done)
        m_problem = QStringLiteral("the token could not be filled");
}

void SampleData::putRevocationList() const
{
    const QString index = m_authority.file(QStringLiteral("index.txt"));
    const QString settings = m_authority.file(QStringLiteral("list.conf"));
    writeFile(index, {});
    writeFile(settings,
              "[ca]\ndefault_ca=d\n[d]\ndefault_md=sha256\ndatabase=" + QFile::encodeName(index)
                  + '\n');
    const QByteArray list = m_authority.openssl(
        {QStringLiteral("ca"), QStringLiteral("-gencrl"), QStringLiteral("-config"), settings,
         QStringLiteral("-keyfile"), m_authority.file(QStringLiteral("ca.key")),
         QStringLiteral("-cert"), m_authority.certificateFile(), QStringLiteral("-crldays"),
         QStringLiteral("30")});
    writeFile(userFile(QStringLiteral("list.crl")), list);
}

void SampleData::fillFiles(WindowEnvironment &environment)
{
    const QStringList lifetimes = {QStringLiteral("11"), QStringLiteral("700")};
    for (const QString &days : lifetimes) {
        const QString subject = days == lifetimes.first()
            ? QStringLiteral("/CN=maria.ivanova@example.org/O=Example Ltd")
            : QStringLiteral("/CN=Сервер обновлений/O=АО «Пример»/1.2.643.3.131.1.1=500100732258");
        const QByteArray certificate = m_authority.openssl(
            {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
             QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
             QStringLiteral("/dev/null"), QStringLiteral("-utf8"), QStringLiteral("-subj"), subject,
             QStringLiteral("-days"), days});
        writeFile(userFile(days + QStringLiteral(".pem")), certificate);
    }
    const QByteArray request = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-newkey"),
         QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         QStringLiteral("/dev/null"), QStringLiteral("-utf8"), QStringLiteral("-subj"),
         QStringLiteral("/CN=Сидоров Павел/O=АО «Пример»/C=RU")});
    writeFile(environment.file(QStringLiteral("CertificateRequest/Сидоров Павел.csr")), request);
    m_bundle = m_authority.bundle({QStringLiteral("-algorithm"), QStringLiteral("RSA")},
                                  QStringLiteral("/CN=Pavel Petrov/O=Example Ltd"),
                                  QStringLiteral("secret"), QStringLiteral("Петров"));
    m_picture = samplePicture(environment.file(QStringLiteral("plan.png")));
}

QStringList pageNames()
{
    QStringList names;
    for (const char *name :
         {"personal",   "details",       "search",   "users",       "roots",       "others",
          "system",     "token",         "requests", "new-request", "sign",        "settings",
          "import",     "pin",           "remove",   "error",       "manual",      "pem",
          "structure",  "step",          "filters",  "token-menu",  "token-facts", "change-pin",
          "unblock",    "initialise",    "unfolded", "expired",     "undo",        "help",
          "export-key", "lists",         "signed",   "checked",     "new-token",   "leave-editing",
          "quit",       "waiting-import"})
        names += QLatin1String(name);
    return names;
}

namespace {

/// A page of the window, and what a press on one of its buttons opens there.
struct Opening {
    const char *name;
    const char *page;
    QVector<const char *> presses;
    const char *opened; ///< a dialog, a menu or an item
};

const Opening *openingOf(const QString &name)
{
    static const Opening openings[] = {
        {"pem", "details", {"pemTab"}, "encodedText"},
        {"structure", "details", {"structureTab"}, "encodedText"},
        {"step", "details", {"chainStep1"}, "stepDialog"},
        {"filters", "personal", {"filterButton"}, "filterMenu"},
        {"token-menu", "token", {"tokenMenuButton"}, "tokenMenu"},
        {"token-facts", "token", {"tokenFactsButton"}, "tokenFactsDialog"},
        {"change-pin", "token", {"tokenMenuButton", "tokenChangePin"}, "changePinDialog"},
        {"unblock", "token", {"tokenMenuButton", "tokenUnblock"}, "unblockDialog"},
        {"initialise", "token", {"tokenMenuButton", "tokenInitialise"}, "initialiseDialog"},
        {"unfolded", "new-request", {"unfoldRequest"}, "unfoldRequest"}};
    const auto *found =
        std::find_if(std::begin(openings), std::end(openings),
                     [&](const auto &one) { return name == QLatin1String(one.name); });
    return found == std::end(openings) ? nullptr : found;
}

bool showPage(WindowDriver &driver, const SampleData &data, const QString &page);

bool showOpening(WindowDriver &driver, const SampleData &data, const Opening &opening)
{
    if (!showPage(driver, data, QLatin1String(opening.page)))
        return false;
    Steps steps(driver);
    for (const char *name : opening.presses) {
        const bool menu = name != opening.presses.first();
        if (!driver.waitForItem(QLatin1String(name)) || !driver.waitUntilStill()
            || !(menu ? driver.click(QLatin1String(name)) : steps.press(name)))
            return false;
    }
    return driver.waitFor([&] {
        return driver.isOpen(QLatin1String(opening.opened))
            || driver.item(QLatin1String(opening.opened));
    });
}

void showExpiredQuestion(WindowDriver &driver)
{
    QMetaObject::invokeMethod(driver.window(), "show", Q_ARG(QVariant, QStringLiteral("sign")));
    driver.waitFor([&] { return driver.object(QStringLiteral("confirmExpired")); });
    QObject *dialog = driver.object(QStringLiteral("confirmExpired"));
    dialog->setProperty("name", QStringLiteral("Иванова Мария Петровна"));
    dialog->setProperty("reason",
                        qtTrId("trivex-app-expired-text").arg(QStringLiteral("22.11.2020")));
    openDialog(driver, "confirmExpired");
}

void showQuitQuestion(WindowDriver &driver)
{
    const QStringList lines{qtTrId("trivex-app-quit-removal"), qtTrId("trivex-app-quit-changes")};
    QMetaObject::invokeMethod(driver.object(QStringLiteral("quitDialog")), "ask",
                              Q_ARG(QVariant, lines));
    driver.waitForItem(QStringLiteral("quitConfirm"));
}

void showKeyExport(WindowDriver &driver)
{
    QObject *dialog = driver.object(QStringLiteral("keyExportDialog"));
    dialog->setProperty("name", QStringLiteral("Иванова Мария Петровна"));
    openDialog(driver, "keyExportDialog");
    driver.fill(QStringLiteral("exportPassword"), QStringLiteral("secret"));
    driver.fill(QStringLiteral("exportPasswordAgain"), QStringLiteral("other"));
}

bool showLists(WindowDriver &driver, const SampleData &data)
{
    data.putRevocationList();
    QMetaObject::invokeMethod(driver.window(), "show", Q_ARG(QVariant, QStringLiteral("users")));
    // The page takes the keys first.
    if (!driver.waitForItem(QStringLiteral("listsNotice")) || !driver.waitUntilStill())
        return false;
    openDialog(driver, "revocationListsDialog");
    return driver.waitForItem(QStringLiteral("listName"));
}

/// The sample's document, signed by its first key, and the result on the page; with `checks` it
/// was looked at, too.
bool showSignature(WindowDriver &driver, const SampleData &data, bool checks)
{
    Steps steps(driver);
    const QString signature = data.picture() + QStringLiteral(".p7s");
    const auto isDone = [&](bool checked) {
        return !driver.item(QStringLiteral("signBusy"))
            && (checked || !steps.text("signResult").isEmpty());
    };
    if (!checks)
        QFile::remove(signature);
    QMetaObject::invokeMethod(driver.window(), "show", Q_ARG(QVariant, QStringLiteral("sign")));
    driver.application().activate({data.picture()});
    if (!driver.waitForItem(QStringLiteral("documentDigest")) || !driver.waitUntilStill())
        return false;
    // The question is asked in a loop of events of its own, in which nobody waits here. Later ones
    // are others'.
    const auto over = std::make_shared<bool>(false);
    for (const char *dialog : {"pinPromptDialog", "signPinDialog"})
        driver.once([=, &driver] { return !*over && driver.isOpen(QLatin1String(dialog)); },
                    [=, &driver] { Steps(driver).answerPin(SampleData::pin(), dialog); });
    const bool isSigned = QFile::exists(signature)
        || (steps.press("doSign") && driver.waitFor([&] { return isDone(false); }));
    *over = true;
    if (!isSigned)
        return false;
    if (checks && !(steps.press("doVerify") && driver.waitForItem(QStringLiteral("signerResult0"))))
        return false;
    return driver.waitFor([&] { return isDone(checks); });
}

/// The sample has a token, so that no list offers to make one.
void showNewToken(WindowDriver &driver)
{
    driver.object(QStringLiteral("newTokenLoader"))->setProperty("active", true);
    driver.waitFor([&] { return driver.object(QStringLiteral("newTokenDialog")); });
    openDialog(driver, "newTokenDialog");
    // By the keys, which the dialog follows where it has to scroll.
    driver.waitFor([&] { return driver.item(QStringLiteral("newTokenName"))->hasActiveFocus(); });
    for (const char *pin : {"12345678", "1235"}) {
        driver.key(Qt::Key_Return);
        driver.type(QLatin1String(pin));
    }
}

void showUndo(WindowDriver &driver)
{
    QMetaObject::invokeMethod(driver.object(QStringLiteral("toast")), "show",
                              Q_ARG(QVariant, qtTrId("trivex-app-removed")),
                              Q_ARG(QVariant, qtTrId("trivex-app-undo")));
    driver.waitForItem(QStringLiteral("toastText"));
}

bool showPage(WindowDriver &driver, const SampleData &data, const QString &page)
{
    if (const Opening *opening = openingOf(page))
        return showOpening(driver, data, *opening);
    QObject *window = driver.window();
    const auto show = [&](const QString &key) {
        QMetaObject::invokeMethod(window, "show", Q_ARG(QVariant, key));
        driver.waitUntilStill();
    };
    const auto openRow = [&] {
        driver.waitFor([&] { return driver.rowCount() > 0; });
        const int row = driver.rowNamed(QStringLiteral("Иванова Мария Петровна"));
        return driver.clickRow(qMax(0, row));
    };
    if (page == QLatin1String("new-request")) {
        show(QStringLiteral("newRequest"));
        return driver.waitForItem(QStringLiteral("generateButton"));
    }
    if (page == QLatin1String("sign")) {
        show(QStringLiteral("sign"));
        driver.application().activate({data.picture()});
        return driver.waitForItem(QStringLiteral("documentDigest"));
    }
    if (page == QLatin1String("token")) {
        const QQuickItem *entry = driver.item(QStringLiteral("token-") + data.tokenName());
        const auto *model =
            driver.window()->findChild<QAbstractItemModel *>(QStringLiteral("tokens"));
        Q_UNUSED(entry)
        show(QStringLiteral("token:")
             + (model ? valueOf(*model, 0, "storeId").toString() : QString()));
        return driver.waitFor([&] { return driver.rowCount() > 0; });
    }
    const bool isLeaving = page == QLatin1String("leave-editing");
    show(isLeaving || page == QLatin1String("edit") ? QStringLiteral("requests")
             : pageNames().indexOf(page) >= 3 && pageNames().indexOf(page) <= 8
             ? page
             : QStringLiteral("personal"));
    // Of others' the sample has none, and of the system's own there may be none on this machine.
    const bool mayBeEmpty = page == QLatin1String("others") || page == QLatin1String("system");
    if (!mayBeEmpty && !driver.waitFor([&] { return driver.rowCount() > 0; }))
        return false;
    // The path is worked out behind the page, and its rows are controls.
    const auto openDetails = [&] {
        return openRow() && driver.waitForItem(QStringLiteral("chainStep0"));
    };
    if (page == QLatin1String("details"))
        return openDetails();
    if (page == QLatin1String("requests"))
        return openRow();
    if (page == QLatin1String("edit"))
        return openRow() && driver.click(QStringLiteral("editButton"));
    if (isLeaving) {
        const bool edits = openRow() && driver.click(QStringLiteral("editButton"));
        openDialog(driver, "leaveEditing");
        return edits;
    }
    if (page == QLatin1String("search"))
        return driver.fill(QStringLiteral("searchField"), QStringLiteral("иванова"));
    if (page == QLatin1String("settings"))
        openDialog(driver, "settingsDialog");
    if (page == QLatin1String("help"))
        openDialog(driver, "helpDialog");
    if (page == QLatin1String("quit"))
        showQuitQuestion(driver);
    if (page == QLatin1String("new-token"))
        showNewToken(driver);
    if (page == QLatin1String("undo"))
        showUndo(driver);
    if (page == QLatin1String("lists"))
        return showLists(driver, data);
    if (page == QLatin1String("signed") || page == QLatin1String("checked"))
        return showSignature(driver, data, page == QLatin1String("checked"));
    if (page == QLatin1String("export-key"))
        showKeyExport(driver);
    if (page == QLatin1String("expired"))
        showExpiredQuestion(driver);
    if (page == QLatin1String("manual"))
        openDialog(driver, "manualDialog");
    if (page == QLatin1String("locked-import"))
        showLockedBundle(driver, data);
    if (page == QLatin1String("waiting-import"))
        showWaitingFiles(driver, data);
    if (page == QLatin1String("import"))
        showImportDialog(driver, data);
    if (page == QLatin1String("pin"))
        showPinDialog(driver, data);
    if (page == QLatin1String("error"))
        showErrorDialog(driver);
    if (page == QLatin1String("remove"))
        return openDetails() && driver.click(QStringLiteral("removeButton"));
    return true;
}

} // namespace

bool visitPage(WindowDriver &driver, const SampleData &data, const QString &page)
{
    return showPage(driver, data, page) && driver.waitUntilStill();
}

void leavePage(WindowDriver &driver)
{
    if (driver.item(QStringLiteral("importLeaveRest")))
        Steps(driver).press("importLeaveRest");
    Steps(driver).escape();
    // What is offered for seconds is none of the next page's.
    QMetaObject::invokeMethod(driver.object(QStringLiteral("toast")), "close");
}

} // namespace TrivexTest
