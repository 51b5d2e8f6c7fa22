// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/provider/fakekeys.h"

#include "qca/keys/keys.h"

namespace TrivexTest {

FakePKey::FakePKey(QCA::Provider *provider)
    : QCA::PKeyContext(provider)
{
}

FakePKey::FakePKey(const FakePKey &other)
    : QCA::PKeyContext(other)
    , m_key(other.m_key ? dynamic_cast<QCA::PKeyBase *>(other.m_key->clone()) : nullptr)
{
}

FakePKey::~FakePKey()
{
    delete m_key;
}

QCA::Provider::Context *FakePKey::clone() const
{
    return new FakePKey(*this);
}

QList<QCA::PKey::Type> FakePKey::supportedTypes() const
{
    return {QCA::PKey::RSA};
}

QList<QCA::PKey::Type> FakePKey::supportedIOTypes() const
{
    return {};
}

QList<QCA::PBEAlgorithm> FakePKey::supportedPBEAlgorithms() const
{
    return {};
}

QCA::PKeyBase *FakePKey::key()
{
    return m_key;
}

const QCA::PKeyBase *FakePKey::key() const
{
    return m_key;
}

void FakePKey::setKey(QCA::PKeyBase *key)
{
    delete m_key;
    m_key = key;
}

bool FakePKey::importKey(const QCA::PKeyBase *key)
{
    Q_UNUSED(key)
    return false;
}

FakeRsa::FakeRsa(QCA::Provider *provider, const std::shared_ptr<FakeStores> &stores)
    : QCA::RSAContext(provider)
    , m_stores(stores)
{
}

QCA::Provider::Context *FakeRsa::clone() const
{
    return new FakeRsa(*this);
}

bool FakeRsa::isNull() const
{
    return m_bits == 0;
}

QCA::PKey::Type FakeRsa::type() const
{
    return QCA::PKey::RSA;
}

bool FakeRsa::isPrivate() const
{
    return m_private;
}

bool FakeRsa::canExport() const
{
    return false;
}

void FakeRsa::convertToPublic()
{
    m_private = false;
}

int FakeRsa::bits() const
{
    return m_bits;
}

void FakeRsa::createPrivate(int bits, int exponent, bool block)
{
    FakeCall call;
    call.function = QStringLiteral("createRSA");
    call.argument = QStringLiteral("%1 %2 %3").arg(bits).arg(exponent).arg(block);
    m_stores->note(call);
    m_bits = bits;
    m_exponent = exponent;
    m_private = true;
    if (!block)
        QMetaObject::invokeMethod(this, &QCA::RSAContext::finished, Qt::QueuedConnection);
}

void FakeRsa::createPrivate(const QCA::BigInteger &, const QCA::BigInteger &,
                            const QCA::BigInteger &, const QCA::BigInteger &,
                            const QCA::BigInteger &)
{
}

void FakeRsa::createPublic(const QCA::BigInteger &, const QCA::BigInteger &) { }

QCA::BigInteger FakeRsa::n() const
{
    return QCA::BigInteger(m_bits);
}

QCA::BigInteger FakeRsa::e() const
{
    return QCA::BigInteger(m_exponent);
}

QCA::BigInteger FakeRsa::p() const
{
    return QCA::BigInteger(0);
}

QCA::BigInteger FakeRsa::q() const
{
    return QCA::BigInteger(0);
}

QCA::BigInteger FakeRsa::d() const
{
    return QCA::BigInteger(0);
}

FakeEC::FakeEC(QCA::Provider *provider, const std::shared_ptr<FakeStores> &stores)
    : Trivex::ECContext(provider)
    , m_stores(stores)
{
}

QCA::Provider::Context *FakeEC::clone() const
{
    return new FakeEC(*this);
}

bool FakeEC::isNull() const
{
    return m_curve.isEmpty();
}

bool FakeEC::isPrivate() const
{
    return m_private;
}

bool FakeEC::canExport() const
{
    return false;
}

void FakeEC::convertToPublic()
{
    m_private = false;
}

int FakeEC::bits() const
{
    return 384;
}

int FakeEC::keyType() const
{
    return Trivex::EllipticCurveKey;
}

QByteArray FakeEC::subjectPublicKeyInfo() const
{
    return m_curve.toUtf8();
}

void FakeEC::createPrivate(const QString &curve, bool block)
{
    FakeCall call;
    call.function = QStringLiteral("createEC");
    call.argument = QStringLiteral("%1 %2").arg(curve).arg(block);
    m_stores->note(call);
    m_curve = curve;
    m_private = true;
    if (!block)
        QMetaObject::invokeMethod(this, &Trivex::ECContext::finished, Qt::QueuedConnection);
}

} // namespace TrivexTest
