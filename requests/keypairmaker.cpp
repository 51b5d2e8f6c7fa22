// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "requests/keypairmaker.h"

#include "keystores/comboboxmodel.h"
#include "qca/base/providers.h"
#include "qca/base/securedtext.h"
#include "qca/questions/qcahandler.h"

#include <QDebug>

#include <algorithm>

namespace {

constexpr int PublicExponent = 3;

struct KeyKind {
    int bits;
    const char *feature; ///< of the token provider
    const char *text; ///< identifier of a text with a place for the bits
    const char *curve; ///< null for RSA
};

constexpr KeyKind KeyKinds[] = {
    {2048, "rsa", QT_TRID_NOOP("trivex-la-rsa"), nullptr},
    {3072, "rsa", QT_TRID_NOOP("trivex-la-rsa"), nullptr},
    {4096, "rsa", QT_TRID_NOOP("trivex-la-rsa"), nullptr},
    {384, "ec", QT_TRID_NOOP("trivex-la-ellyptic"), "ec-secp384r1"},
};

void store(const QCA::SecureArray &pin, const QString &objectId, const QString &keyStoreId,
           QcaHandler *answers)
{
    if (!answers)
        return;
    answers->setPassword(pin);
    answers->setObjectId(objectId);
    answers->setKeyStoreId(keyStoreId);
}

} // namespace

void KeyPairMaker::listKinds(const QStringList &features, ComboBoxModel *list)
{
    if (features.isEmpty())
        qWarning("provider features is empty!");
    for (const KeyKind &kind : KeyKinds) {
        const QString feature = QString::fromLatin1(kind.feature);
        if (features.contains(feature))
            list->addRow(kind.bits, qtTrId(kind.text).arg(kind.bits), feature);
    }
}

void KeyPairMaker::setPin(const QString &pin)
{
    m_pin = Trivex::securedText(pin.toLocal8Bit());
}

void KeyPairMaker::start(int kind, const QString &storeId, const QString &objectId,
                         QcaHandler *answers)
{
    store(m_pin, objectId, storeId, answers);
    m_generator.setTarget(storeId, objectId);
    const auto *const chosen = std::find_if(std::begin(KeyKinds), std::end(KeyKinds),
                                            [&](const KeyKind &one) { return one.bits == kind; });
    if (chosen == std::end(KeyKinds))
        // Without a generation nobody takes the answers, and they must not serve what comes next.
        store(QCA::SecureArray(""), QString(), QString(), answers);
    else if (chosen->curve)
        m_generator.createEC(QString::fromLatin1(chosen->curve), Trivex::gostProviderName());
    else
        m_generator.createRSA(kind, PublicExponent, Trivex::pkcs11ProviderName());
}
