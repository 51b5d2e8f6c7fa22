// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QObject>
#include <QtCrypto>

#include <memory>

namespace Trivex {

/// `QCA::KeyGenerator` with elliptic curves, a target on a token, and a check that the key really
/// comes from the provider that was asked: stock QCA falls back to any other without a word.
class TRIVEX_QCA_EXPORT KeyGenerator : public QObject {
    Q_OBJECT
public:
    explicit KeyGenerator(QObject *parent = nullptr);
    /// Abandons a running generation; the token keeps nothing of it.
    ~KeyGenerator() override;

    /// With blocking off (it is on at first) the calls below return a null key at once and
    /// `finished()` follows.
    void setBlockingEnabled(bool enabled);
    bool isBusy() const;

    /// Where the next keys go: the key store's id and the label of the key objects.
    void setTarget(const QString &keyStoreId, const QString &objectId);

    /// An RSA key of `bits` bits with the public exponent `exponent`. Null when the provider can't
    /// or a generation is running; a running one goes on.
    QCA::PrivateKey createRSA(int bits, int exponent, const QString &provider);
    /// A key on `curve`, by the "ec" feature of our own providers: "ec-secp256r1", "ec-secp384r1",
    /// "ec-secp521r1"; on tokens also "ed25519"; on tokens and with "qca-norvel-gost"
    /// "gost2012-256", "gost2012-512" and the names of their parameter sets, such as
    /// "id-tc26-gost-3410-2012-256-paramSetB". As above.
    QCA::PrivateKey createEC(const QString &curve, const QString &provider);

    /// The last key; null while one is generated and after a failure.
    QCA::PrivateKey key() const;

Q_SIGNALS:
    /// A generation with blocking off has ended, well or not. On this object's thread.
    void finished();

private:
    bool prepare(const QString &feature, const QString &provider);
    void fail();

    class Private;
    std::unique_ptr<Private> m_private;
};

} // namespace Trivex
