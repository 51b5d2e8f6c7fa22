// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/messagewriter.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/derwriter.h"
#include "qca/keys/keyoperation.h"
#include "qca/x509/certificatedata.h"
#include "qca/x509/certificatefields.h"
#include "qca/x509/generalnames.h"

#include <algorithm>

namespace Trivex {

namespace {

QByteArray attribute(const char *oid, const QByteArray &value)
{
    return Der::writeSequence({Der::writeOid(oid), Der::write(Der::Set, value)});
}

/// SET OF in the order that DER demands (X.690, 11.6).
QByteArray members(QList<QByteArray> elements)
{
    std::sort(elements.begin(), elements.end());
    return elements.join();
}

/// SigningCertificateV2 (RFC 5035, 3) of one certificate; its digest is the default, SHA-256.
QByteArray signingCertificate(const QByteArray &certificate, const QByteArray &issuer,
                              const QByteArray &serial)
{
    const QByteArray names = Der::write(Der::Sequence, Der::write(DirectoryName, issuer));
    const QByteArray id =
        Der::writeSequence({Der::write(Der::OctetString, digestOfMessage("SHA256", certificate)),
                            Der::writeSequence({names, serial})});
    return Der::writeSequence({Der::writeSequence({id})});
}

/// A tag with a length that Qt's arrays need not hold.
QByteArray header(int tag, qint64 length)
{
    QByteArray octets;
    for (qint64 rest = length; rest > 0; rest >>= 8)
        octets.prepend(char(rest & 0xff));
    if (length < 0x80)
        return QByteArray(1, char(tag)).append(char(length));
    return QByteArray(1, char(tag)).append(char(0x80 | octets.size())) + octets;
}

} // namespace

MessageWriter::MessageWriter(const QByteArray &certificate, const QList<QByteArray> &chain)
{
    const auto data = CertificateData::fromDer(certificate);
    CertificateFields fields;
    if (!data || !findCertificateFields(Der::sliceOf(data->der()), &fields))
        return;
    m_certificate = data->der();
    m_publicInfo = data->publicInfo();
    m_issuer = fields.issuer.bytes();
    m_serial = fields.serial.whole.bytes();
    m_scheme = cmsSchemeFor(m_publicInfo);
    setChain(chain);
}

void MessageWriter::setChain(const QList<QByteArray> &chain)
{
    m_chain.clear();
    for (const QByteArray &one : chain) {
        const auto link = CertificateData::fromDer(one);
        if (link && link->der() != m_certificate && !isSelfIssued(Der::sliceOf(link->der()))
            && !m_chain.contains(link->der()))
            m_chain += link->der();
    }
}

void MessageWriter::setDigest(const QByteArray &digest, const QDateTime &time)
{
    m_attributes = members({attribute(Oid::ContentType, Der::writeOid(Oid::Data)),
                            attribute(Oid::MessageDigest, Der::write(Der::OctetString, digest)),
                            attribute(Oid::SigningTime, Der::writeTime(time)),
                            attribute(Oid::SigningCertificateV2,
                                      signingCertificate(m_certificate, m_issuer, m_serial))});
}

QByteArray MessageWriter::toBeSigned() const
{
    return Der::write(Der::Set, m_attributes);
}

QByteArray MessageWriter::certificates() const
{
    if (!m_isBundled)
        return {};
    return Der::write(Der::context(0), members(QList<QByteArray>(m_chain) << m_certificate));
}

QByteArray MessageWriter::signerInfo() const
{
    const QByteArray version = Der::write(Der::Integer, QByteArray(1, 1));
    return Der::writeSequence({version, Der::writeSequence({m_issuer, m_serial}),
                               m_scheme.digestAlgorithm, Der::write(Der::context(0), m_attributes),
                               m_scheme.signatureAlgorithm,
                               Der::write(Der::OctetString, m_signature)});
}

void MessageWriter::attached(qint64 size, QByteArray *before, QByteArray *behind) const
{
    const bool hasDocument = size >= 0;
    *behind = certificates() + Der::write(Der::Set, signerInfo());
    const QByteArray version = Der::write(Der::Integer, QByteArray(1, 1));
    const QByteArray digests = Der::write(Der::Set, m_scheme.digestAlgorithm);
    const QByteArray type = Der::writeOid(Oid::Data);
    const QByteArray string = hasDocument ? header(Der::OctetString, size) : QByteArray();
    const qint64 document = hasDocument ? string.size() + size : 0;
    const QByteArray wrapper = hasDocument ? header(Der::context(0), document) : QByteArray();
    const QByteArray encapsulated =
        header(Der::Sequence, type.size() + wrapper.size() + document) + type + wrapper + string;
    const QByteArray front = version + digests + encapsulated;
    const qint64 body = front.size() + qMax<qint64>(size, 0) + behind->size();
    const QByteArray data = header(Der::Sequence, body);
    const QByteArray explicitData = header(Der::context(0), data.size() + body);
    const QByteArray outerType = Der::writeOid(Oid::SignedData);
    *before = header(Der::Sequence, outerType.size() + explicitData.size() + data.size() + body)
        + outerType + explicitData + data + front;
}

QByteArray MessageWriter::detached() const
{
    QByteArray before;
    QByteArray behind;
    attached(-1, &before, &behind);
    return before + behind;
}

} // namespace Trivex
