// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/certificatedata.h"

#include "qca/asn1/nativecoding.h"
#include "qca/asn1/strings.h"
#include "qca/x509/canonicalname.h"
#include "qca/x509/extensions.h"
#include "qca/x509/namebounds.h"
#include "qca/x509/names.h"
#include "qca/x509/signaturealgorithms.h"

#include <QHash>

#include <mutex>

namespace Trivex {

namespace {

using DataPtr = std::shared_ptr<const CertificateData>;

// The certificates in use in this process, by their DER. Never destroyed, because the last
// certificate may be destroyed after everything else.
struct Registry {
    std::mutex mutex;
    QHash<QByteArray, std::weak_ptr<const CertificateData>> certificates;
};

Registry &registry()
{
    static auto *const instance = new Registry;
    return *instance;
}

CertificateFields fieldsOf(const QByteArray &der)
{
    CertificateFields fields;
    findCertificateFields(Der::sliceOf(der), &fields);
    return fields;
}

/// A copy of `part` that shares the bytes of `whole` if it is all of it, as the reader of a store
/// keeps them too. A view of foreign memory, which has no capacity, is copied.
QByteArray ownBytes(const Der::Slice &part, const QByteArray &whole)
{
    return part.size == whole.size() && whole.capacity() >= whole.size() ? whole : part.bytes();
}

} // namespace

CertificateData::CertificateData(const QByteArray &der)
    : m_der(der)
{
}

CertificateData::~CertificateData()
{
    Registry &known = registry();
    const std::lock_guard lock(known.mutex);
    const auto found = known.certificates.find(m_der);
    // Another thread may have added the same DER meanwhile.
    if (found != known.certificates.end() && found->expired())
        known.certificates.erase(found);
}

DataPtr CertificateData::fromDer(const QByteArray &der)
{
    CertificateFields fields;
    if (!findCertificateFields(Der::sliceOf(der), &fields) || !isWithinBounds(fields))
        return nullptr;
    Registry &known = registry();
    DataPtr data;
    const std::lock_guard lock(known.mutex);
    const auto found = known.certificates.constFind(fields.whole.view());
    if (found != known.certificates.constEnd())
        data = found->lock();
    if (data)
        return data;
    data.reset(new CertificateData(ownBytes(fields.whole, der)));
    known.certificates.insert(data->der(), data);
    return data;
}

const QCA::CertContextProps &CertificateData::names() const
{
    std::call_once(m_namesOnce, [this] { decodeNames(); });
    return *m_properties;
}

const QCA::CertContextProps &CertificateData::properties() const
{
    names();
    std::call_once(m_propertiesOnce, [this] { decodeProperties(); });
    return *m_properties;
}

void CertificateData::decodeNames() const
{
    m_properties = std::make_unique<QCA::CertContextProps>();
    const CertificateFields fields = fieldsOf(m_der);
    m_properties->issuer = decodeName(fields.issuer);
    m_properties->subject =
        fields.subject == fields.issuer ? m_properties->issuer : decodeName(fields.subject);
    decodeAlternativeNames(fields.extensions, m_properties.get());
}

void CertificateData::decodeProperties() const
{
    const CertificateFields fields = fieldsOf(m_der);
    m_properties->version = qMax(Der::smallInteger(fields.version), 0) + 1;
    m_properties->start = decodeTime(fields.notBefore);
    m_properties->end = decodeTime(fields.notAfter);
    m_properties->serial = QCA::BigInteger(QCA::SecureArray(fields.serial.content.bytes()));
    m_properties->format = QCA::PKCS10;
    m_properties->sigalgo = signatureAlgorithmOf(fields.algorithm.content);
    m_properties->sig = fields.signatureBytes();
    decodeExtensions(fields.extensions, m_properties.get());
    m_properties->isSelfSigned = isSameName(fields.subject, fields.issuer)
        && checkSignature(fields, fields.publicInfo) == SignatureState::Good;
}

bool CertificateData::mayHaveIssued(const CertificateData &other) const
{
    const CertificateFields mine = fieldsOf(m_der);
    const CertificateFields theirs = fieldsOf(other.m_der);
    return isSameName(mine.subject, theirs.issuer);
}

SignatureState CertificateData::checkIssued(const CertificateData &other) const
{
    const QByteArray key = publicInfo();
    return checkSignature(fieldsOf(other.m_der), Der::sliceOf(key));
}

QByteArray CertificateData::publicInfo() const
{
    return fieldsOf(m_der).publicInfo.bytes();
}

X509Handle CertificateData::native() const
{
    return decodeNative<X509Handle>(Der::sliceOf(m_der), d2i_X509);
}

} // namespace Trivex
