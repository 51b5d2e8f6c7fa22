// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keygenerator.h"

#include "qca/keys/eccontext.h"
#include "qca/keys/keys.h"
#include "qca/questions/generationtarget.h"
#include "qca/questions/operation.h"
#include "qca/questions/storedanswers.h"

#include <utility>

namespace Trivex {

namespace {

/// Makes a context by feature and provider name, and owns it until it is taken.
class ContextOwner : public QCA::Algorithm {
public:
    ContextOwner(const QString &type, const QString &provider)
        : QCA::Algorithm(type, provider)
    {
    }
};

// The provider of the key itself: its container may name another, so that stock code accepts it.
QString providerOf(const QCA::PrivateKey &key)
{
    const auto *container = dynamic_cast<const QCA::PKeyContext *>(key.context());
    const QCA::PKeyBase *base = container ? container->key() : nullptr;
    return base && base->provider() ? base->provider()->name() : QString();
}

} // namespace

class KeyGenerator::Private {
public:
    bool canUse(const QString &feature) const
    {
        return QCA::isSupported(qPrintable(feature), provider)
            && QCA::isSupported("pkey", provider);
    }

    /// The generated key, when it is where it was wanted.
    QCA::PrivateKey checked(const QCA::PrivateKey &candidate) const
    {
        if (candidate.isNull() || providerOf(candidate) != provider)
            return {};
        const QString origin = keyStoreIdOf(candidate);
        return origin.isEmpty() || keyStoreId.isEmpty() || origin == keyStoreId ? candidate
                                                                                : QCA::PrivateKey();
    }

    QCA::PrivateKey wrap(std::unique_ptr<ECContext> context) const
    {
        ContextOwner container(QStringLiteral("pkey"), provider);
        auto *pkey = dynamic_cast<QCA::PKeyContext *>(container.context());
        if (!pkey || context->isNull())
            return {};
        container.takeContext();
        context->setParent(nullptr);
        context->moveToThread(nullptr);
        pkey->setKey(context.release());
        QCA::PrivateKey wrapped;
        wrapped.change(pkey);
        return wrapped;
    }

    bool blocking = true;
    QString provider;
    QString keyStoreId; ///< of the generation that runs or ran
    QString wantedStoreId; ///< of the next one
    QString wantedObjectId;
    QCA::KeyGenerator rsa;
    std::unique_ptr<ECContext> ec;
    QCA::PrivateKey key;
};

KeyGenerator::KeyGenerator(QObject *parent)
    : QObject(parent)
    , m_private(std::make_unique<Private>())
{
    connect(&m_private->rsa, &QCA::KeyGenerator::finished, this, [this] {
        m_private->key = m_private->checked(m_private->rsa.key());
        Q_EMIT finished();
    });
}

KeyGenerator::~KeyGenerator() = default;

void KeyGenerator::setBlockingEnabled(bool enabled)
{
    m_private->blocking = enabled;
    m_private->rsa.setBlockingEnabled(enabled);
}

bool KeyGenerator::isBusy() const
{
    return m_private->rsa.isBusy() || m_private->ec;
}

void KeyGenerator::setTarget(const QString &keyStoreId, const QString &objectId)
{
    m_private->wantedStoreId = keyStoreId;
    m_private->wantedObjectId = objectId;
}

QCA::PrivateKey KeyGenerator::key() const
{
    return m_private->key;
}

QCA::PrivateKey KeyGenerator::createRSA(int bits, int exponent, const QString &provider)
{
    if (!prepare(QStringLiteral("rsa"), provider))
        return {};
    const GenerationTarget target(m_private->keyStoreId, m_private->wantedObjectId);
    m_private->key = m_private->checked(m_private->rsa.createRSA(bits, exponent, provider));
    return m_private->key;
}

QCA::PrivateKey KeyGenerator::createEC(const QString &curve, const QString &provider)
{
    if (!prepare(QStringLiteral("ec"), provider))
        return {};
    ContextOwner algorithm(QStringLiteral("ec"), provider);
    auto *context = dynamic_cast<ECContext *>(algorithm.context());
    if (!context) {
        fail();
        return {};
    }
    algorithm.takeContext();
    m_private->ec.reset(context);
    const GenerationTarget target(m_private->keyStoreId, m_private->wantedObjectId);
    if (m_private->blocking) {
        context->createPrivate(curve, true);
        m_private->key = m_private->checked(m_private->wrap(std::move(m_private->ec)));
        return m_private->key;
    }
    context->moveToThread(thread());
    connect(context, &QCA::PKeyBase::finished, this, [this] {
        m_private->key = m_private->checked(m_private->wrap(std::move(m_private->ec)));
        Q_EMIT finished();
    });
    context->createPrivate(curve, false);
    return {};
}

bool KeyGenerator::prepare(const QString &feature, const QString &provider)
{
    if (isBusy()) {
        // The caller has stored answers for this generation; another must not find them.
        takeStoredAnswers(m_private->wantedStoreId);
        return false;
    }
    m_private->key = QCA::PrivateKey();
    m_private->keyStoreId = m_private->wantedStoreId;
    m_private->provider = provider;
    if (m_private->canUse(feature))
        return true;
    fail();
    return false;
}

void KeyGenerator::fail()
{
    takeStoredAnswers(m_private->keyStoreId);
    if (!m_private->blocking)
        QMetaObject::invokeMethod(this, &KeyGenerator::finished, Qt::QueuedConnection);
}

} // namespace Trivex
