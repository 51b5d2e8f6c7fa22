// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/tokens/tokensteps.h"

#include "qca/adapter/keygenerator.h"
#include "qca/keys/keys.h"

#include <QFile>
#include <QSignalSpy>

#include <cstdio>

namespace TrivexTest {

namespace {

const QString OpenSsl = QStringLiteral("qca-norvel-openssl");
constexpr int Patience = 60000;

bool writeFile(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

} // namespace

TokenSteps::TokenSteps(const TokenFacts &facts)
    : m_facts(facts)
{
}

bool TokenSteps::tell(const QString &step, bool isGood, const QString &why)
{
    QString word = QStringLiteral("ok");
    QString reason;
    if (!isGood) {
        const QString limit = m_facts.cannot.value(step);
        word = limit.isEmpty() ? QStringLiteral("FAILED") : QStringLiteral("SKIP");
        reason = limit.isEmpty() ? why : limit;
        if (m_error)
            reason += QStringLiteral(" (%1 0x%2)")
                          .arg(m_error->function)
                          .arg(m_error->returnValue, 0, 16);
        m_failed = m_failed || limit.isEmpty();
    }
    std::printf("%s %s%s\n", qPrintable(word), qPrintable(step),
                reason.isEmpty() ? "" : qPrintable(QStringLiteral(": ") + reason));
    std::fflush(stdout);
    m_error.reset();
    return isGood;
}

bool TokenSteps::start(const QByteArray &pin)
{
    stop();
    m_qca = std::make_unique<QCA::Initializer>();
    m_monitor = std::make_unique<Trivex::TokenMonitor>();
    QObject::connect(m_monitor.get(), &Trivex::TokenMonitor::failed, m_monitor.get(),
                     [this](const Trivex::TokenError &error) { m_error = error; });
    m_prompt = std::make_unique<PinPrompt>(pin);
    m_stores = std::make_unique<Stores>();
    m_store = m_stores->waitFor(m_facts.name, Patience);
    return m_store
        && QTest::qWaitFor(
               [this] {
                   const auto status = Trivex::TokenMonitor::token(m_store->id());
                   return status.present && !status.loading;
               },
               Patience);
}

void TokenSteps::stop()
{
    m_store = nullptr;
    m_stores.reset();
    m_prompt.reset();
    m_monitor.reset();
    m_qca.reset();
}

bool TokenSteps::list()
{
    const bool isThere = start("wrong-pin");
    return tell(QStringLiteral("list"), isThere,
                m_stores ? m_stores->names().join(QLatin1Char(',')) : QString());
}

bool TokenSteps::wrongPin()
{
    const QString step = QStringLiteral("wrong PIN");
    if (m_facts.pin.isEmpty()) {
        std::printf("SKIP %s: the token wants none\n", qPrintable(step));
        return true;
    }
    const auto root = QCA::Certificate::fromDER(m_authority.certificate(), nullptr, OpenSsl);
    const QString id = m_stores->write(m_store, root, Patience);
    const bool isTold = QTest::qWaitFor([this] { return m_error.has_value(); })
        && m_error->kind == Trivex::TokenError::WrongPin;
    return tell(step, id.isEmpty() && m_prompt->count() == 1 && isTold,
                QStringLiteral("id \"%1\", asked %2 times").arg(id).arg(m_prompt->count()));
}

bool TokenSteps::rightPin()
{
    m_prompt->setPin(m_facts.pin);
    m_prompt->resetCount();
    m_error.reset();
    const auto root = QCA::Certificate::fromDER(m_authority.certificate(), nullptr, OpenSsl);
    const QString id = m_stores->write(m_store, root, Patience);
    const bool isThere = !entryWithId(id).isNull();
    const bool isAsked = m_prompt->count() == (m_facts.pin.isEmpty() ? 0 : 1);
    const QString why = QStringLiteral("id \"%1\", listed %2, asked %3 times")
                            .arg(id)
                            .arg(isThere)
                            .arg(m_prompt->count());
    return tell(QStringLiteral("right PIN"), isThere && isAsked, why) && removeAll();
}

QCA::PrivateKey TokenSteps::generate(const QString &kind)
{
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    generator.setTarget(m_store->id(), QStringLiteral("made ") + kind);
    QSignalSpy finished(&generator, &Trivex::KeyGenerator::finished);
    if (kind == QLatin1String("EC"))
        generator.createEC(QStringLiteral("ec-secp384r1"), QStringLiteral("qca-norvel-gost"));
    else // with the exponent that the module asks for
        generator.createRSA(2048, 3, QStringLiteral("qca-norvel-pkcs11"));
    return !finished.isEmpty() || finished.wait(Patience) ? generator.key() : QCA::PrivateKey();
}

/// A certificate for a request that openssl has checked; empty when it did not like it.
QByteArray TokenSteps::certify(const QCA::PrivateKey &key, const QString &kind)
{
    QCA::CertificateInfo subject;
    subject.insert(QCA::CommonName, QStringLiteral("Нина ") + kind);
    QCA::CertificateOptions options(QCA::PKCS10);
    options.setInfo(subject);
    const QCA::CertificateRequest request(options, key, QStringLiteral("qca-norvel-pkcs11"));
    const QString file = m_authority.file(QStringLiteral("request.csr"));
    if (request.isNull() || !request.toPEMFile(file))
        return {};
    const QByteArray checked =
        m_authority.openssl({QStringLiteral("req"), QStringLiteral("-verify"),
                             QStringLiteral("-noout"), QStringLiteral("-in"), file});
    return checked.isNull() ? QByteArray() : m_authority.issueForRequest(file);
}

QCA::KeyStoreEntry TokenSteps::entryWithId(const QString &id)
{
    const auto entries = m_stores->currentEntries(m_facts.name);
    for (const QCA::KeyStoreEntry &entry : entries) {
        if (!id.isEmpty() && entry.id() == id)
            return entry;
    }
    return {};
}

bool TokenSteps::isBundle(const QString &id)
{
    const QCA::KeyStoreEntry entry = entryWithId(id);
    return !entry.isNull() && entry.type() == QCA::KeyStoreEntry::TypeKeyBundle;
}

/// Signs with the entry's key, and lets openssl check it with its certificate.
bool TokenSteps::signs(const QCA::KeyStoreEntry &entry)
{
    if (entry.isNull() || entry.type() != QCA::KeyStoreEntry::TypeKeyBundle)
        return false;
    QCA::PrivateKey key = entry.keyBundle().privateKey();
    const QByteArray data("data");
    const QByteArray signature = key.signMessage(
        data, QCA::EMSA3_SHA256, key.isRSA() ? QCA::DefaultFormat : QCA::DERSequence);
    const QString certificate = m_authority.file(QStringLiteral("signer.der"));
    const QString publicKey = m_authority.file(QStringLiteral("signer.pem"));
    const QString dataFile = m_authority.file(QStringLiteral("data"));
    const QString signatureFile = m_authority.file(QStringLiteral("signature"));
    if (signature.isEmpty()
        || !writeFile(certificate, entry.keyBundle().certificateChain().primary().toDER())
        || !writeFile(dataFile, data) || !writeFile(signatureFile, signature))
        return false;
    const QByteArray pem = m_authority.openssl(
        {QStringLiteral("x509"), QStringLiteral("-inform"), QStringLiteral("DER"),
         QStringLiteral("-in"), certificate, QStringLiteral("-noout"), QStringLiteral("-pubkey")});
    return writeFile(publicKey, pem)
        && !m_authority
                .openssl({QStringLiteral("dgst"), QStringLiteral("-sha256"),
                          QStringLiteral("-verify"), publicKey, QStringLiteral("-signature"),
                          signatureFile, dataFile})
                .isNull();
}

/// Key, request, certificate, signature.
void TokenSteps::wholeKey(const QString &kind)
{
    const QCA::PrivateKey key = generate(kind);
    if (!tell(QStringLiteral("generate ") + kind, !key.isNull() && !key.canExport()))
        return;
    const QByteArray issued = certify(key, kind);
    if (!tell(QStringLiteral("request ") + kind, !issued.isEmpty()))
        return;
    const QString id =
        m_stores->write(m_store, QCA::Certificate::fromDER(issued, nullptr, OpenSsl), Patience);
    tell(QStringLiteral("import ") + kind, isBundle(id), QStringLiteral("id \"%1\"").arg(id));
    tell(QStringLiteral("sign ") + kind, signs(entryWithId(id)));
    pairAnew(kind, id);
    const bool isRemoved = removeAll();
    const bool isGone =
        isRemoved && Trivex::findTokenKey(m_store->id(), Trivex::publicKeyOf(key)).isNull();
    tell(QStringLiteral("remove ") + kind, isGone,
         isRemoved ? QStringLiteral("the key is left") : QString());
}

/// A certificate and its key belong together after a new start too, before any login.
void TokenSteps::pairAnew(const QString &kind, const QString &id)
{
    const bool isThere = start(m_facts.pin);
    const bool isPair = isThere && isBundle(id);
    const int asked = m_prompt->count();
    tell(QStringLiteral("pair ") + kind, isPair && asked == 0,
         QStringLiteral("asked %1 times").arg(asked));
    tell(QStringLiteral("sign ") + kind + QStringLiteral(" after a login"),
         isThere && signs(entryWithId(id)));
}

void TokenSteps::bundle(const QString &kind, const QStringList &keyArguments)
{
    const QString file = m_authority.bundle(keyArguments, QStringLiteral("/CN=Bundle"),
                                            QStringLiteral("x"), QStringLiteral("bundle"));
    const auto read = QCA::KeyBundle::fromFile(file, QCA::SecureArray("x"), nullptr, OpenSsl);
    const QString id = read.isNull() ? QString() : m_stores->write(m_store, read, Patience);
    const QString step = QStringLiteral("bundle ") + kind;
    const bool isGood = isBundle(id) && signs(entryWithId(id));
    if (!tell(step, isGood, QStringLiteral("id \"%1\"").arg(id))) {
        // What could not be written whole has left nothing.
        if (id.isEmpty() && !m_stores->currentEntries(m_facts.name).isEmpty())
            tell(QStringLiteral("nothing left of ") + step, false);
    }
    tell(QStringLiteral("remove ") + step, removeAll());
}

bool TokenSteps::removeAll()
{
    const auto entries = m_stores->currentEntries(m_facts.name);
    for (const QCA::KeyStoreEntry &entry : entries)
        m_stores->remove(m_store, entry.id(), Patience);
    return m_stores->currentEntries(m_facts.name).isEmpty();
}

bool TokenSteps::run()
{
    if (!list() || !wrongPin() || !rightPin()) {
        stop();
        return !m_failed;
    }
    for (const char *kind : {"RSA", "EC"})
        wholeKey(QString::fromLatin1(kind));
    const QString algorithm = QStringLiteral("-algorithm");
    const QString option = QStringLiteral("-pkeyopt");
    bundle(QStringLiteral("RSA"),
           {algorithm, QStringLiteral("RSA"), option, QStringLiteral("rsa_keygen_bits:2048")});
    bundle(QStringLiteral("EC"),
           {algorithm, QStringLiteral("EC"), option, QStringLiteral("ec_paramgen_curve:P-256")});
    stop();
    return !m_failed;
}

} // namespace TrivexTest
