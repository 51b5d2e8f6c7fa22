// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/signingkeycontext.h"

#include "qca/keys/eccontext.h"
#include "qca/keys/nativeoperations.h"

namespace Trivex {

template <class Base>
void SigningKeyContext<Base>::startSign(QCA::SignatureAlgorithm algorithm,
                                        QCA::SignatureFormat format)
{
    start(KeyOperation::Signing, algorithm, format);
}

template <class Base>
void SigningKeyContext<Base>::startVerify(QCA::SignatureAlgorithm algorithm,
                                          QCA::SignatureFormat format)
{
    start(KeyOperation::Verifying, algorithm, format);
}

template <class Base>
void SigningKeyContext<Base>::start(KeyOperation::Mode mode, QCA::SignatureAlgorithm algorithm,
                                    QCA::SignatureFormat format)
{
    const QByteArray digest = takesMessage() ? QByteArray() : digestOf(int(algorithm));
    this->m_operation.start(mode, digest, format);
    if (digest.isEmpty() && algorithm != QCA::EMSA3_Raw && !takesMessage())
        this->m_operation.fail();
}

template <class Base>
bool SigningKeyContext<Base>::finish(KeyOperation::Mode mode, QByteArray *block)
{
    if (!this->m_operation.finish(mode, block))
        return false;
    const QByteArray digestName = this->m_operation.digestName();
    if (!digestName.isEmpty())
        *block = blockOf(digestName, *block);
    return true;
}

template <class Base> QByteArray SigningKeyContext<Base>::endSign()
{
    QByteArray block;
    QByteArray signature;
    if (!this->isPrivate() || !finish(KeyOperation::Signing, &block))
        return {};
    // First: the context may go while a token works.
    const int bits = partBits();
    if (!signBlock(block, &signature))
        return {};
    return bits > 0 ? sideBySide(signature, bits) : signature;
}

template <class Base> bool SigningKeyContext<Base>::endVerify(const QByteArray &signature)
{
    QByteArray block;
    if (!finish(KeyOperation::Verifying, &block))
        return false;
    EVP_PKEY *key = this->m_material.native();
    if (takesMessage())
        return verifyMessageNative(key, block, signature);
    return verifyNative(key, block, partBits() > 0 ? derSignature(signature) : signature);
}

template <class Base>
bool SigningKeyContext<Base>::signMessage(const QByteArray &message, const QByteArray &digestName,
                                          QByteArray *signature)
{
    if (!this->isPrivate())
        return false;
    if (takesMessage())
        return signBlock(message, signature);
    const QByteArray digest = digestOfMessage(digestName, message);
    return !digest.isEmpty() && signBlock(blockOf(digestName, digest), signature);
}

template <class Base>
bool SigningKeyContext<Base>::signBlock(const QByteArray &block, QByteArray *signature)
{
    EVP_PKEY *key = this->m_material.isPrivate() ? this->m_material.native() : nullptr;
    return takesMessage() ? signMessageNative(key, block, signature)
                          : signNative(key, block, signature);
}

template <class Base>
QByteArray SigningKeyContext<Base>::blockOf(const QByteArray &, const QByteArray &digest) const
{
    return digest;
}

template class SigningKeyContext<QCA::RSAContext>;
template class SigningKeyContext<QCA::DSAContext>;
template class SigningKeyContext<ECContext>;

} // namespace Trivex
