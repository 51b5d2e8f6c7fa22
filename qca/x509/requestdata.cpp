// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/requestdata.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/nativecoding.h"
#include "qca/asn1/strings.h"
#include "qca/base/bounds.h"
#include "qca/x509/extensions.h"
#include "qca/x509/namebounds.h"
#include "qca/x509/names.h"
#include "qca/x509/requesthead.h"
#include "qca/x509/signaturealgorithms.h"
#include "qca/x509/signedfields.h"

namespace Trivex {

namespace {

void decodeSignature(const SignedFields &fields, QCA::CertContextProps *properties)
{
    properties->sigalgo = signatureAlgorithmOf(fields.algorithm.content);
    properties->sig = fields.signatureBytes();
}

void decodeAttribute(Der::Slice attribute, QCA::CertContextProps *properties)
{
    Der::Reader reader(attribute);
    Der::Slice oidContent;
    Der::Slice values;
    Der::Element value;
    if (!reader.next(Der::ObjectIdentifier, &oidContent) || !reader.nextList(Der::Set, &values)
        || !Der::Reader(values).next(&value))
        return;
    const QByteArray oid = Der::oidText(oidContent);
    if (oid == Oid::ChallengePassword) {
        properties->challenge = decodeString(value);
    } else if (oid == Oid::ExtensionRequest || oid == Oid::MicrosoftExtensionRequest) {
        decodeAlternativeNames(value.content, properties);
        decodeExtensions(value.content, properties);
    }
}

} // namespace

std::shared_ptr<const RequestData> RequestData::fromDer(const QByteArray &der)
{
    SignedFields fields;
    if (!findSignedFields(Der::sliceOf(der), &fields) || fields.whole.size > MaxCertificateBytes)
        return nullptr;
    RequestHead head;
    if (!findRequestHead(fields.body.content, &head))
        return nullptr;
    const std::shared_ptr<RequestData> data(new RequestData);
    data->m_der = fields.whole.bytes();
    data->m_publicInfo = head.publicInfo.whole.bytes();
    data->m_properties.format = QCA::PKCS10;
    data->m_properties.subject = decodeName(head.subject.whole);
    decodeSignature(fields, &data->m_properties);
    // Some writers leave out the attributes, though they are not optional.
    Der::Slice attributes;
    if (Der::Reader(head.rest).next(Der::context(0), &attributes)) {
        Der::Reader reader(attributes);
        Der::Slice attribute;
        while (reader.next(Der::Sequence, &attribute))
            decodeAttribute(attribute, &data->m_properties);
    }
    return isWithinBounds(data->m_properties.subject) ? data : nullptr;
}

std::shared_ptr<const RequestData> RequestData::fromSpkac(const QByteArray &text)
{
    QByteArray base64 = text.trimmed();
    if (base64.startsWith("SPKAC="))
        base64 = base64.mid(6);
    const QByteArray der = QByteArray::fromBase64(base64);
    SignedFields fields;
    if (!findSignedFields(Der::sliceOf(der), &fields) || fields.whole.size > MaxCertificateBytes)
        return nullptr;
    Der::Reader body(fields.body.content);
    Der::Element publicInfo;
    Der::Element challenge;
    if (!body.next(Der::Sequence, &publicInfo) || !body.next(Der::Ia5String, &challenge))
        return nullptr;
    const std::shared_ptr<RequestData> data(new RequestData);
    data->m_der = fields.whole.bytes();
    data->m_publicInfo = publicInfo.whole.bytes();
    data->m_properties.format = QCA::SPKAC;
    data->m_properties.challenge = decodeString(challenge);
    decodeSignature(fields, &data->m_properties);
    return data;
}

RequestHandle RequestData::native() const
{
    if (m_properties.format != QCA::PKCS10)
        return nullptr;
    return decodeNative<RequestHandle>(Der::sliceOf(m_der), d2i_X509_REQ);
}

} // namespace Trivex
