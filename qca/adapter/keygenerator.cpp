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

// Of the key itself: its container may name another, for stock code to accept it.
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
    , d(std::make_unique<Private>())
{
    connect(&d->rsa, &QCA::KeyGenerator::finished, this, [this] {
        d->key = d->checked(d->rsa.key());
        Q_EMIT finished();
    });
}

KeyGenerator::~KeyGenerator() = default;

void KeyGenerator::setBlockingEnabled(bool enabled)
{
    d->blocking = enabled;
    d->rsa.setBlockingEnabled(enabled);
}

bool KeyGenerator::isBusy() const
{
    return d->rsa.isBusy() || d->ec;
}

void KeyGenerator::setTarget(const QString &keyStoreId, const QString &objectId)
{
    d->wantedStoreId = keyStoreId;
    d->wantedObjectId = objectId;
}

QCA::PrivateKey KeyGenerator::key() const
{
    return d->key;
}

QCA::PrivateKey KeyGenerator::createRSA(int bits, int exponent, const QString &provider)
{
    if (!prepare(QStringLiteral("rsa"), provider))
        return {};
    const GenerationTarget target(d->keyStoreId, d->wantedObjectId);
    d->key = d->checked(d->rsa.createRSA(bits, exponent, provider));
    return d->key;
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
    d->ec.reset(context);
    const GenerationTarget target(d->keyStoreId, d->wantedObjectId);
    if (d->blocking) {
        context->createPrivate(curve, true);
        d->key = d->checked(d->wrap(std::move(d->ec)));
        return d->key;
    }
    context->moveToThread(thread());
    connect(context, &QCA::PKeyBase::finished, this, [this] {
        d->key = d->checked(d->wrap(std::move(d->ec)));
        Q_EMIT finished();
    });
    context->createPrivate(curve, false);
    return {};
}

bool KeyGenerator::prepare(const QString &feature, const QString &provider)
{
    if (isBusy()) {
        // The caller has stored answers for this generation; another must not find them.
        takeStoredAnswers(d->wantedStoreId);
        return false;
    }
    d->key = QCA::PrivateKey();
    d->keyStoreId = d->wantedStoreId;
    d->provider = provider;
    if (d->canUse(feature))
        return true;
    fail();
    return false;
}

void KeyGenerator::fail()
{
    takeStoredAnswers(d->keyStoreId);
    if (!d->blocking)
        QMetaObject::invokeMethod(this, &KeyGenerator::finished, Qt::QueuedConnection);
}

} // namespace Trivex
