// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/eccontext.h"
#include "tests/fakes/provider/fakestores.h"

#include <memory>

namespace TrivexTest {

/// Wraps the two below for QCA. Reads and writes no formats.
class FakePKey : public QCA::PKeyContext {
    Q_OBJECT
public:
    explicit FakePKey(QCA::Provider *provider);
    FakePKey(const FakePKey &other);
    ~FakePKey() override;

    Context *clone() const override;
    QList<QCA::PKey::Type> supportedTypes() const override;
    QList<QCA::PKey::Type> supportedIOTypes() const override;
    QList<QCA::PBEAlgorithm> supportedPBEAlgorithms() const override;
    QCA::PKeyBase *key() override;
    const QCA::PKeyBase *key() const override;
    void setKey(QCA::PKeyBase *key) override;
    bool importKey(const QCA::PKeyBase *key) override;

private:
    QCA::PKeyBase *m_key = nullptr;
};

/// Notes the generation and is a private key afterwards; its numbers are made up.
class FakeRsa : public QCA::RSAContext {
    Q_OBJECT
public:
    FakeRsa(QCA::Provider *provider, const std::shared_ptr<FakeStores> &stores);

    Context *clone() const override;
    bool isNull() const override;
    QCA::PKey::Type type() const override;
    bool isPrivate() const override;
    bool canExport() const override;
    void convertToPublic() override;
    int bits() const override;
    void createPrivate(int bits, int exponent, bool block) override;
    void createPrivate(const QCA::BigInteger &n, const QCA::BigInteger &e, const QCA::BigInteger &p,
                       const QCA::BigInteger &q, const QCA::BigInteger &d) override;
    void createPublic(const QCA::BigInteger &n, const QCA::BigInteger &e) override;
    QCA::BigInteger n() const override;
    QCA::BigInteger e() const override;
    QCA::BigInteger p() const override;
    QCA::BigInteger q() const override;
    QCA::BigInteger d() const override;

private:
    std::shared_ptr<FakeStores> m_stores;
    int m_bits = 0;
    int m_exponent = 0;
    bool m_private = false;
};

/// The same on a curve.
class FakeEC : public Trivex::ECContext {
    Q_OBJECT
public:
    FakeEC(QCA::Provider *provider, const std::shared_ptr<FakeStores> &stores);

    Context *clone() const override;
    bool isNull() const override;
    bool isPrivate() const override;
    bool canExport() const override;
    void convertToPublic() override;
    int bits() const override;
    int keyType() const override;
    QByteArray subjectPublicKeyInfo() const override;
    void createPrivate(const QString &curve, bool block) override;

private:
    std::shared_ptr<FakeStores> m_stores;
    QString m_curve;
    bool m_private = false;
};

} // namespace TrivexTest
