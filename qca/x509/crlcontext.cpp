// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/crlcontext.h"

#include "qca/asn1/nativecoding.h"
#include "qca/asn1/pem.h"
#include "qca/asn1/strings.h"
#include "qca/base/bounds.h"
#include "qca/x509/extensions.h"
#include "qca/x509/namebounds.h"
#include "qca/x509/names.h"
#include "qca/x509/signaturealgorithms.h"
#include "qca/x509/signedfields.h"

namespace Trivex {

namespace {

// CRLReason (RFC 5280, 5.3.1) by its number; 7 is not used.
constexpr QCA::CRLEntry::Reason Reasons[] = {
    QCA::CRLEntry::Unspecified,     QCA::CRLEntry::KeyCompromise,
    QCA::CRLEntry::CACompromise,    QCA::CRLEntry::AffiliationChanged,
    QCA::CRLEntry::Superseded,      QCA::CRLEntry::CessationOfOperation,
    QCA::CRLEntry::CertificateHold, QCA::CRLEntry::Unspecified,
    QCA::CRLEntry::RemoveFromCRL,   QCA::CRLEntry::PrivilegeWithdrawn,
    QCA::CRLEntry::AACompromise,
};

QCA::CRLEntry::Reason reasonIn(Der::Slice extensions)
{
    const QByteArray value = findExtension(extensions, ExtensionOid::ReasonCode);
    Der::Slice code;
    if (!Der::single(Der::sliceOf(value), Der::Enumerated, &code) || code.size != 1
        || code.at(0) >= std::size(Reasons))
        return QCA::CRLEntry::Unspecified;
    return Reasons[code.at(0)];
}

void decodeRevoked(Der::Slice list, QCA::CRLContextProps *properties)
{
    Der::Reader reader(list);
    Der::Slice entry;
    while (reader.next(Der::Sequence, &entry)) {
        Der::Reader parts(entry);
        Der::Slice serial;
        Der::Element time;
        Der::Slice extensions;
        if (!parts.next(Der::Integer, &serial) || !parts.next(&time))
            continue;
        parts.nextList(Der::Sequence, &extensions);
        properties->revoked += QCA::CRLEntry(QCA::BigInteger(QCA::SecureArray(serial.bytes())),
                                             decodeTime(time), reasonIn(extensions));
    }
}

void decodeListExtensions(Der::Slice extensions, QCA::CRLContextProps *properties)
{
    const QByteArray value = findExtension(extensions, ExtensionOid::CrlNumber);
    Der::Slice number;
    if (Der::single(Der::sliceOf(value), Der::Integer, &number))
        properties->number = Der::smallInteger(number);
    properties->issuerId = authorityKeyIdIn(extensions);
}

bool decodeBody(Der::Slice content, QCA::CRLContextProps *properties)
{
    Der::Reader body(content);
    Der::Slice algorithm;
    Der::Element issuer;
    Der::Element time;
    Der::Slice list;
    Der::Slice wrapped;
    body.skip(Der::Integer);
    if (!body.next(Der::Sequence, &algorithm) || !body.nextList(Der::Sequence, &issuer)
        || !body.next(&time) || !Der::isTime(time.tag))
        return false;
    properties->issuer = decodeName(issuer.whole);
    if (!isWithinBounds(properties->issuer))
        return false;
    properties->thisUpdate = decodeTime(time);
    if (Der::isTime(body.peek()) && body.next(&time))
        properties->nextUpdate = decodeTime(time);
    if (body.nextList(Der::Sequence, &list))
        decodeRevoked(list, properties);
    if (body.next(Der::context(0), &wrapped) && Der::singleList(wrapped, Der::Sequence, &list))
        decodeListExtensions(list, properties);
    return body.atEnd();
}

std::shared_ptr<const RevocationData> decode(const QByteArray &der)
{
    const auto data = std::make_shared<RevocationData>();
    data->properties.number = -1;
    SignedFields fields;
    if (!findSignedFields(Der::sliceOf(der), &fields)
        || !decodeBody(fields.body.content, &data->properties))
        return nullptr;
    data->der = fields.whole.bytes();
    data->properties.sigalgo = signatureAlgorithmOf(fields.algorithm.content);
    data->properties.sig = fields.signatureBytes();
    return data;
}

CrlHandle parse(const QByteArray &der)
{
    return decodeNative<CrlHandle>(Der::sliceOf(der), d2i_X509_CRL);
}

} // namespace

CrlContext::CrlContext(QCA::Provider *provider)
    : QCA::CRLContext(provider)
{
}

CrlContext::CrlContext(const CrlContext &other)
    : QCA::CRLContext(other.provider())
    , m_data(other.m_data)
{
    if (other.m_native && X509_CRL_up_ref(other.m_native.get()) == 1)
        m_native.reset(other.m_native.get());
}

CrlContext::~CrlContext() = default;

QCA::Provider::Context *CrlContext::clone() const
{
    return new CrlContext(*this);
}

const QCA::CRLContextProps *CrlContext::props() const
{
    static const auto &nothing = *new QCA::CRLContextProps{};
    return m_data ? &m_data->properties : &nothing;
}

bool CrlContext::compare(const QCA::CRLContext *other) const
{
    return m_data && other && m_data->der == other->toDER();
}

QByteArray CrlContext::toDER() const
{
    return m_data ? m_data->der : QByteArray();
}

QString CrlContext::toPEM() const
{
    return m_data ? QString::fromLatin1(writePem("X509 CRL", m_data->der)) : QString();
}

QCA::ConvertResult CrlContext::fromDER(const QByteArray &der)
{
    auto data = der.size() <= MaxFileBytes ? decode(der) : nullptr;
    if (!data)
        return QCA::ErrorDecode;
    m_native = parse(data->der);
    m_data = std::move(data);
    return QCA::ConvertGood;
}

QCA::ConvertResult CrlContext::fromPEM(const QString &pem)
{
    return fromDER(readPem(pem, {"X509 CRL", "CRL"}));
}

} // namespace Trivex
