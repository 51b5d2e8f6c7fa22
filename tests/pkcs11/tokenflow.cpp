// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/tokenflow.h"

#include "qca/adapter/keygenerator.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/pinprompt.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/testtoken.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>

#include <cstdio>

namespace TrivexTest {

const char *const tokenFlows[] = {"import certificate", "import bundle", "generate RSA",
                                  "generate EC", "remove bundle"};

namespace {

const QString OpenSsl = QStringLiteral("qca-norvel-openssl");
constexpr int Patience = 60000;

bool signs(QCA::PrivateKey key)
{
    const QByteArray data("data");
    const QByteArray signature = key.signMessage(data, QCA::EMSA3_SHA256, QCA::DefaultFormat);
    return !signature.isEmpty()
        && Trivex::publicKeyOf(key).verifyMessage(data, signature, QCA::EMSA3_SHA256,
                                                  QCA::DefaultFormat);
}

/// QCA, the stores and somebody who knows the PIN.
class Process {
public:
    explicit Process(const TokenFlow &flow)
        : m_flow(flow)
        , m_prompt(TestToken::pin())
    {
    }

    bool start()
    {
        m_store = m_stores.waitFor(m_flow.storeName, Patience);
        return m_store
            && QTest::qWaitFor(
                   [this] {
                       const auto status = Trivex::TokenMonitor::token(m_store->id());
                       return status.present && !status.loading;
                   },
                   Patience);
    }

    bool run()
    {
        const QString &name = m_flow.name;
        if (name == QLatin1String("import certificate"))
            return !m_stores.write(m_store, certificate()).isEmpty();
        if (name == QLatin1String("import bundle"))
            return !m_stores.write(m_store, bundle()).isEmpty();
        if (name == QLatin1String("remove bundle"))
            return remove();
        return generate(name == QLatin1String("generate RSA"));
    }

    /// A removal that was done but for the key's bare halves is nothing that can be asked for; a
    /// new import has to find them.
    bool runAgain()
    {
        const bool isMissing =
            m_flow.name == QLatin1String("remove bundle") && bundleId().isEmpty();
        return (!isMissing || !m_stores.write(m_store, bundle()).isEmpty()) && run();
    }

    QJsonArray entries()
    {
        QJsonArray list;
        const auto all = m_stores.currentEntries(m_flow.storeName);
        for (const QCA::KeyStoreEntry &entry : all) {
            const bool hasKey = entry.type() == QCA::KeyStoreEntry::TypeKeyBundle;
            list.append(QJsonObject{
                {QStringLiteral("name"), entry.name()},
                {QStringLiteral("id"), entry.id()},
                {QStringLiteral("der"),
                 QString::fromLatin1(entry.certificate().toDER().toBase64())},
                {QStringLiteral("hasKey"), hasKey},
                {QStringLiteral("signs"), hasKey && signs(entry.keyBundle().privateKey())},
            });
        }
        return list;
    }

private:
    QCA::Certificate certificate() const
    {
        QFile file(m_flow.certificateFile);
        file.open(QIODevice::ReadOnly);
        return QCA::Certificate::fromDER(file.readAll(), nullptr, OpenSsl);
    }

    QCA::KeyBundle bundle() const
    {
        return QCA::KeyBundle::fromFile(m_flow.bundleFile, QCA::SecureArray("x"), nullptr, OpenSsl);
    }

    QString bundleId()
    {
        const auto all = m_stores.currentEntries(m_flow.storeName);
        for (const QCA::KeyStoreEntry &entry : all) {
            if (entry.name() == QLatin1String("bundle"))
                return entry.id();
        }
        return {};
    }

    bool remove()
    {
        const QString id = bundleId();
        return !id.isEmpty() && m_stores.remove(m_store, id);
    }

    bool generate(bool rsa)
    {
        Trivex::KeyGenerator generator;
        generator.setBlockingEnabled(false);
        generator.setTarget(m_store->id(), QStringLiteral("made"));
        QSignalSpy finished(&generator, &Trivex::KeyGenerator::finished);
        if (rsa)
            generator.createRSA(2048, 3, QStringLiteral("qca-norvel-pkcs11"));
        else
            generator.createEC(QStringLiteral("ec-secp384r1"), QStringLiteral("qca-norvel-gost"));
        const bool hasEnded = !finished.isEmpty() || finished.wait(Patience);
        return hasEnded && !generator.key().isNull() && signs(generator.key());
    }

    const TokenFlow m_flow;
    QCA::Initializer m_qca;
    PinPrompt m_prompt;
    Stores m_stores;
    QCA::KeyStore *m_store = nullptr;
};

} // namespace

int runFlow(const TokenFlow &flow)
{
    Process process(flow);
    return process.start() && process.run() ? 0 : 1;
}

int runFlowAgain(const TokenFlow &flow)
{
    Process process(flow);
    if (!process.start())
        return 1;
    QJsonObject report;
    report.insert(QStringLiteral("found"), process.entries());
    report.insert(QStringLiteral("succeeded"), process.runAgain());
    report.insert(QStringLiteral("left"), process.entries());
    const QByteArray text = QJsonDocument(report).toJson(QJsonDocument::Compact);
    return std::fwrite(text.constData(), 1, size_t(text.size()), stdout) == size_t(text.size()) ? 0
                                                                                                : 1;
}

} // namespace TrivexTest
