// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/adapter/keygenerator.h"

#include <QtCrypto>

class ComboBoxModel;
class QcaHandler;

/// Makes the key pair of a request on a token. GUI thread only.
class KeyPairMaker {
public:
    /// Adds the kinds of keys that a provider with `features` makes to `list`. A kind's number is a
    /// `CertificateRequest::KeyAlgorithm`.
    static void listKinds(const QStringList &features, ComboBoxModel *list);

    /// The PIN of the token.
    void setPin(const QString &pin);
    /// Makes a key of kind `kind`, named `objectId`, in the store `storeId`; nothing of a kind that
    /// is not offered. `answers` gets what the token is going to ask for; null while it has none.
    void start(int kind, const QString &storeId, const QString &objectId, QcaHandler *answers);
    Trivex::KeyGenerator *generator() { return &m_generator; }

private:
    QCA::SecureArray m_pin;
    Trivex::KeyGenerator m_generator;
};
