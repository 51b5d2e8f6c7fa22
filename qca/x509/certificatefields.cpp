// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/certificatefields.h"

#include "qca/x509/canonicalname.h"

namespace Trivex {

namespace {

bool findValidity(Der::Reader &body, CertificateFields *fields)
{
    Der::Slice content;
    if (!body.next(Der::Sequence, &content))
        return false;
    Der::Reader reader(content);
    return reader.next(&fields->notBefore) && Der::isTime(fields->notBefore.tag)
        && reader.next(&fields->notAfter) && Der::isTime(fields->notAfter.tag);
}

bool findWhole(Der::Reader &body, Der::Slice *whole)
{
    Der::Element element;
    if (!body.next(Der::Sequence, &element))
        return false;
    *whole = element.whole;
    return true;
}

bool findName(Der::Reader &body, Der::Slice *whole)
{
    Der::Element element;
    if (!body.nextList(Der::Sequence, &element))
        return false;
    *whole = element.whole;
    return true;
}

// The unique identifiers of version 2, then the extensions of version 3.
bool findExtensions(Der::Reader &body, CertificateFields *fields)
{
    for (const int number : {1, 2}) {
        body.skip(Der::context(number, false));
        body.skip(Der::context(number));
    }
    Der::Slice wrapped;
    if (body.next(Der::context(3), &wrapped))
        return Der::singleList(wrapped, Der::Sequence, &fields->extensions) && body.atEnd();
    return body.atEnd();
}

bool findVersion(Der::Reader &body, CertificateFields *fields)
{
    Der::Slice wrapped;
    return !body.next(Der::context(0), &wrapped)
        || Der::single(wrapped, Der::Integer, &fields->version);
}

bool findBody(Der::Slice content, CertificateFields *fields)
{
    Der::Reader body(content);
    return findVersion(body, fields) && body.next(Der::Integer, &fields->serial)
        && !fields->serial.content.isEmpty() && findWhole(body, &fields->innerAlgorithm)
        && findName(body, &fields->issuer) && findValidity(body, fields)
        && findName(body, &fields->subject) && findWhole(body, &fields->publicInfo)
        && findExtensions(body, fields);
}

} // namespace

bool findCertificateFields(Der::Slice der, CertificateFields *fields)
{
    return findSignedFields(der, fields) && findBody(fields->body.content, fields);
}

bool isSelfIssued(Der::Slice der)
{
    CertificateFields fields;
    return findCertificateFields(der, &fields) && isSameName(fields.subject, fields.issuer);
}

} // namespace Trivex
